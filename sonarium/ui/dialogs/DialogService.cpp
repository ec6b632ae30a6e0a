#include "sonarium/ui/dialogs/DialogService.h"

namespace sn
{
namespace
{
IDialogService* g_dialogService = nullptr;
}

IDialogService* CurrentDialogService()
{
    return g_dialogService;
}

IDialogService* InstallDialogService(IDialogService* service)
{
    IDialogService* previous = g_dialogService;
    g_dialogService = service;
    return previous;
}
} // namespace sn
