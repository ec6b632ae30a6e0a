// Object operations the user starts, each one undo step of the host's own: renaming, and deleting
// after asking again when other objects refer to them.

#include "host/UIObjectHelpers.h"

#include "host/MessageBox.h"
#include "host/StringHelp.h"
#include "sonarium/core/deletion/Deletion.h"
#include "sonarium/core/model/ProjectEdit.h"

#include <fmt/xchar.h>

namespace
{
// A long list is cut here: the user needs to see that references exist, not every one of them.
constexpr size_t kListedReferences = 10;

bool ConfirmDespiteReferences(const std::vector<sn::deletion::Reference>& references)
{
    std::wstring text = StringHelp::Localize(L"Other objects refer to what you are deleting:").c_str();
    text += L"\n";
    for (size_t i = 0; i < references.size() && i < kListedReferences; ++i)
        text += L"\n" + sn::deletion::Describe(references[i]);
    if (references.size() > kListedReferences)
        text += L"\n" + fmt::format(fmt::runtime(std::wstring_view(StringHelp::Localize(L"... and {0} more."))),
                                    references.size() - kListedReferences);
    text += L"\n\n";
    text += StringHelp::Localize(L"Delete anyway? These references will be removed; Undo brings them back.").c_str();
    const CStdStr<wchar_t> caption = StringHelp::Localize(L"Delete");
    return CXMessageBox(text.c_str(), MB_YESNO | MB_ICONWARNING, caption.c_str()) == IDYES;
}
} // namespace

bool UIObjectHelpers::DeleteObjects(const std::vector<IOrbObject*>& objects)
{
    std::vector<sn::ProjectObject*> models;
    for (IOrbObject* object : objects)
        if (sn::ProjectObject* model = sn::AsProjectObject(object))
            models.push_back(model);
    const std::vector<sn::deletion::Reference> references = sn::deletion::OutsideReferences(models);
    if (!references.empty() && !ConfirmDespiteReferences(references))
        return false;
    return sn::deletion::DeleteObjects(models, references);
}

bool UIObjectHelpers::RenameObject(IOrbObject* object, const CStdStr<wchar_t>& name)
{
    return sn::ProjectEdit::Rename(sn::AsProjectObject(object), name);
}
