// Key strokes and pauses inside a text: "%send_enter%", "%send_tab%", "%sleep_50%" to "%sleep_500%".
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace verbatix {

// One step of a text with key tokens: paste `segment`, even an empty one; then press `key`, or wait.
struct KeyStep {
    std::wstring segment;
    unsigned char key = 0;      // virtual-key code, 0 for a pause
    unsigned milliseconds = 0;  // of a pause
    bool operator==(const KeyStep&) const = default;
};

struct KeySteps {
    std::vector<KeyStep> steps;
    std::wstring tail;  // what is left behind the last token
};

// Every token, for showing them to the user.
std::span<const wchar_t* const> KeyTokens();

// Whether the text holds a key to press. Pauses alone do not count: without a key between them there is
// nothing to wait for, and such a text is pasted as it is.
bool HoldsKeyToken(std::wstring_view text);

// Cuts the text at its tokens.
KeySteps SplitAtKeyTokens(std::wstring_view text);

// Plays an expanded text: pastes it piece by piece and presses the keys. Returns the number of tokens
// played; 0 means that the caller has to deliver the text itself. A text without keys goes to the
// generators, whose answer is returned.
int SendKeyTokens(const std::wstring& text);

}  // namespace verbatix
