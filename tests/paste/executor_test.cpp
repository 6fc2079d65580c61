// Where the strokes of an execution go when another window has come to the front since the press.
#include "paste/executor.h"

#include "base/language.h"
#include "hotkeys/notice.h"
#include "selection_target.h"
#include "store/settings.h"
#include "support/program_run.h"

namespace verbatix {
namespace {

class AimedExecution : public test::SelectionTarget {
  protected:
    AimedExecution() {
        SetLanguageTexts({{1382, L"on the clipboard"}, {1383, L"gone"}, {1385, L"nothing"}}, {});
    }
    ~AimedExecution() override {
        settings.restoreOldClipboard = 0;
        HideNotice();
        SetLanguageTexts({}, {});
    }
    static std::wstring Notice() {
        const HWND notice = FindWindowW(L"tooltips_class32", nullptr);
        return IsWindowVisible(notice) ? test::WindowText(notice) : L"";
    }
    void Execute(const std::wstring& text, HWND pressWindow) {
        HideNotice();
        Select(L"selected");
        ClipboardPutText(L"old text");
        StrokesOf('V');
        executorClient.pressWindow = pressWindow;
        ExecuteEntry(text);
    }
};

TEST_F(AimedExecution, StrokesGoOnlyIntoTheWindowOfThePress) {
    settings.restoreOldClipboard = 1;
    const HWND other =
        CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    const struct {
        const wchar_t* text;
        const wchar_t* notice;
        const wchar_t* clipboard;
    } rows[] = {{L"a text", L"on the clipboard", L"a text"},
                {L"a%send_tab%b", L"on the clipboard", L"a"},
                {L"<%copy_text%>", L"nothing", L"old text"},
                {L"<%copy_html%>", L"nothing", L"old text"},
                {L"replace:\\nselected=>done", L"nothing", L"old text"},
                {L"runx:nothing.exe %cpy%", L"nothing", L"old text"},
                {L"%mix_the_string%", L"nothing", L"old text"},
                {L"sys:PathToClipboard", L"nothing", L"old text"},
                {L"sys:Txt2Key:abc", L"nothing", L"old text"}};
    for (const auto& [text, notice, clipboard] : rows) {
        Execute(text, other);
        EXPECT_EQ(Notice(), notice) << text;
        OnRestoreTimer();
        EXPECT_EQ(Clipboard(), clipboard) << text;
        EXPECT_TRUE(TargetShows(L"selected")) << text;
        EXPECT_EQ(GetForegroundWindow(), target);
    }
    DestroyWindow(other);
    Execute(L"a text", other);
    EXPECT_EQ(Notice(), L"gone");
    EXPECT_EQ(Clipboard(), L"a text");

    settings.restoreOldClipboard = 0;
    for (const HWND window : {target, HWND{nullptr}}) {
        Execute(L"a text", window);
        EXPECT_TRUE(TargetShows(L"a text"));
        EXPECT_EQ(Notice(), L"");
    }
    executorClient.pressWindow = other;
    ExecuteEntry(L"sys:MonitorOn");  // one without strokes does not pass its aim on
    ExecuteEntry(L"!");
    EXPECT_TRUE(TargetShows(L"a text!"));
}

}  // namespace
}  // namespace verbatix
