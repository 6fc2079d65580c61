// The measurements of the benchmark program. Each prints rows "name  value  unit".
#pragma once

namespace verbatix::bench {

// What the hook's decision on an ordinary key costs.
void BenchKeyDecision();

// What an ordinary key costs through the installed hook, compared with a hook that does nothing. Wants a
// desktop.
void BenchHook();

}  // namespace verbatix::bench
