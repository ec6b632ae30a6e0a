#include "host/DlgNewWorkUnit.h"

#include "sonarium/ui/dialogs/DialogService.h"

long long CDlgNewWorkUnit::Show(PMTreeNode::NodeType type, const CStdStr<wchar_t>& folderPath,
                                CStdStr<wchar_t>& name)
{
    constexpr long long kOk = 1;
    constexpr long long kCancelled = 2;
    sn::IDialogService* service = sn::CurrentDialogService();
    if (!service)
        return kCancelled;
    const sn::NewWorkUnitAnswer answer = service->ShowNewWorkUnit({type, folderPath, name});
    if (!answer.ok)
        return kCancelled;
    name = answer.name;
    return kOk;
}
