#include "store/text_file.h"

#include <algorithm>

#include "base/text.h"

namespace verbatix {

static constexpr std::string_view kUtf16Mark = "\xff\xfe";
static constexpr std::string_view kUtf16BigEndianMark = "\xfe\xff";
static constexpr std::string_view kUtf8Mark = "\xef\xbb\xbf";

UniqueFile OpenForReading(const std::wstring& path) {
    return UniqueFile(CreateFileW(path.c_str(), GENERIC_READ,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                  OPEN_EXISTING, 0, nullptr));
}

std::optional<std::string> ReadWholeFile(const std::wstring& path, std::int64_t limit) {
    const UniqueFile file = OpenForReading(path);
    LARGE_INTEGER size;
    if (!file || !GetFileSizeEx(file.Get(), &size)) return std::nullopt;
    if (size.QuadPart > limit) {
        SetLastError(ERROR_FILE_TOO_LARGE);
        return std::nullopt;
    }
    std::string bytes(static_cast<std::size_t>(size.QuadPart), '\0');
    DWORD read = 0;
    if (!ReadFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr) ||
        read != bytes.size()) {
        return std::nullopt;
    }
    return bytes;
}

bool WriteWholeFile(const std::wstring& path, DWORD disposition, std::string_view bytes) {
    const UniqueFile file(CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, disposition,
                                      FILE_ATTRIBUTE_NORMAL, nullptr));
    DWORD written = 0;
    return file &&
           WriteFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) &&
           written == bytes.size() && FlushFileBuffers(file.Get());
}

Encoding EncodingByMark(std::string_view bytes) {
    if (bytes.starts_with(kUtf16Mark)) return Encoding::kUtf16;
    if (bytes.starts_with(kUtf16BigEndianMark)) return Encoding::kUtf16BigEndian;
    return bytes.starts_with(kUtf8Mark) ? Encoding::kUtf8 : Encoding::kAnsi;
}

bool IsUtf8WithoutMark(std::string_view bytes) {
    const bool isAscii = std::all_of(bytes.begin(), bytes.end(),
                                     [](char c) { return static_cast<unsigned char>(c) < 0x80; });
    return !isAscii && EncodingByMark(bytes) == Encoding::kAnsi &&
           MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, bytes.data(), static_cast<int>(bytes.size()),
                               nullptr, 0) > 0;
}

static std::wstring FromUtf16(std::string_view bytes, bool isBigEndian) {
    std::wstring text(reinterpret_cast<const wchar_t*>(bytes.data()), bytes.size() / 2);
    if (!isBigEndian) return text;
    for (wchar_t& c : text) c = static_cast<wchar_t>((c & 0xff) << 8 | c >> 8);
    return text;
}

std::wstring DecodeByMark(std::string_view bytes) {
    switch (EncodingByMark(bytes)) {
        case Encoding::kUtf16: return FromUtf16(bytes.substr(kUtf16Mark.size()), false);
        case Encoding::kUtf16BigEndian: return FromUtf16(bytes.substr(kUtf16BigEndianMark.size()), true);
        case Encoding::kUtf8: return FromBytes(bytes.substr(kUtf8Mark.size()), CP_UTF8);
        default: return FromBytes(bytes, CP_ACP);
    }
}

std::wstring DecodeText(std::string_view bytes) {
    return IsUtf8WithoutMark(bytes) ? FromBytes(bytes, CP_UTF8) : DecodeByMark(bytes);
}

std::string AsUtf16File(std::wstring_view text) {
    std::string bytes;
    bytes.reserve(kUtf16Mark.size() + text.size() * sizeof(wchar_t));
    bytes.append(kUtf16Mark);
    bytes.append(reinterpret_cast<const char*>(text.data()), text.size() * sizeof(wchar_t));
    return bytes;
}

}  // namespace verbatix
