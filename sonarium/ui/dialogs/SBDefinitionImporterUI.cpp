// The host's importer of SoundBank definition files, with its report to the user.

#include "host/SBDefinitionImporterUI.h"

#include "host/MessageBox.h"
#include "host/StringHelp.h"
#include "host/Utf8.h"
#include "sonarium/core/host/Host.h"
#include "sonarium/core/import/SoundBankDefinition.h"

#include <algorithm>

#include <fmt/xchar.h>

namespace
{
std::wstring Format(const wchar_t* english, auto... values)
{
    return fmt::format(fmt::runtime(std::wstring_view(StringHelp::Localize(english))), values...);
}
} // namespace

SBDefinitionImporterUI::SBDefinitionImporterUI() = default;
SBDefinitionImporterUI::~SBDefinitionImporterUI() = default;

bool SBDefinitionImporterUI::ImportSoundBankDefinition(const CStdStr<wchar_t>& path, IOrbObject* target)
{
    sn::Host* host = sn::Host::Get();
    sn::Project* project = host ? host->GetProject() : nullptr;
    if (!project)
        return false;
    const CStdStr<wchar_t> caption = StringHelp::Localize(L"Import SoundBank Definition");
    const sn::banks::Definition definition = sn::banks::ReadDefinition(std::filesystem::path(Utf8::FromWide(path)));
    if (!definition.fileProblem.empty())
    {
        const std::wstring text = Format(L"The SoundBank definition {0} cannot be read: {1}.", std::wstring(path),
                                         definition.fileProblem);
        CXMessageBox(text.c_str(), MB_OK | MB_ICONERROR, caption.c_str());
        return false;
    }
    const sn::banks::DefinitionResult result =
        sn::banks::ApplyDefinition(*project, definition.lines, sn::AsProjectObject(target));

    std::vector<sn::banks::LineProblem> problems = definition.problems;
    problems.insert(problems.end(), result.problems.begin(), result.problems.end());
    std::stable_sort(problems.begin(), problems.end(), [](const auto& a, const auto& b) { return a.line < b.line; });
    std::wstring text = Format(L"{0} entries were added to SoundBanks ({1} already there, {2} SoundBanks created).",
                               result.added, result.alreadyThere, result.banksCreated);
    if (!problems.empty())
    {
        text += L"\n\n" + Format(L"{0} lines could not be applied:", problems.size());
        for (const sn::banks::LineProblem& problem : problems)
            text += L"\n" + problem.Text();
    }
    CXMessageBox(text.c_str(), MB_OK | (problems.empty() ? MB_ICONINFORMATION : MB_ICONWARNING), caption.c_str());
    return problems.empty();
}
