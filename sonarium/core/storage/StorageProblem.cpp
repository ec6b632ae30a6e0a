#include "sonarium/core/storage/StorageProblem.h"

#include "host/Utf8.h"

namespace sn
{
CStdStr<wchar_t> StorageProblem::Text() const
{
    return Utf8::ToWide(path.string() + ": " + reason);
}
} // namespace sn
