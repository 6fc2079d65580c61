// Presses hotkeys of the running program for a long time, as a person does: held 50 to 150 ms, let up in
// any order, now slower, now faster. After each press the right text has to stand in another program's
// window and no key may be down; at times the user's clipboard has to be back. At the end the program may
// not hold more than after the first 100 presses. Arguments: presses, seed. Exit code 0 only when nothing
// was wrong.
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "base/text.h"
#include "bench/holdings.h"
#include "clipboard/clipboard_text.h"
#include "support/keys.h"
#include "support/program_run.h"
#include "support/wait.h"

using namespace verbatix;
using namespace verbatix::test;

namespace {

constexpr const wchar_t* kUsers = L"the user's own text";
constexpr int kSettled = 100;

// One kind of press: what is selected in the target before, the hotkey, what is chosen in the menu, and
// what the target holds afterwards.
struct Kind {
    const wchar_t* name;
    const wchar_t* selected;
    std::vector<BYTE> held;
    BYTE key;
    BYTE choice;
    const wchar_t* result;
};

const std::vector<StoredLine> kLines = {
    {L"Ctrl-Alt+W", L"plain \x20ac text"},
    {L"Ctrl+Q", L"two\\nlines"},
    {L"Alt-Gr+E", L"by AltGr"},
    {L"R-Ctrl+R", L"by right Ctrl"},
    {L"L-Win+Y", L"by Windows"},
    {L"Ctrl-Alt+T", L"one%send_tab%two%send_enter%three"},
    {L"Ctrl-Alt+S", L"<%copy_text_uc%>"},
    {L"Ctrl-Alt+C", L"copy_slot:1"},
    {L"Ctrl-Alt+P", L"paste_slot:1"},
    {L"Ctrl-Alt+M", L"first of two", L"&First"},
    {L"Ctrl-Alt+M", L"second of two", L"&Second"},
    {L"Ctrl-Alt+X", L"replace:\\na=>b"},
};

const Kind kKinds[] = {
    {L"text", L"", {VK_LCONTROL, VK_LMENU}, 'W', 0, L"plain \x20ac text"},
    {L"lines", L"x", {VK_LCONTROL}, 'Q', 0, L"two\r\nlines"},
    {L"AltGr", L"", {VK_LCONTROL, VK_RMENU}, 'E', 0, L"by AltGr"},
    {L"right Ctrl", L"", {VK_RCONTROL}, 'R', 0, L"by right Ctrl"},
    {L"Windows", L"", {VK_LWIN}, 'Y', 0, L"by Windows"},
    {L"keys", L"", {VK_LCONTROL, VK_LMENU}, 'T', 0, L"one\ttwo\r\nthree"},
    {L"selection", L"abc", {VK_LCONTROL, VK_LMENU}, 'S', 0, L"<ABC>"},
    {L"copy slot", L"kept", {VK_LCONTROL, VK_LMENU}, 'C', 0, L"kept"},
    {L"paste slot", L"", {VK_LCONTROL, VK_LMENU}, 'P', 0, L"kept"},
    {L"menu", L"", {VK_LCONTROL, VK_LMENU}, 'M', 'S', L"second of two"},
    {L"replace", L"banana", {VK_LCONTROL, VK_LMENU}, 'X', 0, L"bbnbnb"},
};
constexpr std::size_t kCopySlot = 7;
constexpr std::size_t kPasteSlot = 8;

class Soak {
  public:
    explicit Soak(unsigned seed) : random_(seed) {}

    bool Start() {
        const bool started =
            run_.WriteSettings(SettingsText(kLines, L"restore_old_clipboard=1\r\n")) && run_.Start(L"-bg");
        SetCursorPos(1200, 800);
        target_ = std::make_unique<Target>();
        return started && ClipboardPutText(kUsers) && Press(kKinds[kCopySlot]);
    }

