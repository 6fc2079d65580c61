#include "bench/reliability/kill_driver.h"

#include <algorithm>
#include <map>
#include <set>
#include <thread>

#include "ids.h"
#include "store/ini_text.h"
#include "store/list_damage.h"
#include "store/list_exchange.h"
#include "store/text_file.h"
#include "support/wait.h"

namespace verbatix::test {

namespace {

constexpr int kHotkeys = 40;  // one step among the entries of a hotkey passes as many entries of the list
constexpr int kImported = 25;
constexpr int kFirstImported = 100000;
constexpr LPARAM kMenuMarker = 0xAFFE0000;

std::wstring Hotkey(int number) {
    return Format(L"%ls+%lc", number % kHotkeys < 26 ? L"Ctrl-Alt" : L"Alt-Gr",
                  static_cast<wint_t>(L'A' + number % kHotkeys % 26));
}

std::vector<StoredLine> Lines(int first, int count) {
    std::vector<StoredLine> lines;
    for (int i = first; i < first + count; ++i)
        lines.push_back({Hotkey(i), Format(L"entry %d; some words of it", i), Format(L"label %d;", i)});
    return lines;
}

// The number behind a word, as in "xxentry 17;".
int NumberBehind(std::wstring_view text, std::wstring_view word) {
    const std::size_t at = text.find(word);
    if (at == std::wstring_view::npos || text.find(L';', at) == std::wstring_view::npos) return -1;
    return ToInt(text.substr(at + word.size()));
}

// The letters that Edit() has put before texts and labels.
int CountTyped(const std::string& bytes) {
    int typed = 0;
    for (const IniValue& value : AllIniValues(DecodeByMark(bytes))) {
        if (!value.section.starts_with(L"list_")) continue;
        typed += static_cast<int>(std::count(value.value.begin(), value.value.end(), L'x'));
    }
    return typed;
}

class Work {
  public:
    explicit Work(const KillOptions& options) : options_(options), random_(options.seed) {
        file_ =
            options.settingsFolder.empty() ? run_.SettingsFile() : options.settingsFolder + L"\\list.ini";
        // Numbered from 100000 on, so that what was imported can be told.
        const std::wstring text = SettingsText(Lines(kFirstImported, kImported));
        WriteBytes(ExchangeFilePath(), Utf16File(text));
    }
    ~Work() { DeleteFileW(ExchangeFilePath().c_str()); }
    Work(const Work&) = delete;
    Work& operator=(const Work&) = delete;

    const std::wstring& File() const { return file_; }
    int Below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }

    void Refill() const {
        WriteBytes(file_, Utf16File(SettingsText(Lines(0, options_.entries), L"m_show_tree=1\r\n")));
    }
    bool Start() {
        run_.StartPlain(L"\"-ini:" + file_ + L"\" -bg");
        if (!WaitFor([&] { return run_.MainDialog() != nullptr; }, 30000)) return false;
        dialog_ = run_.MainDialog();
        return true;
    }
    void Kill() const {
        TerminateProcess(run_.Program().Handle(), 9);
        WaitForSingleObject(run_.Program().Handle(), 10000);
    }
    int Exit() { return run_.Exit(); }

    // One action of the user's, carried out before this returns.
    void Act(bool mayImport) {
        const int action = Below(mayImport ? 12 : 11);
        if (action < 5) {
            Edit();
        } else if (action < 9) {
            Send(dialog_, WM_COMMAND, action % 2 ? CMD_MOVE_DOWN : CMD_MOVE_UP, 0);
        } else if (action < 11) {
            const WPARAM options[] = {2, 3, 5, 1112, CMD_SHOW_TREE};
            Send(dialog_, WM_COMMAND, options[Below(5)], kMenuMarker);
        } else {
            PostMessageW(dialog_, WM_COMMAND, 1118, kMenuMarker);
            Answer(IDYES);
        }
    }
    // Whether a file that holds so many letters holds all that were typed.
    bool HasAll(int letters) const { return letters >= typed_ && letters <= typed_ + doubtful_; }
    int Typed() const { return typed_; }
    // A box that is up gets that answer.
    void Answer(int button) const {
        WaitFor(
            [&] {
                const HWND box = run_.Program().WaitForVisibleWindow(L"#32770", nullptr, 0);
                if (!box || box == dialog_) return false;
                PostMessageW(box, WM_COMMAND, static_cast<WPARAM>(button), 0);
                return true;
            },
            300);
    }

    void SwitchOption() const { Send(dialog_, WM_COMMAND, 2, kMenuMarker); }
    bool IsRunning() const { return WaitForSingleObject(run_.Program().Handle(), 0) == WAIT_TIMEOUT; }
    // Types a letter into text or label of another entry.
    void Edit() {
        // Nobody can type while a box is up.
        while (IsRunning() && !IsWindowEnabled(dialog_)) Answer(IDOK);
        const HWND views[] = {GetDlgItem(dialog_, IDC_LIST), GetDlgItem(dialog_, IDC_TREE)};
        for (const HWND view : views) Send(view, WM_KEYDOWN, Below(2) ? VK_DOWN : VK_RIGHT, 0);
        // The editor follows by a posted message; a part of the tree that is no entry leaves it empty.
        const HWND field = GetDlgItem(dialog_, Below(2) ? IDC_TEXT : IDC_LABEL);
        Send(dialog_, WM_SELECTION_CHANGED, 0, 0);
        if (!IsWindowEnabled(field)) return;
        const bool isTyped = Send(field, WM_CHAR, L'x', 0);
        // Under a box that has come up meanwhile nobody could have typed, and the letter may go with it.
        ++(isTyped && IsWindowEnabled(dialog_) ? typed_ : doubtful_);
        Send(dialog_, WM_TIMER, TIMER_EDITOR_UPDATE, 0);
    }

