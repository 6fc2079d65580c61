#include "store/ini_text.h"

#include <algorithm>
#include <set>
#include <unordered_map>
#include <utility>

namespace verbatix {

std::wstring FoldKey(std::wstring_view name) {
    std::wstring folded(name);
    for (wchar_t& c : folded) {
        if (c >= L'A' && c <= L'Z') c = static_cast<wchar_t>(c - L'A' + L'a');
    }
    return folded;
}

namespace {

constexpr std::wstring_view kLineEnds = L"\r\n";

// Ctrl+Z once ended text files and counts as a blank.
bool IsIniBlank(wchar_t c) {
    return c == L' ' || (c >= 0x09 && c <= 0x0d) || c == 0x1a;
}

std::wstring_view Trim(std::wstring_view text) {
    while (!text.empty() && IsIniBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && IsIniBlank(text.back())) text.remove_suffix(1);
    return text;
}

std::wstring_view UpToNul(std::wstring_view text) {
    return text.substr(0, text.find(L'\0'));
}

}  // namespace

IniLine ReadIniLine(std::wstring_view text, std::size_t start) {
    IniLine line;
    line.start = start;
    // Every character of the file passes here: a search for a set of them would take ten times as long.
    std::size_t lineEnd = start;
    while (lineEnd < text.size() && text[lineEnd] != L'\n' && text[lineEnd] != L'\r') ++lineEnd;
    line.next = lineEnd;
    if (text.substr(lineEnd, 2) == kLineEnds) {
        line.next += 2;
    } else if (lineEnd < text.size()) {
        line.next += 1;
    }
    const std::wstring_view content = Trim(text.substr(start, lineEnd - start));
    if (content.empty()) {
        line.end = start;
        return line;
    }
    line.end = static_cast<std::size_t>(content.data() - text.data()) + content.size();
    const std::size_t bracket = content.front() == L'[' ? content.rfind(L']') : std::wstring_view::npos;
    if (bracket != std::wstring_view::npos) {
        line.kind = IniLine::kSection;
        line.name = Trim(UpToNul(content.substr(1, bracket - 1)));
        return line;
    }
    line.kind = IniLine::kKey;
    const std::size_t equals = content.find(L'=');
    line.hasValue = equals != std::wstring_view::npos;
    line.name = UpToNul(Trim(content.substr(0, equals)));
    if (line.hasValue) line.value = Trim(content.substr(equals + 1));
    return line;
}

// --- writing ---

namespace {

// What is to be written for a key: as it was named first, with the value that it was given last.
struct KeyEdit {
    std::wstring_view key;
    std::wstring_view value;
    bool isDone = false;
};

// Whether names are the same; `folded` is one in the form that FoldKey gives.
bool IsName(std::wstring_view name, std::wstring_view folded) {
    return std::equal(name.begin(), name.end(), folded.begin(), folded.end(), [](wchar_t a, wchar_t b) {
        return a == b || (a >= L'A' && a <= L'Z' && a - L'A' + L'a' == b);
    });
}

using Places = std::unordered_map<std::wstring, std::size_t>;

// What is to be written into one section.
struct SectionEdit {
    std::wstring name;
    std::vector<KeyEdit> keys;  // in the order in which new ones are put in
    Places places;              // by folded key
    bool isFound = false;
};

class Writer {
  public:
    Writer(std::wstring_view text, const IniValues& values) : text_(text) {
        for (const IniValue& value : values) Take(value);
        const bool isUnixFile = text.find(L'\n') != text.npos && text.find(kLineEnds) == text.npos;
        if (isUnixFile) lineEnd_ = L"\n";
        result_.reserve(text.size() + 64 * values.size());
    }

    std::wstring Write() {
        for (std::size_t at = 0; at < text_.size();) {
            const IniLine line = ReadIniLine(text_, at);
            at = line.next;
            if (line.kind == IniLine::kSection) {
                LeaveSection(sectionEnd_);
                EnterSection(line.name);
            } else if (line.kind == IniLine::kKey && section_) {
                Replace(line);
            }
            if (line.kind != IniLine::kBlank) sectionEnd_ = line.next;
        }
        LeaveSection(sectionEnd_);
        CopyUpTo(text_.size());
        for (SectionEdit& section : sections_) {
            if (!section.isFound) AppendSection(section);
        }
        return std::move(result_);
    }

  private:
    void Take(const IniValue& value) {
        const auto [place, isNew] = sectionPlaces_.try_emplace(FoldKey(value.section), sections_.size());
        if (isNew) sections_.push_back({value.section, {}, {}, false});
        SectionEdit& section = sections_[place->second];
        const auto [key, isNewKey] = section.places.try_emplace(FoldKey(value.key), section.keys.size());
        if (isNewKey) section.keys.push_back({value.key, {}, false});
        section.keys[key->second].value = Trim(value.value);
    }

