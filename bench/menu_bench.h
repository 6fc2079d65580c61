// How long after the request the paste menu stands on the screen.
#pragma once

namespace verbatix::bench {

void BenchMenu();

}  // namespace verbatix::bench
