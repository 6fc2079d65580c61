// Libraries that somebody has put beside the program.
#include "desktop/program_window.h"
#include "support/desktop.h"

namespace verbatix::test {
namespace {

// What the program loads at run time. What it imports is on the list of tests/checks/imports.sh, which
// holds only what Windows takes from its own folder.
constexpr const wchar_t* kLookedUp[] = {L"comctl32", L"comdlg32", L"dbghelp", L"dwmapi",
                                        L"gdiplus",  L"powrprof", L"uxtheme", L"wtsapi32"};

constexpr wchar_t kThemeKey[] = L"Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize";

constexpr wchar_t kOrderKey[] = L"Software\\Wine\\AppDefaults\\Verbatix.exe\\DllOverrides";
constexpr wchar_t kNativeFirst[] = L"native,builtin";

// One green pixel.
std::string TinyBitmap() {
    const BITMAPFILEHEADER file = {0x4D42, 58, 0, 0, 54};
    BITMAPINFOHEADER info = {};
    info.biSize = sizeof info;
    info.biWidth = info.biHeight = info.biPlanes = 1;
    info.biBitCount = 24;
    return std::string(reinterpret_cast<const char*>(&file), sizeof file) +
           std::string(reinterpret_cast<const char*>(&info), sizeof info) + std::string("\0\xff\0\0", 4);
}

class PlantedLibrary : public ProgramWindow {
  protected:
    PlantedLibrary() {
        WaitForClipboard();
        // The bench takes most of its own libraries first, other than Windows, unless it is told so.
        for (const wchar_t* name : kLookedUp) {
            RegSetKeyValueW(HKEY_CURRENT_USER, kOrderKey, name, REG_SZ, kNativeFirst, sizeof kNativeFirst);
        }
        const DWORD dark = 0;
        RegSetKeyValueW(HKEY_CURRENT_USER, kThemeKey, L"AppsUseLightTheme", REG_DWORD, &dark, sizeof dark);
    }
    ~PlantedLibrary() override {
        RegDeleteTreeW(HKEY_CURRENT_USER, kOrderKey);
        RegDeleteKeyValueW(HKEY_CURRENT_USER, kThemeKey, L"AppsUseLightTheme");
    }

    void Plant() const {
        for (const std::wstring name : kLookedUp) {
            ASSERT_TRUE(CopyFileW(HelperPath(L"planted.dll").c_str(),
                                  run_.Place().File(name + L".dll").c_str(), FALSE));
        }
    }
    std::wstring WhoRan() const {
        std::wstring ran;
        for (const std::wstring name : kLookedUp) {
            if (Exists(run_.Place().File(name + L".dll.ran"))) ran += name + L" ";
        }
        return ran;
    }
    static bool Exists(const std::wstring& path) {
        return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
    }
};

TEST_F(PlantedLibrary, NeverRuns) {
    Plant();
    const std::wstring picture = run_.Place().File(L"green.bmp");
    ASSERT_TRUE(WriteBytes(picture, TinyBitmap()));
    // In the dark, with title bar and controls; then a file dialog, power schemes, a picture.
    ASSERT_NO_FATAL_FAILURE(
        Start({{L"Ctrl+Q", L"sys:SwitchPowerOptions:9"}, {L"Ctrl+W", L"img:" + picture}}));
    Menu(CMD_IMPORT_FILE);
    Answer(IDCANCEL);

    const Target target;
    ASSERT_TRUE(WaitFor([] { return OpenClipboard(nullptr) && EmptyClipboard() && CloseClipboard(); }));
    PlayStroke({VK_LCONTROL}, 'Q');
    Linger(400);  // a press too soon after another counts as its repeat
    ASSERT_TRUE(run_.IsThrough());
    PlayStroke({VK_LCONTROL}, 'W');
    EXPECT_TRUE(WaitFor([] { return IsClipboardFormatAvailable(CF_DIB) != FALSE; })) << "GDI+ was there";
    EXPECT_EQ(WhoRan(), L"");
    EXPECT_EQ(run_.Exit(), 1);
    // A library that is taken does leave its mark.
    const std::wstring taken = run_.Place().File(L"taken.dll");
    CopyFileW(HelperPath(L"planted.dll").c_str(), taken.c_str(), FALSE);
    UniqueModule(LoadLibraryW(taken.c_str())).Reset();
    EXPECT_TRUE(Exists(taken + L".ran"));
}

}  // namespace
}  // namespace verbatix::test
