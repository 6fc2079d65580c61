// What saving and restoring the clipboard costs.
#pragma once

namespace verbatix::bench {

// Prints rows "name  value  unit". Takes over the clipboard; needs about 300 MB.
void BenchClipboard();

}  // namespace verbatix::bench
