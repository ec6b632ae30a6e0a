#include "sonarium/ui/dialogs/BatchRenameDlg.h"

#include "host/MessageBox.h"
#include "host/StringHelp.h"
#include "sonarium/core/host/ProjectBuilder.h"
#include "sonarium/ui/dialogs/DialogService.h"

namespace sn
{
size_t BatchRenameDlg::Run(const std::vector<IOrbObject*>& selection)
{
    std::vector<ProjectObject*> objects;
    for (IOrbObject* object : selection)
        if (ProjectObject* model = AsProjectObject(object); model && model->IsInProject())
            objects.push_back(model);
    if (objects.empty())
    {
        const CStdStr<wchar_t> caption = StringHelp::Localize(L"Batch Rename");
        const CStdStr<wchar_t> text = StringHelp::Localize(L"Select the objects to rename first.");
        CXMessageBox(text.c_str(), MB_OK | MB_ICONINFORMATION, caption.c_str());
        return 0;
    }
    IDialogService* service = CurrentDialogService();
    if (!service)
        return 0;
    // Numbers follow the tree, whatever order the objects were picked in.
    rename::SortInHierarchyOrder(objects);
    BatchRenameRequest request;
    for (ProjectObject* object : objects)
        request.objects.push_back(PathOf(*object));
    request.preview = [&](const rename::BatchRenameRule& rule) { return rename::Preview(objects, rule); };
    const BatchRenameAnswer answer = service->ShowBatchRename(request);
    return answer.ok ? rename::Apply(objects, answer.rule) : 0;
}
} // namespace sn
