// Measurements of placeholder expansion; prints rows "name  value  unit".
#pragma once

namespace verbatix::bench {

// Date codes and names in texts of several lengths, and a long selection through all its forms. Wants no
// desktop.
void BenchExpansion();

}  // namespace verbatix::bench
