#include "platform/Shell.h"

namespace
{
struct ShellState
{
    IShellOpener* opener = nullptr;
    std::vector<std::wstring> opened;
};

ShellState& State()
{
    static ShellState state;
    return state;
}
} // namespace

namespace Shell
{
void SetOpener(IShellOpener* opener)
{
    State().opener = opener;
}

bool OpenFolder(const std::wstring& path)
{
    State().opened.push_back(path);
    return !State().opener || State().opener->OpenFolder(path);
}

const std::vector<std::wstring>& OpenedFolders()
{
    return State().opened;
}

void ClearOpenedFolders()
{
    State().opened.clear();
}
} // namespace Shell
