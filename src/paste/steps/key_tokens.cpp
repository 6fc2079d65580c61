#include "paste/steps/key_tokens.h"

#include <windows.h>

#include "clipboard/paste_content.h"
#include "hotkeys/key_simulation.h"
#include "hotkeys/pause.h"
#include "paste/steps/generators.h"
#include "paste/text/placeholders.h"

#include <array>
#include <iterator>

namespace verbatix {

namespace {

struct KeyToken {
    std::wstring_view name;
    BYTE key;
    unsigned milliseconds;
};

constexpr KeyToken kKeyTokens[] = {
    {L"%send_enter%", VK_RETURN, 0}, {L"%send_tab%", VK_TAB, 0}, {L"%sleep_50%", 0, 50},
    {L"%sleep_100%", 0, 100},        {L"%sleep_200%", 0, 200},   {L"%sleep_500%", 0, 500},
};

const KeyToken* TokenAt(std::wstring_view text) {
    for (const KeyToken& token : kKeyTokens) {
        if (text.starts_with(token.name)) return &token;
    }
    return nullptr;
}

bool PasteSegment(const std::wstring& segment) {
    constexpr DWORD kPasteWait = 10;
    Pause(10);
    return PutTextToPaste(WithoutMarkers(segment)) && SendPaste(kPasteWait);
}

}  // namespace

std::span<const wchar_t* const> KeyTokens() {
    static constexpr auto kNames = [] {
        std::array<const wchar_t*, std::size(kKeyTokens)> names = {};
        for (std::size_t i = 0; i < names.size(); ++i) names[i] = kKeyTokens[i].name.data();
        return names;
    }();
    return kNames;
}

bool HoldsKeyToken(std::wstring_view text) {
    return text.find(L"%send_enter%") != std::wstring_view::npos ||
           text.find(L"%send_tab%") != std::wstring_view::npos;
}

KeySteps SplitAtKeyTokens(std::wstring_view text) {
    KeySteps result;
    std::size_t start = 0;
    for (std::size_t at = text.find(L'%'); at != std::wstring_view::npos; at = text.find(L'%', at)) {
        const KeyToken* token = TokenAt(text.substr(at));
        if (!token) {
            ++at;
            continue;
        }
        result.steps.push_back(
            {std::wstring(text.substr(start, at - start)), token->key, token->milliseconds});
        at += token->name.size();
        start = at;
    }
    result.tail = text.substr(start);
    return result;
}

int SendKeyTokens(const std::wstring& text) {
    if (!HoldsKeyToken(text)) return TryGenerators(text);
    ClearForCopy();
    Pause(10);
    const KeySteps plan = SplitAtKeyTokens(text);
    for (const KeyStep& step : plan.steps) {
        if (!PasteSegment(step.segment)) break;
        if (step.key) {
            PressKey(step.key);
        } else {
            Pause(step.milliseconds);
        }
    }
    if (!plan.tail.empty() && StrokeAim() == Aim::Free) PasteSegment(plan.tail);
    Pause(50);
    return static_cast<int>(plan.steps.size());
}

}  // namespace verbatix
