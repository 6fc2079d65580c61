#include "ui/views/entry_kind.h"

#include "menu/menu_model.h"
#include "paste/builtin/builtin_commands.h"
#include "paste/text/command_prefixes.h"

namespace verbatix {

// Built-in commands that have to do with pictures say so in their names.
static EntryKind KindOfBuiltin(std::wstring_view call) {
    const BuiltinCommand* const command = FindBuiltinCommand(call);
    if (!command) return EntryKind::kCommand;
    const std::wstring_view name = command->name;
    return name.find(L"Img") == std::wstring_view::npos ? EntryKind::kCommand : EntryKind::kPicture;
}

EntryKind KindOfEntry(std::wstring_view text) {
    if (text.starts_with(kCharacterListPrefix)) return EntryKind::kCharacters;
    const ParsedCommand command = ParseCommand(text);
    switch (command.kind) {
        case CommandKind::None: return EntryKind::kText;
        case CommandKind::Image: return EntryKind::kPicture;
        case CommandKind::Builtin: return KindOfBuiltin(command.argument);
        default: return EntryKind::kCommand;
    }
}

}  // namespace verbatix
