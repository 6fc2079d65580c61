#include "base/message_font.h"

#include <cstdlib>
#include <cstring>
#include <string_view>

#include "base/screen_scale.h"

namespace verbatix {

namespace {

constexpr std::size_t kStyleAt = 12;
constexpr std::size_t kMenuAt = 26;

// Goes over a template, value by value; behind its end everything is 0.
class Reader {
  public:
    Reader(std::span<const BYTE> all, std::size_t at) : all_(all), at_(at) {}
    std::size_t At() const { return at_; }
    bool IsAtEnd() const { return at_ + sizeof(WORD) > all_.size(); }

    WORD Take() {
        WORD value = 0;
        if (!IsAtEnd()) std::memcpy(&value, all_.data() + at_, sizeof value);
        at_ += sizeof value;
        return value;
    }

    // Menu or class: nothing, a number, or a name. A title is one, too.
    void SkipName() {
        constexpr WORD kNumber = 0xFFFF;
        WORD value = Take();
        if (value == kNumber) {
            Take();
            return;
        }
        while (value != 0 && !IsAtEnd()) value = Take();
    }

    void AlignToItem() { at_ = (at_ + 3) / 4 * 4; }

  private:
    std::span<const BYTE> all_;
    std::size_t at_;
};

void Append(std::vector<BYTE>& to, const void* bytes, std::size_t size) {
    const auto* const first = static_cast<const BYTE*>(bytes);
    to.insert(to.end(), first, first + size);
}

std::vector<BYTE> TemplateInMessageFont(int dialog) {
    const HMODULE module = GetModuleHandleW(nullptr);
    const HRSRC found = FindResourceW(module, MAKEINTRESOURCEW(dialog), MAKEINTRESOURCEW(5));  // RT_DIALOG
    const HGLOBAL loaded = found ? LoadResource(module, found) : nullptr;
    const auto* const first = static_cast<const BYTE*>(loaded ? LockResource(loaded) : nullptr);
    if (!first) return {};
    // Windows makes pixels of the points, in the resolution of the dialog's screen.
    constexpr int kPointsToInch = 72;
    const LOGFONTW font = MessageFont(kOrdinaryDpi);
    const int points = MulDiv(std::abs(static_cast<int>(font.lfHeight)), kPointsToInch, kOrdinaryDpi);
    return WithFont({first, SizeofResource(module, found)}, font, static_cast<WORD>(points));
}

const DLGTEMPLATE* AsTemplate(const std::vector<BYTE>& bytes) {
    return reinterpret_cast<const DLGTEMPLATE*>(bytes.data());
}

}  // namespace

std::vector<BYTE> WithFont(std::span<const BYTE> dialogTemplate, const LOGFONTW& font, WORD points) {
    constexpr WORD kExtended[] = {1, 0xFFFF};  // version and signature
    DWORD style = 0;
    if (dialogTemplate.size() < kMenuAt) return {};
    if (std::memcmp(dialogTemplate.data(), kExtended, sizeof kExtended) != 0) return {};
    std::memcpy(&style, dialogTemplate.data() + kStyleAt, sizeof style);
    if (!(style & DS_SETFONT)) return {};
    Reader reader(dialogTemplate, kMenuAt);
    for (int name = 0; name < 3; ++name) reader.SkipName();
    const std::size_t fontAt = reader.At();
    for (int value = 0; value < 3; ++value) reader.Take();  // size, weight, italics and character set
    reader.SkipName();
    reader.AlignToItem();
    if (reader.At() >= dialogTemplate.size()) return {};

    std::vector<BYTE> made(dialogTemplate.begin(),
                           dialogTemplate.begin() + static_cast<std::ptrdiff_t>(fontAt));
    const WORD sizes[] = {points, static_cast<WORD>(font.lfWeight)};
    const BYTE kinds[] = {font.lfItalic, font.lfCharSet};
    const std::wstring_view face = font.lfFaceName;
    Append(made, sizes, sizeof sizes);
    Append(made, kinds, sizeof kinds);
    Append(made, face.data(), (face.size() + 1) * sizeof(wchar_t));
    made.resize((made.size() + 3) / 4 * 4);
    Append(made, dialogTemplate.data() + reader.At(), dialogTemplate.size() - reader.At());
    return made;
}

INT_PTR RunDialog(int dialog, HWND owner, DLGPROC procedure, LPARAM param) {
    const HMODULE module = GetModuleHandleW(nullptr);
    const std::vector<BYTE> made = TemplateInMessageFont(dialog);
    if (!made.empty()) return DialogBoxIndirectParamW(module, AsTemplate(made), owner, procedure, param);
    return DialogBoxParamW(module, MAKEINTRESOURCEW(dialog), owner, procedure, param);
}

HWND CreateDialogWindow(int dialog, HWND owner, DLGPROC procedure, LPARAM param) {
    const HMODULE module = GetModuleHandleW(nullptr);
    const std::vector<BYTE> made = TemplateInMessageFont(dialog);
    if (!made.empty()) return CreateDialogIndirectParamW(module, AsTemplate(made), owner, procedure, param);
    return CreateDialogParamW(module, MAKEINTRESOURCEW(dialog), owner, procedure, param);
}

}  // namespace verbatix
