#include "support/foreign_clipboard.h"

#include <gtest/gtest.h>

#include <cstring>

#include "clipboard/clipboard_text.h"
#include "support/folder.h"

namespace verbatix::test {

static std::wstring OwnerCommand(const wchar_t* deed, const std::wstring& path = {}) {
    return L"\"" + HelperPath(L"clipboard_owner.exe") + L"\" " + deed + L" " + path;
}

// A record is three numbers and then so many bytes.
std::string FormatRecords(const std::vector<ForeignFormat>& formats) {
    std::string file;
    for (const ForeignFormat& format : formats) {
        const DWORD head[] = {format.format, static_cast<DWORD>(format.kind),
                              static_cast<DWORD>(format.bytes.size())};
        file.append(reinterpret_cast<const char*>(head), sizeof head).append(format.bytes);
    }
    return file;
}

std::vector<ForeignFormat> ParseRecords(const std::string& file) {
    std::vector<ForeignFormat> formats;
    DWORD head[3];
    for (std::size_t at = 0; at + sizeof head <= file.size(); at += head[2]) {
        std::memcpy(head, file.data() + at, sizeof head);
        at += sizeof head;
        formats.push_back({head[0], file.substr(at, head[2]), static_cast<ClipboardRecordKind>(head[1])});
    }
    return formats;
}

std::string WideBytes(std::wstring_view text) {
    return std::string(reinterpret_cast<const char*>(text.data()), text.size() * 2) + std::string(2, '\0');
}

bool PutForeign(const std::vector<ForeignFormat>& formats) {
    const Folder folder;
    return WriteBytes(folder.File(L"put"), FormatRecords(formats)) &&
           Process(OwnerCommand(L"put", folder.File(L"put"))).WaitForExit(20000) == 0u;
}

Process PutForeignAndStay(const std::vector<ForeignFormat>& formats, bool hangs) {
    const Folder folder;
    WriteBytes(folder.File(L"put"), FormatRecords(formats));
    Process owner(OwnerCommand(hangs ? L"hang" : L"keep", folder.File(L"put")));
    EXPECT_TRUE(owner.WaitForWindow(L"VerbatixClipboardReady"));
    return owner;
}

std::vector<ForeignFormat> ReadForeign() {
    const Folder folder;
    EXPECT_EQ(Process(OwnerCommand(L"read", folder.File(L"read"))).WaitForExit(20000), 0U);
    return ParseRecords(ReadBytes(folder.File(L"read")));
}

std::string ReadForeign(UINT format) {
    for (const ForeignFormat& found : ReadForeign()) {
        if (found.format == format) return found.bytes;
    }
    return "(absent)";
}

std::wstring ClipboardText() {
    std::wstring text = L"(none)";
    ClipboardGetText(text);
    return text;
}

Process HoldClipboard() {
    Process holder(OwnerCommand(L"hold"));
    EXPECT_TRUE(holder.WaitForWindow(L"VerbatixClipboardReady"));
    return holder;
}

}  // namespace verbatix::test
