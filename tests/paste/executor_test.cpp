// Where the strokes of an execution go when another window has come to the front since the press.
#include "paste/executor.h"

#include <atomic>

#include "base/language.h"
#include "clipboard/clipboard_session.h"
#include "clipboard/html_clipboard.h"
#include "clipboard/slots.h"
#include "hotkeys/key_simulation.h"
#include "hotkeys/notice.h"
#include "hotkeys/stroke_target.h"
#include "ids.h"
#include "paste/steps/expansion.h"
#include "paste/steps/launcher.h"
#include "selection_target.h"
#include "store/settings.h"
#include "support/foreign_clipboard.h"
#include "support/import_patch.h"
#include "support/message_box.h"
#include "support/program_run.h"

extern "C" {
extern decltype(&EmptyClipboard) __imp_EmptyClipboard;
extern decltype(&GetClipboardData) __imp_GetClipboardData;
extern decltype(&GetFileAttributesW) __imp_GetFileAttributesW;
extern decltype(&OpenClipboard) __imp_OpenClipboard;
extern decltype(&SendMessageTimeoutW) __imp_SendMessageTimeoutW;
}

namespace verbatix {
namespace {

using test::ClipboardRecordKind;
using test::ClipboardText;

// The target takes no messages until it is let go.
class HangingTarget {
  public:
    explicit HangingTarget(HWND target) { PostMessageW(target, WM_APP, 0, 0); }
    ~HangingTarget() { LetGo(); }
    void LetGo() const { SetEvent(goOn_.Get()); }

