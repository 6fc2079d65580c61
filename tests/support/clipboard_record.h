// What a test and the helper program clipboard_owner tell each other about clipboard formats: a file of
// records, each this header and then `size` bytes.
#pragma once

#include <windows.h>

namespace verbatix::test {

enum class ClipboardRecordKind : DWORD {
    bytes,      // a global block
    announced,  // no data: promised by the owner, or refused to the reader
    bitmap,     // a GDI bitmap of 3 by 2 pixels; its bytes are not told
};

struct ClipboardRecordHeader {
    DWORD format;
    ClipboardRecordKind kind;
    DWORD size;
};

}  // namespace verbatix::test