    void EnterSection(std::wstring_view name) {
        const auto found = sectionPlaces_.find(FoldKey(name));
        if (found == sectionPlaces_.end() || sections_[found->second].isFound) return;
        section_ = &sections_[found->second];
        section_->isFound = true;
    }

    void Replace(const IniLine& line) {
        const auto found = Find(line.name);
        if (found == section_->places.end()) return;
        KeyEdit& edit = section_->keys[found->second];
        const std::wstring_view value = edit.value;
        if (std::exchange(edit.isDone, true)) return;
        if (line.hasValue && line.value == value) return;
        const std::wstring_view content = text_.substr(line.start, line.end - line.start);
        std::size_t valueStart = line.end;
        if (line.hasValue) {
            valueStart = line.value.empty() ? line.start + content.find(L'=') + 1
                                            : static_cast<std::size_t>(line.value.data() - text_.data());
        }
        CopyUpTo(valueStart);
        if (!line.hasValue) result_.push_back(L'=');
        result_.append(value);
        copied_ = line.end;
    }

    // A look at each of a few keys costs less than the fold and hash of every name in the file.
    Places::const_iterator Find(std::wstring_view name) const {
        constexpr std::size_t kFew = 4;
        const Places& places = section_->places;
        if (places.size() > kFew) return places.find(FoldKey(name));
        return std::find_if(places.begin(), places.end(),
                            [&](const auto& place) { return IsName(name, place.first); });
    }

    // Puts the keys that the section lacks in at `place`.
    void LeaveSection(std::size_t place) {
        if (!section_) return;
        bool isFirst = true;
        for (const KeyEdit& edit : section_->keys) {
            if (edit.isDone) continue;
            if (std::exchange(isFirst, false)) CopyUpTo(place), EndLine();
            AppendKey(edit);
        }
        section_ = nullptr;
    }

    void AppendSection(const SectionEdit& section) {
        EndLine();
        result_.append(L"[").append(section.name).append(L"]").append(lineEnd_);
        for (const KeyEdit& edit : section.keys) AppendKey(edit);
    }

    void AppendKey(const KeyEdit& edit) {
        result_.append(edit.key).append(L"=").append(edit.value).append(lineEnd_);
    }

    void CopyUpTo(std::size_t end) {
        result_.append(text_.substr(copied_, end - copied_));
        copied_ = end;
    }

    void EndLine() {
        if (!result_.empty() && kLineEnds.find(result_.back()) == std::wstring_view::npos)
            result_.append(lineEnd_);
    }

    std::wstring_view text_;
    std::wstring result_;
    std::size_t copied_ = 0;
    std::size_t sectionEnd_ = 0;
    std::wstring lineEnd_ = std::wstring(kLineEnds);
    std::vector<SectionEdit> sections_;
    Places sectionPlaces_;
    SectionEdit* section_ = nullptr;
};

}  // namespace

std::wstring SetIniValues(std::wstring_view text, const IniValues& values) {
    return values.empty() ? std::wstring(text) : Writer(text, values).Write();
}

// --- reading ---

IniValues AllIniValues(std::wstring_view text) {
    IniValues values;
    std::set<std::wstring> sections;
    std::set<std::wstring> keys;
    std::wstring section;
    bool isInside = false;
    for (std::size_t at = 0; at < text.size();) {
        const IniLine line = ReadIniLine(text, at);
        at = line.next;
        if (line.kind == IniLine::kSection) {
            section = line.name;
            isInside = sections.insert(FoldKey(section)).second;
            keys.clear();
        } else if (line.kind == IniLine::kKey && isInside && keys.insert(FoldKey(line.name)).second &&
                   line.hasValue) {
            values.push_back({section, std::wstring(line.name), std::wstring(UpToNul(line.value))});
        }
    }
    return values;
}

bool IsDoubtfulIni(std::wstring_view text) {
    const auto isOdd = [](wchar_t c) {
        return c < L' ' && (c == 0 || c == 0x0b || c == 0x0c || c == 0x1a);
    };
    if (std::any_of(text.begin(), text.end(), isOdd)) return true;
    std::set<std::wstring> sections;
    for (std::size_t at = 0; at < text.size();) {
        const IniLine line = ReadIniLine(text, at);
        at = line.next;
        if (text[line.next - 1] == L'\r') return true;
        const std::wstring_view content = text.substr(line.start, line.end - line.start);
        if (content.find_first_of(L"[]") == std::wstring_view::npos) continue;
        if (!Trim(content).starts_with(L'[')) continue;
        const bool isPlain = line.kind == IniLine::kSection && content.size() == line.name.size() + 2 &&
                             line.name.find(L']') == std::wstring_view::npos;
        if (!isPlain || !sections.insert(FoldKey(line.name)).second) return true;
    }
    return false;
}

}  // namespace verbatix
