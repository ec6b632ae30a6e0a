#include "sonarium/ui/dialogs/ChangedFileDlg.h"

#include "host/Utf8.h"
#include "sonarium/ui/dialogs/DialogService.h"

namespace sn
{
ExternalChangeAnswer AskAboutChangedFile(const ExternalChange& change)
{
    IDialogService* service = CurrentDialogService();
    if (!service)
        return ExternalChangeAnswer::KeepTheirs;
    ChangedFileRequest request;
    request.what = change.unit ? L"the work unit \"" + std::wstring(change.unit->GetName()) + L"\""
                               : std::wstring(L"the project file");
    request.path = Utf8::ToWide(change.path.string());
    switch (service->ShowChangedFile(request).choice)
    {
    case ChangedFileAnswer::Overwrite:
        return ExternalChangeAnswer::Overwrite;
    case ChangedFileAnswer::Reload:
        // The project file cannot be read again on its own: it stays as the other program left it.
        return change.unit ? ExternalChangeAnswer::Reload : ExternalChangeAnswer::KeepTheirs;
    case ChangedFileAnswer::KeepTheirs:
        break;
    }
    return ExternalChangeAnswer::KeepTheirs;
}
} // namespace sn
