#include "host/UnloadDirtyWorkUnitsDlg.h"

#include "sonarium/ui/dialogs/DialogService.h"

UnloadDirtyWorkUnitsDlg::Decision UnloadDirtyWorkUnitsDlg::Show(const std::vector<CStdStr<wchar_t>>& paths)
{
    sn::IDialogService* service = sn::CurrentDialogService();
    if (!service)
        return Decision_Cancel;
    sn::UnloadDirtyRequest request;
    request.paths.assign(paths.begin(), paths.end());
    return service->ShowUnloadDirty(request).decision;
}
