// The message that tells the user why a name was refused, in the words of the naming rules.

#include "host/ObjectName.h"

#include "host/MessageBox.h"
#include "host/StringHelp.h"
#include "sonarium/core/naming/NamingRules.h"

namespace ObjectName
{
bool DisplayInvalidNameErrorMessage(NameValidationResult result, OrbObjectType type, const CStdStr<wchar_t>& name,
                                    bool retry)
{
    std::wstring text = sn::naming::Describe(result, type, name);
    if (retry)
        text += L"\n\n" + StringHelp::Localize(L"Choose another name?");
    const UINT style = (retry ? MB_OKCANCEL : MB_OK) | MB_ICONERROR;
    const int answer = CXMessageBox(text.c_str(), style, StringHelp::Localize(L"Invalid Name").c_str());
    return retry && answer == IDOK;
}
} // namespace ObjectName
