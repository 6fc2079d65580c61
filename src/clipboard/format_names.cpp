#include "clipboard/format_names.h"

#include <cwchar>
#include <string_view>

#include "base/text.h"

namespace verbatix {

namespace {

struct StandardFormat {
    UINT id;
    const wchar_t* name;
};

// The order decides which name is found first; 17 stands where it was once put in, and 18 is no format but
// the end of the standard ones.
constexpr StandardFormat kStandardFormats[] = {
    {CF_TEXT, L"TEXT"},
    {CF_BITMAP, L"BITMAP"},
    {CF_METAFILEPICT, L"METAFILE PICTURE"},
    {CF_SYLK, L"SYLK"},
    {CF_DIF, L"DIF"},
    {CF_TIFF, L"TIFF"},
    {CF_OEMTEXT, L"OEM TEXT"},
    {CF_DIB, L"DIB"},
    {CF_PALETTE, L"PALETTE"},
    {CF_PENDATA, L"PEN DATA"},
    {CF_DIBV5, L"DIBV5"},
    {CF_RIFF, L"RIFF"},
    {CF_WAVE, L"WAVE DATA"},
    {CF_UNICODETEXT, L"UNICODE TEXT"},
    {CF_ENHMETAFILE, L"ENHANCED METAFILE"},
    {CF_HDROP, L"DROP FILE LIST"},
    {CF_LOCALE, L"LOCALE"},
    {CF_MAX, L"MAX"},
    {CF_OWNERDISPLAY, L"OWNER DISPLAY"},
    {CF_DSPTEXT, L"PRIVATE TEXT"},
    {CF_DSPBITMAP, L"PRIVATE BITMAP"},
    {CF_DSPMETAFILEPICT, L"PRIVATE METAFILE PICTURE"},
    {CF_DSPENHMETAFILE, L"PRIVATE ENHANCED METAFILE"},
    {CF_PRIVATEFIRST, L"PRIVATE FIRST"},
    {CF_PRIVATELAST, L"PRIVATE LAST"},
    {CF_GDIOBJFIRST, L"GDI OBJECT FIRST"},
    {CF_GDIOBJLAST, L"GDI OBJECT LAST"},
};

}  // namespace

UINT ClipboardFormatName(UINT format, wchar_t (&name)[kFormatNameCapacity]) {
    if (format == 0) {
        const std::wstring_view wanted(name, wcsnlen(name, kFormatNameCapacity));
        for (const StandardFormat& standard : kStandardFormats) {
            if (EqualsIgnoreCase(wanted, standard.name)) return standard.id;
        }
        return 0;
    }
    name[0] = L'\0';
    if (GetClipboardFormatNameW(format, name, kFormatNameCapacity) > 0) return 0;
    CopyText(name, L"");
    for (const StandardFormat& standard : kStandardFormats) {
        if (standard.id != format) continue;
        CopyText(name, standard.name);
        break;
    }
    return 0;
}

}  // namespace verbatix
