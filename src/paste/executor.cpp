#include "paste/executor.h"

#include <utility>

#include "base/language.h"
#include "base/text.h"
#include "clipboard/clipboard_text.h"
#include "clipboard/paste_content.h"
#include "clipboard/saved_clipboard.h"
#include "clipboard/slots.h"
#include "hotkeys/key_simulation.h"
#include "hotkeys/notice.h"
#include "hotkeys/pause.h"
#include "hotkeys/press_log.h"
#include "hotkeys/stroke_target.h"
#include "ids.h"
#include "paste/builtin/builtin_commands.h"
#include "paste/builtin/image_clipboard.h"
#include "paste/steps/expansion.h"
#include "paste/steps/key_tokens.h"
#include "paste/steps/launcher.h"
#include "paste/text/command_prefixes.h"
#include "paste/text/placeholders.h"
#include "store/settings.h"

namespace verbatix {

ExecutorClient executorClient;

// A "cpy:" command between its timers; a new one overwrites it.
static ProgramAndParameters pendingProgram;
static HWND pendingWindow;  // of its press
static PressNumber pendingPress = kNoPress;

static HWND aimedAt;  // by the execution that runs, or ran last

static constexpr DWORD kPasteWait = 20;
static constexpr UINT kStepMilliseconds = 200;

static void RestartTimer(UINT_PTR timer) {
    KillTimer(executorClient.mainWindow, timer);
    SetTimer(executorClient.mainWindow, timer, kStepMilliseconds, nullptr);
}

void DeliverText(const std::wstring& text) {
    if (FinishForDelivery(text)) SendPaste(kPasteWait);
}

static int MissedText(Aim aim) {
    if (aim == Aim::Withheld) return text::kClipboardBusy;
    if (aim != Aim::PasteMissed) return text::kNothingDone;
    return IsWindow(aimedAt) ? text::kTextIsOnClipboard : text::kPlaceHasClosed;
}

static PressEnd MissedEnd(Aim aim) {
    if (aim == Aim::Withheld) return PressEnd::kClipboardBusy;
    return IsWindow(aimedAt) ? PressEnd::kOtherWindow : PressEnd::kPlaceClosed;
}

bool TellMissedStrokes() {
    const Aim aim = StrokeAim();
    AimStrokes(nullptr);
    if (aim == Aim::Free) return false;
    EndPress(MissedEnd(aim));
    NoticeAtCaret(LanguageText(MissedText(aim)));
    return true;
}

static void Aimed(HWND window) {
    aimedAt = window;
    AimStrokes(window);
}

void DeliverInto(const std::wstring& text, HWND window) {
    Aimed(window);
    DeliverText(text);
    TellMissedStrokes();
}

// Whose stroke follows from a posted message, still aimed.
static bool HasStrokeToCome(const std::wstring& text) {
    return ParseCommand(text).kind == CommandKind::CopySlot;
}

void ExecuteEntry(const std::wstring& text) {
    Aimed(std::exchange(executorClient.pressWindow, nullptr));
    if (settings.restoreOldClipboard) {
        // A restore that is still due would otherwise give back the clipboard of before in the middle of
        // this execution.
        KillTimer(executorClient.mainWindow, TIMER_RESTORE_CLIPBOARD);
        Pause(20);
        KeepPreviousClipboard();
    }
    if (!ExecuteCommandPrefixes(text)) {
        std::wstring expanded = text;
        ExpandPlaceholders(expanded, settings.useDateFormat != 0, settings.useTimeFormat != 0);
        // Without its selection the text is not what the user stored.
        const auto isWhole = [] { return StrokeAim() == Aim::Free; };
        if (isWhole() && SendKeyTokens(expanded) == 0 && isWhole()) DeliverText(expanded);
    }
    // The user's own clipboard does not come back over a text that he was just told to paste.
    if (StrokeAim() == Aim::PasteMissed) keepClipboardOnce = true;
    if (!HasStrokeToCome(text)) TellMissedStrokes();
    if (settings.restoreOldClipboard && !keepClipboardOnce) {
        // Several executions in a row are one to the user: the clipboard comes back after the last.
        RestoreLater();
    } else {
        // Also where the option was switched off meanwhile, in the time of a dialog.
        DropPreviousClipboard();
    }
    keepClipboardOnce = false;
    // A "pastehtml:" text that was not delivered in one piece must not make the next entry HTML.
    PasteAsHtml = false;
}

namespace {

// What is known of a restore that is due.
struct DueRestore {
    unsigned number = 0;  // a later execution makes it another one
    ULONGLONG since = 0;
    bool isPutOff = false;
    HWND owner = nullptr;  // of the clipboard when it was put off
    bool isPasted = true;  // the target had come to the stroke when it was put off
};

DueRestore due;

}  // namespace

void RestoreLater() {
    due = {due.number + 1, GetTickCount64()};
    RestartTimer(TIMER_RESTORE_CLIPBOARD);
}

static void PutRestoreOff(bool isPasted) {
    if (!std::exchange(due.isPutOff, true)) due.owner = GetClipboardOwner();
    due.isPasted = isPasted;
    RestartTimer(TIMER_RESTORE_CLIPBOARD);
}

static DWORD ProcessOf(HWND window) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    return process;
}

