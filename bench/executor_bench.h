// What the executor adds to the waits that are fixed.
#pragma once

namespace verbatix::bench {

// Entries carried out in this process with another program's edit control in front.
void BenchExecutor();

}  // namespace verbatix::bench
