// The host's naming operations, over the reference host's one rule set.

#include "host/ObjectName.h"

#include "sonarium/core/naming/NamingRules.h"

namespace ObjectName
{
bool MakeObjectNameValid(OrbObjectType type, CStdStr<wchar_t>& name, const IOrbObject* parent,
                         const IOrbObject* self, unsigned long)
{
    std::wstring text = name;
    if (!sn::naming::MakeValid(type, text, sn::AsProjectObject(parent), sn::AsProjectObject(self)))
        return false;
    name = std::move(text);
    return true;
}

void AutoFixNameCharacters(OrbObjectType type, CStdStr<wchar_t>& name)
{
    sn::naming::FixCharacters(type, name);
}

NameValidationResult ValidateObjectName(OrbObjectType type, const CStdStr<wchar_t>& name, IOrbObject* parent,
                                        IOrbObject* self, bool checkSiblings)
{
    return sn::naming::Check(type, name, sn::AsProjectObject(parent), sn::AsProjectObject(self), checkSiblings);
}
} // namespace ObjectName
