// The version of Windows that really runs.
#pragma once

namespace verbatix {

struct SystemVersion {
    unsigned long major = 0;
    unsigned long minor = 0;
    unsigned long build = 0;
    unsigned long combined = 0;  // major in the high 16 bits, minor in the low 16
};

// Asked for once and kept. All zero when the system tells nothing.
const SystemVersion& CurrentSystemVersion();

}  // namespace verbatix
