#include "ui/shell/web_pages.h"

#include <windows.h>

#include <shellapi.h>

#include "base/language.h"
#include "base/product.h"
#include "ids.h"
#include "ui/state/program_client.h"

namespace verbatix {

namespace {

struct Page {
    const wchar_t* query;
    int command;
    int germanSite;  // language texts
    int otherSite;
    bool namesProgram;  // the query ends in the program's name
};

constexpr Page kPages[] = {
    {L"?seite=faq-Verbatix&faq=6", CMD_DATE_HELP, text::kSite, text::kEnglishSite, false},
    {L"?seite=faq-Verbatix&faq=25", CMD_BACKUP_HELP, text::kSite, text::kEnglishSite, false},
    {L"", CMD_PROGRAM_PAGE, text::kProgramPage, text::kEnglishProgramPage, false},
    {L"?seite=paypal&Program=", CMD_SUPPORT, text::kSite, text::kEnglishSite, true},
    {L"?seite=faq-", CMD_QUESTIONS, text::kSite, text::kEnglishSite, true},
};

}  // namespace

std::wstring WebPageAddress(int command, bool german) {
    for (const Page& page : kPages) {
        if (page.command != command) continue;
        const std::wstring address = LanguageText(german ? page.germanSite : page.otherSite) + page.query;
        return page.namesProgram ? address + kProductName : address;
    }
    return {};
}

bool OpenWebPageOf(int command) {
    constexpr int kGerman = 0;
    const bool german = programClient.activeLanguage && programClient.activeLanguage() == kGerman;
    const std::wstring address = WebPageAddress(command, german);
    if (address.empty()) return false;
    ShellExecuteW(nullptr, L"open", address.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
    return true;
}

}  // namespace verbatix