    // Whether all went well.
    bool Run(int presses) {
        bench::Holdings settled;
        for (int press = 1; press <= presses; ++press) {
            const std::size_t kind = Any(0, static_cast<DWORD>(std::size(kKinds) - 1));
            if (!Press(kKinds[kind])) Count(kKinds[kind]);
            if (kind == kPasteSlot || press % 10 == 0) Linger(Any(0, 300));
            if (press % 50 == 0) ExpectUsersClipboard();
            if (press == kSettled) settled = Holds();
            if (press % 250 == 0) {
                std::printf("%d presses, %d wrong\n", press, wrong_);
                std::fflush(stdout);
            }
        }
        const bench::Holdings now = Holds();
        for (const auto& [count, held] : {std::pair(kSettled, settled), std::pair(presses, now)})
            std::printf("after %d presses: %lu handles, %.1f MB\n", count, held.handles, held.megabytes);
        std::printf("%d of %d presses were wrong\n", wrong_, presses);
        constexpr double kNoise = 2;
        const bool grew = now.handles > settled.handles + 5 || now.megabytes > settled.megabytes + kNoise;
        return wrong_ == 0 && settled.handles > 0 && !grew;
    }

  private:
    DWORD Any(DWORD least, DWORD most) {
        return std::uniform_int_distribution<DWORD>(least, most)(random_);
    }

    bench::Holdings Holds() const { return bench::HoldingsOf(run_.Program().Id()); }

    void Select(const wchar_t* text) const {
        target_->SetText(text);
        SendMessageW(target_->Edit(), EM_SETSEL, 0, -1);
    }

    void Play(const Kind& kind) {
        for (const BYTE modifier : kind.held) {
            HoldDown(modifier);
            Linger(Any(10, 50));
        }
        // The bench may have let one go meanwhile; a user's stays down.
        for (const BYTE modifier : kind.held) {
            if (GetAsyncKeyState(modifier) >= 0) HoldDown(modifier);
        }
        PressKeyDown(kind.key);
        std::vector<BYTE> up = kind.held;
        up.push_back(kind.key);
        std::shuffle(up.begin(), up.end(), random_);
        for (const BYTE key : up) {
            Linger(Any(20, 80));
            LetKeyUp(key);
        }
    }

    static bool IsMenuOpen() { return IsWindowVisible(FindWindowW(L"#32768", nullptr)) != FALSE; }

    bool Press(const Kind& kind) {
        constexpr DWORD kGuardMilliseconds = 320;
        // Whoever has just got the focus makes the bench read its keyboard anew.
        if (wasMenu_ && !SettlesInFront(target_->Window())) return Say(kind, L"the target is not in front");
        wasMenu_ = kind.choice != 0;
        // A copy into a slot shows nowhere; by now it is done.
        Linger(kGuardMilliseconds + Any(0, 200));
        Select(kind.selected);
        Linger(Any(50, 150));
        Play(kind);
        if (kind.choice) {
            if (!WaitFor(IsMenuOpen)) return Say(kind, L"no menu");
            Linger(Any(50, 200));
            PlayStroke({}, kind.choice);
        }
        const bool shows = WaitFor([&] { return target_->Text() == kind.result; });
        if (!shows) return Say(kind, target_->Text());
        return WaitFor([] { return !AnyModifierDown(); }) || Say(kind, L"a key is down");
    }

    void ExpectUsersClipboard() {
        std::wstring text;
        const bool isBack = WaitFor([&] { return ClipboardGetText(text) && text == kUsers; });
        if (isBack) return;
        ++wrong_;
        std::printf("the clipboard holds: %s\n", ToBytes(text, CP_UTF8).c_str());
    }

    static bool Say(const Kind& kind, const std::wstring& what) {
        std::printf("%s: %s\n", ToBytes(kind.name, CP_UTF8).c_str(), ToBytes(what, CP_UTF8).c_str());
        std::fflush(stdout);
        return false;
    }

    // Whatever is left over must not spoil the next press.
    void Count(const Kind&) {
        ++wrong_;
        PlayStroke({}, VK_ESCAPE);
        target_->Activate();
        wasMenu_ = true;
    }

    std::mt19937 random_;
    ProgramRun run_;
    std::unique_ptr<Target> target_;
    bool wasMenu_ = false;
    int wrong_ = 0;
};

}  // namespace

int wmain(int count, wchar_t** arguments) {
    const int presses = count > 1 ? std::max(kSettled, ToInt(arguments[1])) : 1000;
    Soak soak(count > 2 ? static_cast<unsigned>(ToInt(arguments[2])) : 1);
    if (!soak.Start()) {
        std::printf("the first press failed\n");
        return 1;
    }
    return soak.Run(presses) ? 0 : 1;
}