  private:
    UniqueKernelObject goOn_{CreateEventW(nullptr, FALSE, FALSE, L"VerbatixTestGoOn")};
};

class AimedExecution : public test::SelectionTarget {
  protected:
    AimedExecution() {
        SetLanguageTexts(
            {{1322, L"in use"}, {1382, L"on the clipboard"}, {1383, L"gone"}, {1385, L"nothing"}}, {});
    }
    ~AimedExecution() override {
        HideNotice();
        SetLanguageTexts({}, {});
    }
    static std::wstring Notice() { return test::WindowText(test::ShownTooltip()); }
    // Whether that is given back, however late the target answers.
    static bool ComesBack(const std::wstring& text) {
        return test::WaitFor([&] {
            OnRestoreTimer();
            return ClipboardText() == text;
        });
    }
    void Execute(const std::wstring& text, HWND pressWindow) {
        HideNotice();
        Select(L"selected");
        Put(L"old text");
        StrokesOf('V');
        executorClient.pressWindow = pressWindow;
        ExecuteEntry(text);
    }
};

TEST_F(AimedExecution, StrokesGoOnlyIntoTheWindowOfThePress) {
    settings.restoreOldClipboard = 1;
    const HWND other = test::MakeWindow(DefWindowProcW);
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
        EXPECT_EQ(ClipboardText(), clipboard) << text;
        EXPECT_TRUE(TargetShows(L"selected")) << text;
        EXPECT_EQ(GetForegroundWindow(), target);
    }
    DestroyWindow(other);
    Execute(L"a text", other);
    EXPECT_EQ(Notice(), L"gone");
    EXPECT_EQ(ClipboardText(), L"a text");

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

int refusals;
decltype(&OpenClipboard) realOpen;

BOOL WINAPI OpenLater(HWND owner) {
    return --refusals < 0 && realOpen(owner);
}

TEST_F(AimedExecution, NothingForeignIsPastedFromAClipboardInUse) {
    SaveClipboard(clipboardSlots[5]);
    for (const wchar_t* text :
         {L"a text", L"pastehtml:a text", L"a%send_tab%b", L"replace:\nselected=>done", L"paste_slot:55",
          L"<%copy_html%>", L"%mix_the_string%", L"sys:CopyHtmlCode2TxtPaste", L"img:missing.png"}) {
        const test::Process holder = test::HoldClipboard();
        HideNotice();
        Select(L"selected");
        const test::MessageBoxAnswer box;
        StrokesOf('V');
        ExecuteEntry(text);
        EXPECT_EQ(StrokesOf('V'), 0) << text;
        EXPECT_EQ(Notice(), L"in use") << text;
    }
    // It waits for one that only looks at what has come.
    for (const wchar_t* text : {L"a text", L"paste_slot:5"}) {
        Select(L"selected");
        Put(L"a text");
        SaveClipboard(clipboardSlots[5]);
        Put(L"old text");
        {
            refusals = 3;
            realOpen = __imp_OpenClipboard;
            const test::ImportPatch patch(__imp_OpenClipboard, OpenLater);
            ExecuteEntry(text);
        }
        EXPECT_LT(refusals, 0);
        EXPECT_TRUE(TargetShows(L"a text")) << text << test::WindowText(edit);
    }
}

TEST_F(AimedExecution, TheClipboardComesBackWhenItCan) {
    settings.restoreOldClipboard = 1;
    Execute(L"a text", target);
    EXPECT_TRUE(TargetShows(L"a text"));
    {
        const test::Process holder = test::HoldClipboard();
        OnRestoreTimer();
    }
    EXPECT_EQ(ClipboardText(), L"a text");
    EXPECT_TRUE(ComesBack(L"old text"));

    const auto executeWhileItHangs = [&] {
        ExecuteEntry(L"a text");
        OnRestoreTimer();
        EXPECT_EQ(ClipboardText(), L"a text");
    };
    Select(L"selected");
    {
        const HangingTarget hanging(target);
        executeWhileItHangs();
    }
    EXPECT_TRUE(TargetShows(L"a text"));
    OnRestoreTimer();
    EXPECT_EQ(ClipboardText(), L"a text") << "it has only begun to answer";
    EXPECT_TRUE(ComesBack(L"old text"));
    // What he copies meanwhile is the user's clipboard then.
    Select(L"selected");
    const HangingTarget hanging(target);
    executeWhileItHangs();
    const test::Process other = test::PutForeignAndStay({{CF_UNICODETEXT, test::WideBytes(L"new")}});
    OnRestoreTimer();
    EXPECT_EQ(ClipboardText(), L"new");
    hanging.LetGo();
    EXPECT_TRUE(TargetShows(L"new"));
    EXPECT_EQ(ClipboardText(), L"new");

    // What never touches the clipboard leaves it to whatever the entry has started.
    Execute(L"sys:MonitorOn", target);
    ASSERT_TRUE(test::PutForeign({{CF_UNICODETEXT, test::WideBytes(L"of a tool")}}));
    OnRestoreTimer();
    EXPECT_EQ(ClipboardText(), L"of a tool");
    const DWORD content = GetClipboardSequenceNumber();
    ExecuteEntry(L"sys:MonitorOn");
    OnRestoreTimer();
    EXPECT_EQ(GetClipboardSequenceNumber(), content);

    // While a restore is due, the user's text is the one that waits for it.
    Execute(L"a text", target);
    ExecuteEntry(L"<%pptxt%>");
    EXPECT_TRUE(TargetShows(L"a text<old text>"));
    EXPECT_TRUE(ComesBack(L"old text"));

    Execute(L"cpy:missing.exe", target);
    OnRestoreTimer();
    Select(L"selected");
    OnCpyCopyTimer();
    OnRestoreTimer();
    OnCpyLaunchTimer();
    EXPECT_EQ(CapturedText, L"selected");
    EXPECT_TRUE(ComesBack(L"old text"));
}

// Which of the formats are on the clipboard that ask histories to leave it alone.
std::string HistoryMarks() {
    std::string marks;
    for (const wchar_t* name : {L"ExcludeClipboardContentFromMonitorProcessing", L"Clipboard Viewer Ignore",
                                L"CanIncludeInClipboardHistory", L"CanUploadToCloudClipboard"}) {
        const ClipboardSession clipboard;
        const LockedBlock block(GetClipboardData(RegisterClipboardFormatW(name)));
        marks += block.Bytes() == std::string(4, '\0') ? '0' : block ? '?' : '-';
    }
    return marks;
}

TEST_F(AimedExecution, HistoriesAreToLeaveAloneWhatIsThereForThePasteOnly) {
    Put(L"of the slot");
    SaveClipboard(clipboardSlots[5]);
    for (const int restore : {0, 1}) {
        settings.restoreOldClipboard = restore;
        const std::string marks = restore ? "0000" : "----";
        for (const wchar_t* text : {L"a text", L"pastehtml:a text", L"a%send_tab%b", L"paste_slot:5"}) {
            Execute(text, target);
            EXPECT_EQ(HistoryMarks(), marks) << text;
            EXPECT_TRUE(!restore || ComesBack(L"old text")) << text;
            EXPECT_EQ(HistoryMarks(), marks) << text;
        }
        // What a command leaves there is the user's.
        Execute(L"sys:PathToClipboard", target);
        EXPECT_EQ(HistoryMarks(), "----");
    }
    // A mark of somebody else says what it says without data too.
    const UINT mark = RegisterClipboardFormatW(L"ExcludeClipboardContentFromMonitorProcessing");
    const test::Process owner = test::PutForeignAndStay(
        {{CF_UNICODETEXT, test::WideBytes(L"secret")}, {mark, "", ClipboardRecordKind::announced}});
    SaveClipboard(clipboardSlots[5]);
    Put(L"old text");
    RestoreClipboard(clipboardSlots[5]);
    EXPECT_EQ(HistoryMarks(), "0---");
}

int asked;  // of the clipboard's owner

HANDLE WINAPI CountReading(UINT) {
    return ++asked, nullptr;
}

BOOL WINAPI CountTelling() {
    return ++asked, TRUE;
}

// Each format that was read, and each time that its owner is told that the clipboard is empty, would take
// seconds; on Windows there is no end to that.
TEST_F(AimedExecution, AHangingOwnerIsNeitherReadNorTold) {
    SavedClipboard store;
    EXPECT_GT(SaveClipboard(store), 0);
    const test::Process owner =
        test::PutForeignAndStay({{CF_UNICODETEXT, "", ClipboardRecordKind::announced}}, true);
    asked = 0;
    const test::ImportPatch reading(__imp_GetClipboardData, CountReading);
    const test::ImportPatch telling(__imp_EmptyClipboard, CountTelling);
    SavedClipboard none;
    EXPECT_EQ(SaveClipboard(none), 0);
    EXPECT_EQ(ClipboardText(), L"(none)");
    EXPECT_FALSE(ClipboardPutText(L"x") || ClearClipboard() || HtmlClipboardPut(L"x"));
    EXPECT_FALSE(PutSavedClipboard(store, 0));
    Select(L"selected");
    for (const wchar_t* const text : {L"a text", L"img:missing.png"}) {
        HideNotice();
        ExecuteEntry(text);
        EXPECT_EQ(Notice(), L"in use") << text;
    }
    EXPECT_EQ(asked, 0);
    EXPECT_EQ(StrokesOf('V'), 0);
}

const HangingTarget* letGoWhenAsked;
decltype(&SendMessageTimeoutW) realSend;

// Lets the target go once the program waits for it.
LRESULT WINAPI SendAndLetGo(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT flags,
                            UINT milliseconds, DWORD_PTR* result) {
    if (message == WM_NULL && letGoWhenAsked) std::exchange(letGoWhenAsked, nullptr)->LetGo();
    return realSend(window, message, wParam, lParam, flags, milliseconds, result);
}

TEST_F(AimedExecution, ABusyTargetGetsEachPiece) {
    realSend = __imp_SendMessageTimeoutW;
    const test::ImportPatch patch(__imp_SendMessageTimeoutW, SendAndLetGo);
    Select(L"");
    const HangingTarget hanging(target);
    letGoWhenAsked = &hanging;
    ExecuteEntry(L"a%send_tab%%nc%b%send_enter%c\\%nc%n");
    EXPECT_TRUE(TargetShows(L"a\tb\r\nc\\n")) << test::WindowText(edit);
    // Its copy, however late, reaches the slot and does not stay in the place of the user's clipboard.
    settings.restoreOldClipboard = 1;
    Put(L"old text");
    Select(L"kept");
    const HangingTarget hangingAgain(target);
    letGoWhenAsked = &hangingAgain;
    AimStrokes(target);
    CopySlot(L'1', true);
    NoteStroke();
    EXPECT_TRUE(AwaitStroke(20000)) << "the target has come to all keys";
    EXPECT_EQ(ClipboardText(), L"old text");
    RestoreClipboard(clipboardSlots[1]);
    EXPECT_EQ(ClipboardText(), L"kept");
}

TEST_F(AimedExecution, AFieldOfOurOwnGetsEachPiece) {
    const HWND own = CreateWindowExW(0, L"EDIT", L"", WS_OVERLAPPEDWINDOW | WS_VISIBLE | ES_MULTILINE, 50,
                                     50, 300, 200, nullptr, nullptr, nullptr, nullptr);
    SetForegroundWindow(own);
    SetFocus(own);
    EXPECT_TRUE(test::SettlesInFront(own));
    ExecuteEntry(L"a%send_tab%b%send_enter%c");
    EXPECT_TRUE(test::WaitFor([&] { return test::WindowText(own) == L"a\tb\r\nc"; }))
        << test::WindowText(own);
    SendMessageW(own, EM_SETSEL, 0, -1);
    ExecuteEntry(L"<%copy_text%>");
    EXPECT_TRUE(test::WaitFor([&] { return test::WindowText(own) == L"<a\tb\r\nc>"; }));
    DestroyWindow(own);
}

LRESULT CALLBACK RunTimers(HWND window, UINT message, WPARAM id, LPARAM lParam) {
    if (message == WM_TIMER) {
        KillTimer(window, id);
        if (id == TIMER_CPY_COPY) OnCpyCopyTimer();
        if (id == TIMER_CPY_LAUNCH) OnCpyLaunchTimer();
    }
    return DefWindowProcW(window, message, id, lParam);
}

TEST_F(AimedExecution, ASecondCopyStartsItsProgramWithItsOwnSelection) {
    const test::Folder folder;
    const std::wstring tool = folder.File(L"tool.exe");
    ASSERT_TRUE(CopyFileW(test::HelperPath(L"record_launch.exe").c_str(), tool.c_str(), FALSE));
    const HWND timers = test::MakeWindow(RunTimers);
    executorClient.mainWindow = timers;
    const auto execute = [&](const wchar_t* selection, const std::wstring& text) {
        Select(selection);
        ExecuteEntry(text);
        EXPECT_TRUE(test::WaitFor([&] { return CapturedText == selection; }));
    };
    execute(L"one", L"cpy:\"" + tool + L"\" first:%cpy%");
    execute(L"two", L"cpy:\"" + tool + L"\" second:%cpy%");  // the first is still to be started
    const std::wstring line = L"second:two|";
    std::string seen;
    EXPECT_TRUE(test::WaitFor(
        [&] {
            seen = test::ReadBytes(folder.File(L"launched.txt"));
            return !seen.empty();
        },
        20000));
    EXPECT_EQ(seen.find(std::string(reinterpret_cast<const char*>(line.data()), line.size() * 2)), 0u);
    executorClient.mainWindow = nullptr;
    DestroyWindow(timers);
    EXPECT_FALSE(OpenWithShell(L""));
}

// Where files were looked for.
std::atomic<bool> lookedOnMainThread;
std::atomic<int> looks;
const DWORD mainThread = GetCurrentThreadId();

DWORD WINAPI LookAside(const wchar_t*) {
    lookedOnMainThread = lookedOnMainThread || GetCurrentThreadId() == mainThread;
    ++looks;
    return INVALID_FILE_ATTRIBUTES;
}

// A computer that has gone from the network answers after half a minute.
TEST_F(AimedExecution, FilesAreLookedForAside) {
    const test::ImportPatch patch(__imp_GetFileAttributesW, LookAside);
    for (const wchar_t* text : {L"cmd:missing.exe", L"runx:missing.exe", L"img:missing.png"}) {
        looks = 0;
        ExecuteEntry(text);
        EXPECT_GT(looks, 0) << text;
    }
    EXPECT_FALSE(lookedOnMainThread);
}

}  // namespace
}  // namespace verbatix
