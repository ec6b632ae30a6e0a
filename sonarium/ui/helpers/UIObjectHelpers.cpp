// Object operations the user starts, each one undo step of the host's own.

#include "host/UIObjectHelpers.h"

#include "sonarium/core/model/ProjectEdit.h"

namespace UIObjectHelpers
{
bool RenameObject(IOrbObject* object, const CStdStr<wchar_t>& name)
{
    return sn::ProjectEdit::Rename(sn::AsProjectObject(object), name);
}
} // namespace UIObjectHelpers
