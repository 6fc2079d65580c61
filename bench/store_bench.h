// Figures of the text store.
#pragma once

namespace verbatix::bench {

// Prints a row "name  value  unit" for each figure.
void BenchStore();

}  // namespace verbatix::bench
