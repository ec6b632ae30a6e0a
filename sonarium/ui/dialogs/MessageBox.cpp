#include "host/MessageBox.h"

#include "host/UserPreferences.h"
#include "sonarium/ui/dialogs/DialogService.h"
#include "sonarium/ui/dialogs/MessageBoxButtons.h"

#include <string>

namespace
{
// Remembered answers live in the user's preferences, one integer (the button) per key.
constexpr const wchar_t* kDontAskAgainSection = L"DontAskAgain";

std::wstring DontAskAgainKey(UINT style, const CXMessageBoxDefs::CXMSGBOXPARAMS* params)
{
    if (!(style & CXMessageBoxDefs::DontAskAgain) || !params || !params->pszDontAskAgainKey)
        return {};
    return params->pszDontAskAgainKey;
}

// The remembered answer, or 0. A stored value that is not a button of this box (an edited
// file, a box whose buttons changed) is ignored, and the box is shown again.
int RememberedAnswer(const std::wstring& key, UINT style)
{
    const IUserPreferences* preferences = IUserPreferences::Get();
    if (!preferences)
        return 0;
    const long long stored = preferences->GetIntValue(kDontAskAgainSection, key.c_str(), 0);
    if (stored <= 0 || stored > 0xFFFF || !sn::MessageBoxButtons::Offers(style, static_cast<int>(stored)))
        return 0;
    return static_cast<int>(stored);
}

// A ticked Cancel is not remembered: the user would otherwise never be able to go on.
void Remember(const std::wstring& key, int button)
{
    IUserPreferences* preferences = IUserPreferences::Get();
    if (preferences && button != IDCANCEL)
        preferences->SetIntValue(kDontAskAgainSection, key.c_str(), button);
}
} // namespace

int CXMessageBox(const wchar_t* text, UINT style, const wchar_t* caption)
{
    return CXMessageBoxEx(nullptr, text, caption, style, nullptr);
}

int CXMessageBoxEx(HWND owner, const wchar_t* text, const wchar_t* caption, UINT style,
                   CXMessageBoxDefs::CXMSGBOXPARAMS* params)
{
    const std::wstring key = DontAskAgainKey(style, params);
    if (!key.empty())
        if (const int remembered = RememberedAnswer(key, style))
            return remembered;

    sn::IDialogService* service = sn::CurrentDialogService();
    if (!service)
        return 0;

    sn::MessageBoxRequest request;
    request.owner = owner;
    request.caption = caption ? caption : L"Sonarium";
    request.text = text ? text : L"";
    request.style = style;
    request.dontAskAgainKey = key;
    if (!key.empty() && params->pszCheckBoxText)
        request.checkBoxText = params->pszCheckBoxText;

    const sn::MessageBoxAnswer answer = service->ShowMessageBox(request);
    if (!key.empty() && answer.dontAskAgain)
        Remember(key, answer.button);
    return answer.button;
}
