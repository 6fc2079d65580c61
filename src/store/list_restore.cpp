#include "store/list_restore.h"

#include <cstdint>
#include <optional>

#include "base/language.h"
#include "base/product.h"
#include "base/text.h"
#include "store/file_commit.h"
#include "store/list_damage.h"
#include "store/settings.h"
#include "store/settings_commit.h"
#include "store/settings_merge.h"
#include "store/settings_path.h"
#include "store/text_file.h"

namespace verbatix {

namespace {

constexpr std::int64_t kLargestFile = 64LL << 20;

std::wstring Choice(int text, const ListSource& source) {
    return L"\n" + FillIn(LanguageText(text), {std::to_wstring(source.entries), source.path});
}

std::wstring DamageQuestion(const ListDamage& damage) {
    std::wstring text =
        FillIn(LanguageText(text::kDamageFound), {std::to_wstring(damage.entries), damage.path}) + L"\n";
    if (!damage.keptIn.empty()) text += FillIn(LanguageText(text::kDamagedKeptIn), {damage.keptIn}) + L"\n";
    text += Choice(text::kYesOther, damage.sources[0]);
    if (damage.sources.size() > 1) text += Choice(text::kNoOther, damage.sources[1]);
    return text + L"\n" + LanguageText(damage.sources.size() > 1 ? text::kCancelGoOn : text::kNoGoOn);
}

// The copy that the user has chosen; null for what is left.
const ListSource* Chosen(const ListDamage& damage, int answer) {
    if (answer == IDYES) return &damage.sources[0];
    return answer == IDNO && damage.sources.size() > 1 ? &damage.sources[1] : nullptr;
}

}  // namespace

bool AskAboutDamage(EntryList& list, const ListClient& client) {
    if (!FoundDamage() || !client.showMessage) return false;
    const ListDamage damage = *FoundDamage();
    const UINT buttons = damage.sources.size() > 1 ? MB_YESNOCANCEL : MB_YESNO;
    const int answer = client.showMessage(client.window, DamageQuestion(damage).c_str(), kProductName,
                                          buttons | MB_ICONWARNING);
    const ListSource* source = Chosen(damage, answer);
    const std::optional<std::string> bytes =
        source ? ReadWholeFile(source->path, kLargestFile) : std::nullopt;
    ForgetDamage();
    if (!bytes || ReplaceSettings(*bytes) != ERROR_SUCCESS) {
        SaveList(list, client, true, false);
        return false;
    }
    settings = {};
    LoadSettings(SettingGroup::kStart);
    LoadSettings();
    ReloadList(list, client);
    return true;
}

bool OfferKeptList(EntryList& list, const ListClient& client, const std::wstring& copy) {
    const std::wstring question = FillIn(LanguageText(text::kAskLoadOther), {copy});
    if (!client.showMessage || client.showMessage(client.window, question.c_str(), kProductName,
                                                  MB_YESNO | MB_ICONQUESTION) != IDYES) {
        return false;
    }
    SaveList(list, client, true, true);
    const std::optional<std::string> ours = ReadWholeFile(settingsPath, kLargestFile);
    const std::optional<std::string> theirs = ReadWholeFile(copy, kLargestFile);
    if (!ours || !theirs || KeepCopy(settingsPath, *ours, L"list_before").empty() ||
        !WriteSettingsTogether(ListValues(DecodeSettings(*theirs).text))) {
        return false;
    }
    ReloadList(list, client);
    return true;
}

}  // namespace verbatix