// The user's clipboard would come back over what he has copied in the meantime. What the target of the
// execution has put there is no copy of his: it came late to ours.
static bool HasUserCopied() {
    const HWND owner = GetClipboardOwner();
    const bool isOthers = owner && owner != due.owner && ProcessOf(owner) != ProcessOf(aimedAt);
    return due.isPutOff && isOthers;
}

void OnRestoreTimer() {
    constexpr DWORD kAnswerTime = 100;
    constexpr ULONGLONG kLongestWait = 10000;
    // The option may have been switched off meanwhile.
    if (!settings.restoreOldClipboard) return DropPreviousClipboard();
    if (!pendingProgram.program.empty()) return RestartTimer(TIMER_RESTORE_CLIPBOARD);
    const unsigned number = due.number;
    const bool isPasted = AwaitStroke(kAnswerTime) || GetTickCount64() - due.since > kLongestWait;
    // Keys were served meanwhile; an execution among them has started the time anew.
    if (due.number != number) return;
    if (HasUserCopied()) return DropPreviousClipboard();
    // One that hung gets the time that any other gets, from its answer on.
    if (!isPasted || !due.isPasted) return PutRestoreOff(isPasted);
    GiveBackPreviousClipboard(0);
    if (IsPreviousClipboardKept()) PutRestoreOff(true);
}

static void PostSlotCommand(WPARAM command, wchar_t slot) {
    PostMessageW(executorClient.mainWindow, WM_COMMAND, command, slot);
}

static void ReplaceInSelection(const std::wstring& entryText) {
    if (!MaySendStroke() || !ClearForCopy()) return;
    SendCopy();
    AwaitCopy(100);
    std::wstring selection;
    ClipboardGetText(selection);
    const ReplaceResult result = ApplyReplaceRules(entryText, std::move(selection));
    if (result.count == 0) return;
    Pause(25);
    if (PutTextToPaste(result.text)) SendPaste(kPasteWait);
}

static void Launch(bool elevate, const std::wstring& line) {
    LaunchCommandLine(elevate, line);
}

static void RunLines(const ParsedCommand& command) {
    ExpandRunEntry(command.elevate, command.argument, Launch, settings.useDateFormat != 0,
                   settings.useTimeFormat != 0);
}

bool ExecuteCommandPrefixes(const std::wstring& text) {
    const ParsedCommand command = ParseCommand(text);
    CurrentPress().kind = KindName(command.kind);
    switch (command.kind) {
        case CommandKind::None: return false;
        case CommandKind::Replace: ReplaceInSelection(command.argument); break;
        case CommandKind::CopySlot: PostSlotCommand(CMD_COPY_SLOT, command.slot); break;
        case CommandKind::PasteSlots: PasteSlots(command.argument); break;
        case CommandKind::SaveSlot: PostSlotCommand(CMD_SAVE_SLOT, command.slot); break;
        case CommandKind::Builtin: RunBuiltinCommand(command.argument, executorClient.targetWindow); break;
        case CommandKind::RunLines: RunLines(command); break;
        case CommandKind::Image: ImageFileToClipboard(command.argument); break;
        case CommandKind::Run: LaunchCommandLine(false, command.argument); break;
        case CommandKind::Cpy:
            pendingProgram = SplitProgram(command.argument);
            pendingWindow = aimedAt;
            pendingPress = CurrentPressNumber();
            // The step of an earlier one would start this program with that one's selection.
            KillTimer(executorClient.mainWindow, TIMER_CPY_LAUNCH);
            RestartTimer(TIMER_CPY_COPY);
            break;
    }
    return true;
}

void OnCpyCopyTimer() {
    const PressInterlude step(pendingPress);
    Aimed(std::exchange(pendingWindow, nullptr));
    if (!SendCopy()) {
        pendingProgram = {};
        TellMissedStrokes();
        return;
    }
    AwaitCopy(100);
    // The clipboard's text and, where there is none, nothing: not what an earlier command captured.
    CapturedText.clear();
    ClipboardGetText(CapturedText);
    RestartTimer(TIMER_CPY_LAUNCH);
}

void OnCpyLaunchTimer() {
    const PressInterlude step(pendingPress);
    SendCopy();
    AwaitCopy(100);
    // Taken out, because a hotkey pressed while the shell is at it may name the next program.
    ProgramAndParameters command = std::exchange(pendingProgram, {});
    if (command.program.empty()) return;
    command = WithSelection(std::move(command), CapturedText);
    OpenWithShell(command.program, command.parameters);
}

}  // namespace verbatix
