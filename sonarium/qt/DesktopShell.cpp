#include "sonarium/qt/DesktopShell.h"

#include "sonarium/qt/QtText.h"

#include <QClipboard>
#include <QDesktopServices>
#include <QGuiApplication>
#include <QUrl>

namespace sn::qt
{
DesktopShell::DesktopShell()
{
    TextClipboard::SetBackend(this);
    Shell::SetOpener(this);
}

DesktopShell::~DesktopShell()
{
    Shell::SetOpener(nullptr);
    TextClipboard::SetBackend(nullptr);
}

std::wstring DesktopShell::GetText() const
{
    return FromQt(QGuiApplication::clipboard()->text());
}

void DesktopShell::SetText(const std::wstring& text)
{
    QGuiApplication::clipboard()->setText(ToQt(text));
}

bool DesktopShell::OpenFolder(const std::wstring& path)
{
    return QDesktopServices::openUrl(QUrl::fromLocalFile(ToQt(path)));
}
} // namespace sn::qt
