#include "support/foreign_clipboard.h"

#include <cstring>

#include "support/folder.h"

namespace verbatix::test {

static std::wstring OwnerCommand(const wchar_t* deed, const std::wstring& path = {}) {
    return L"\"" + HelperPath(L"clipboard_owner.exe") + L"\" " + deed + L" " + path;
}

static std::string RecordFile(const std::vector<ForeignFormat>& formats) {
    std::string file;
    for (const ForeignFormat& format : formats) {
        const ClipboardRecordHeader header = {format.format, format.kind,
                                              static_cast<DWORD>(format.bytes.size())};
        file.append(reinterpret_cast<const char*>(&header), sizeof header).append(format.bytes);
    }
    return file;
}

std::string WideBytes(std::wstring_view text) {
    return std::string(reinterpret_cast<const char*>(text.data()), text.size() * 2) + std::string(2, '\0');
}

bool PutForeign(const std::vector<ForeignFormat>& formats) {
    const Folder folder;
    return WriteBytes(folder.File(L"put"), RecordFile(formats)) &&
           Process(OwnerCommand(L"put", folder.File(L"put"))).WaitForExit(20000) == 0u;
}

Process PutForeignAndStay(const std::vector<ForeignFormat>& formats) {
    const Folder folder;
    WriteBytes(folder.File(L"put"), RecordFile(formats));
    Process owner(OwnerCommand(L"keep", folder.File(L"put")));
    owner.WaitForWindow(L"VerbatixClipboardReady");
    return owner;
}

std::vector<ForeignFormat> ReadForeign() {
    const Folder folder;
    Process(OwnerCommand(L"read", folder.File(L"read"))).WaitForExit(20000);
    const std::string file = ReadBytes(folder.File(L"read"));
    std::vector<ForeignFormat> formats;
    for (std::size_t at = 0; at + sizeof(ClipboardRecordHeader) <= file.size();) {
        ClipboardRecordHeader header;
        std::memcpy(&header, file.data() + at, sizeof header);
        at += sizeof header;
        formats.push_back({header.format, file.substr(at, header.size), header.kind});
        at += header.size;
    }
    return formats;
}

std::string ReadForeign(UINT format) {
    for (const ForeignFormat& found : ReadForeign()) {
        if (found.format == format) return found.bytes;
    }
    return "(absent)";
}

Process HoldClipboard() {
    Process holder(OwnerCommand(L"hold"));
    holder.WaitForWindow(L"VerbatixClipboardReady");
    return holder;
}

}  // namespace verbatix::test
