#pragma once
// The desktop's clipboard and file manager behind the portable layer's text clipboard and shell:
// text the host copies (an object's GUID, a label's selection) reaches other programs, and a
// folder the host opens shows in the user's file manager. Installed for the life of one run.

#include "platform/Edit.h"
#include "platform/Shell.h"

namespace sn::qt
{
class DesktopShell : public ITextClipboardBackend, public IShellOpener
{
public:
    DesktopShell();
    ~DesktopShell() override;
    DesktopShell(DesktopShell const&) = delete;
    DesktopShell& operator=(DesktopShell const&) = delete;

    std::wstring GetText() const override;
    void SetText(const std::wstring& text) override;
    bool OpenFolder(const std::wstring& path) override;
};
} // namespace sn::qt
