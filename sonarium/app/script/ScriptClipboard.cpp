// The host's object clipboard as a script sees it.

#include "sonarium/app/script/ScriptRunner.h"

#include "sonarium/app/script/ScriptWords.h"
#include "sonarium/core/host/Host.h"
#include "sonarium/core/host/ProjectBuilder.h"

namespace sn
{
// "clipboard cut" or "clipboard copy" (or "clipboard empty"), then one object per line by path.
bool ScriptRunner::PrintClipboard()
{
    ObjectClipboard& clipboard = m_session.GetHost().Clipboard();
    std::vector<IOrbObject*> objects;
    const bool full = clipboard.GetObjects(objects);
    std::vector<std::wstring> lines;
    for (IOrbObject* object : objects)
    {
        const ProjectObject* model = AsProjectObject(object);
        lines.push_back(model && model->Parent() ? PathOf(*model) : L"(no longer in the project)");
        object->Release();
    }
    const wchar_t* kind = !full ? L"empty" : (clipboard.GetFlags() & 0x20) ? L"cut" : L"copy";
    Indented(m_out, std::wstring(L"clipboard ") + kind, lines);
    return true;
}
} // namespace sn