  private:
    bool Send(HWND window, UINT message, WPARAM wParam, LPARAM lParam) const {
        DWORD_PTR result = 0;
        return SendMessageTimeoutW(window, message, wParam, lParam, SMTO_ABORTIFHUNG, 300, &result) != 0;
    }

    KillOptions options_;
    std::mt19937 random_;
    ProgramRun run_;
    std::wstring file_;
    HWND dialog_ = nullptr;
    int typed_ = 0;
    int doubtful_ = 0;
};

}  // namespace

std::wstring Judge(const std::string& bytes, int entries) {
    const std::wstring text = DecodeByMark(bytes);
    if (EncodingByMark(bytes) != Encoding::kUtf16) return L"no UTF-16 file";
    if (LooksDamaged(ShapeOfList(text))) return L"something is missing";
    std::map<std::wstring, std::pair<std::wstring, std::wstring>> found;
    for (const IniValue& value : AllIniValues(text)) {
        if (value.section == L"list_text") found[value.key].first = value.value;
        if (value.section == L"list_label") found[value.key].second = value.value;
    }
    std::multiset<int> numbers;
    for (const auto& [key, entry] : found) {
        const int number = NumberBehind(entry.first, L"entry ");
        if (!entry.first.ends_with(L"<E<N<D|") || number < 0) return key + L" is torn: " + entry.first;
        if (NumberBehind(entry.second, L"label ") != number) return key + L" has another's label";
        numbers.insert(number);
    }
    for (int i = 0; i < entries; ++i) {
        if (numbers.count(i) != 1)
            return Format(L"entry %d is there %d times", i, static_cast<int>(numbers.count(i)));
    }
    const std::size_t imports = numbers.count(kFirstImported);
    for (int i = 0; i < kImported; ++i) {
        if (numbers.count(kFirstImported + i) != imports) return L"half an import";
    }
    return numbers.size() == static_cast<std::size_t>(entries) + imports * kImported ? L"" : L"too many";
}

KillResult KillWhileWorking(const KillOptions& options) {
    constexpr int kLongestWork = 1200;
    Work work(options);
    KillResult result;
    for (int kill = 0; kill < options.kills && result.broken.empty(); ++kill) {
        // Imports come last before the list begins anew: they make it grow.
        constexpr int kRounds = 8;
        if (kill % kRounds == 0) work.Refill();
        if (!work.Start()) {
            result.broken = L"the program did not start";
            break;
        }
        // From a thread of its own: in the middle of whatever is going on.
        const auto delay = static_cast<DWORD>(work.Below(kLongestWork) + 20);
        std::thread killer([&] {
            Sleep(delay);
            work.Kill();
        });
        for (; work.IsRunning(); ++result.actions) work.Act(kill % kRounds == kRounds - 1);
        killer.join();
        ++result.files;
        if (GetFileAttributesW((work.File() + L".new").c_str()) != INVALID_FILE_ATTRIBUTES)
            ++result.insideCommits;
        result.broken = Judge(ReadBytes(work.File()), options.entries);
    }
    return result;
}

KillResult FillDiskWhileWorking(const KillOptions& options) {
    constexpr int kActions = 5;
    Work work(options);
    KillResult result;
    work.Refill();
    if (!work.Start()) result.broken = L"the program did not start";
    const std::wstring filler = options.settingsFolder + L"\\filler";
    const auto look = [&](const wchar_t* when) {
        ++result.files;
        const std::wstring wrong = Judge(ReadBytes(work.File()), options.entries);
        if (!wrong.empty() && result.broken.empty()) result.broken = std::wstring(when) + L": " + wrong;
    };
    for (int round = 0; round < options.kills && result.broken.empty(); ++round) {
        ULARGE_INTEGER free = {};
        GetDiskFreeSpaceExW(options.settingsFolder.c_str(), &free, nullptr, nullptr);
        // From nothing at all to just enough for some of what a save needs.
        const auto left = static_cast<ULONGLONG>(work.Below(options.entries * 400));
        if (left < free.QuadPart) WriteBytes(filler, std::string(free.QuadPart - left, 'f'));
        for (int i = 0; i < kActions; ++i, ++result.actions) {
            work.Act(false);
            work.Answer(IDOK);
            look(L"on a full disk");
        }
        DeleteFileW(filler.c_str());
        // Any save takes along what could not be written.
        work.SwitchOption();
        look(L"with room again");
        int typed = 0;
        const auto isAllSaved = [&] { return work.HasAll(typed = CountTyped(ReadBytes(work.File()))); };
        if (!WaitFor(isAllSaved)) {
            result.broken = Format(L"%d of %d letters saved", typed, work.Typed());
        }
    }
    if (result.broken.empty() && work.Exit() != 1) result.broken = L"the program did not end";
    return result;
}

}  // namespace verbatix::test
