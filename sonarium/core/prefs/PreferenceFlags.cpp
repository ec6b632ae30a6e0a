// The user's choices that the explorer and the editors consult, read from the installed store.

#include "host/UserPreferences.h"

namespace
{
constexpr const wchar_t* kSection = L"Preferences";

bool ReadFlag(const wchar_t* key, bool defaultValue)
{
    const IUserPreferences* store = IUserPreferences::Get();
    return store ? store->GetIntValue(kSection, key, defaultValue ? 1 : 0) != 0 : defaultValue;
}
} // namespace

bool InspectUserPref::GetInspectOnSingleClick()
{
    return ReadFlag(L"InspectOnSingleClick", true);
}

bool EditorPreferences::IsEventActionNamePrefix()
{
    return ReadFlag(L"EventActionNamePrefix", false);
}

bool EditorPreferences::IsEventNameCaseAllLower()
{
    return ReadFlag(L"EventNameCaseAllLower", false);
}

bool EditorPreferences::IsModifyEventNameCase()
{
    return ReadFlag(L"ModifyEventNameCase", false);
}

bool EditorPreferences::IsUseActionNameForEvent()
{
    return ReadFlag(L"UseActionNameForEvent", true);
}
