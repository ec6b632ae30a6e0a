#pragma once
// The desktop shell's part the host uses: showing a folder in the file manager, as the shell's
// "explore" verb does. Every request is kept, so that a headless run can say what it would have
// opened; an opener installed by the desktop application opens it for real.

#include <string>
#include <vector>

class IShellOpener
{
public:
    virtual ~IShellOpener() = default;
    virtual bool OpenFolder(const std::wstring& path) = 0;
};

namespace Shell
{
// Not owned; null leaves requests recorded only.
void SetOpener(IShellOpener* opener);
// Records the request and hands it to the opener; true when opened (always true headless).
bool OpenFolder(const std::wstring& path);
const std::vector<std::wstring>& OpenedFolders();
void ClearOpenedFolders();
} // namespace Shell
