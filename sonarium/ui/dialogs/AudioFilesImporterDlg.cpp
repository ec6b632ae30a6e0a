#include "sonarium/ui/dialogs/AudioFilesImporterDlg.h"

#include "host/FileDialog.h"
#include "host/StringHelp.h"
#include "sonarium/core/host/ProjectBuilder.h"
#include "sonarium/core/import/AudioImport.h"
#include "sonarium/core/model/Project.h"
#include "sonarium/ui/dialogs/DialogService.h"

namespace sn
{
namespace
{
const wchar_t* const kFilter = L"Audio Files (*.wav;*.aif;*.aiff;*.flac;*.ogg)|*.wav;*.aif;*.aiff;*.flac;*.ogg|"
                               L"All Files (*.*)|*.*||";

std::vector<std::wstring> AskForFiles()
{
    CxFileDialog dialog(CxFileDialog::FileDialogOperation_Open, CStdStr<wchar_t>(), CStdStr<wchar_t>(),
                        CFileDialog::Flag_HideReadOnly | CFileDialog::Flag_AllowMultiSelect,
                        StringHelp::Localize(kFilter), nullptr);
    dialog.SetCaption(StringHelp::Localize(L"Import Audio Files"));
    if (dialog.DoModal() != IDOK)
        return {};
    return {dialog.GetPathNames().begin(), dialog.GetPathNames().end()};
}

std::wstring LanguageName(const Project& project, unsigned long id)
{
    for (const Language& language : project.Languages())
        if (language.id == id)
            return language.name;
    return {};
}

unsigned long LanguageId(const Project& project, const std::wstring& name)
{
    for (const Language& language : project.Languages())
        if (name == language.name.c_str())
            return language.id;
    return project.GetReferenceLanguage();
}
} // namespace

size_t AudioFilesImporterDlg::Run(ProjectObject* destination, std::vector<std::wstring> files)
{
    IDialogService* service = CurrentDialogService();
    const Project* project = destination && destination->IsInProject() ? destination->GetProject() : nullptr;
    if (!service || !project)
        return 0;
    if (files.empty() && (files = AskForFiles()).empty())
        return 0;

    const audio::AudioImport import(destination, files);
    ImporterRequest request;
    request.destination = PathOf(*destination);
    request.problem = import.Problem();
    for (const Language& language : project->Languages())
        request.languages.push_back(language.name);
    request.voice = destination->GetNodeType() == PMTreeNode::SoundVoice;
    request.language = LanguageName(*project, project->GetReferenceLanguage());
    request.describe = [&](bool voice, const std::wstring& language)
    {
        std::vector<ImporterRow> rows;
        for (const audio::ImportItem& item : import.Plan({voice, LanguageId(*project, language)}))
            rows.push_back({item.text, item.info.ok ? item.info.Describe() : item.info.problem, item.Usable(),
                            item.Becomes()});
        return rows;
    };
    const ImporterAnswer answer = service->ShowImporter(request);
    if (!answer.ok || !import.Problem().empty())
        return 0;

    const audio::ImportChoices choices{answer.voice, LanguageId(*project, answer.language)};
    size_t usable = 0;
    for (const audio::ImportItem& item : import.Plan(choices))
        usable += item.Usable() ? 1 : 0;
    if (usable == 0)
        return 0;
    ProgressRequest progress;
    progress.caption = StringHelp::Localize(L"Importing Audio Files");
    progress.text = request.destination;
    progress.steps = usable;
    service->BeginProgress(progress);
    const audio::ImportResult result =
        import.Run(choices, [&](size_t done, const std::wstring& file) { return service->StepProgress(done, file); });
    service->EndProgress(result.problems);
    return result.imported;
}
} // namespace sn
