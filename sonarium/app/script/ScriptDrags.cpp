// The script commands that drag: files dropped from a file manager onto a pane's tree, and rows
// dragged onto a row or below the last row of a pane.

#include "sonarium/app/script/ScriptRunner.h"

#include "sonarium/app/script/ScriptWords.h"
#include "sonarium/app/session/Drops.h"
#include "sonarium/app/session/HierarchyChanges.h"
#include "sonarium/app/session/TreePoints.h"
#include "sonarium/ui/helpers/DropFileCheck.h"

#include <algorithm>
#include <filesystem>

namespace sn
{
namespace
{
constexpr wchar_t k_below[] = L"below";

// Takes the word "right" (a drag with the right mouse button) out of the words.
bool TakeRightButton(std::vector<std::wstring>& words)
{
    auto right = std::find(words.begin() + 1, words.end(), L"right");
    if (right == words.end())
        return false;
    words.erase(right);
    return true;
}

std::wstring Where(std::wstring const& target)
{
    return target == k_below ? L"below the last row" : L"on " + target;
}

// Under a drop's line, what it did: the objects it created, moved or linked, the files it
// imported, or why files were refused.
void AddOutcome(std::vector<std::wstring>& drops, HierarchySnapshot const& before, Project const* project,
                DROPEFFECT effect, std::vector<std::wstring> const& files)
{
    std::vector<std::wstring> lines = before.ChangesSince(project, !files.empty());
    if (effect == DROPEFFECT_NONE && !files.empty())
    {
        for (std::wstring const& file : files)
            if (std::wstring problem = DropFileProblem(file); !problem.empty())
                lines.push_back(L"refused " + std::filesystem::path(file).filename().wstring() + L": " + problem);
        if (lines.empty())
            lines.push_back(L"refused: not taken there with these keys");
    }
    else if (effect != DROPEFFECT_NONE && lines.empty())
        lines.push_back(L"changed nothing");
    for (std::wstring& line : lines)
        drops.push_back(L"  " + std::move(line));
}
} // namespace

bool ScriptRunner::DropPoint(Pane& pane, std::wstring const& target, CPoint& point, std::wstring& error)
{
    PETreeCtrl& tree = pane.view->GetTreeCtrl();
    if (target == k_below)
    {
        std::optional<CPoint> below = BelowLastRow(tree);
        if (!below)
            return Fail(error, L"there is no empty space below the last row of \"" + pane.name + L"\"");
        point = *below;
        return true;
    }
    HTREEITEM item = Row(tree, target, error);
    if (!item)
        return false;
    point = LabelPoint(tree, item);
    return true;
}

bool ScriptRunner::DropFiles(Words const& given, std::wstring& error)
{
    Words words = given;
    const UINT modifiers = TakeModifiers(words);
    const bool right = TakeRightButton(words);
    if (words.size() < 3)
        return Fail(error, L"usage: drop ROW|below FILE... [ctrl] [shift] [alt] [right]");
    Pane* pane = CurrentPane(error);
    CPoint point;
    if (!pane || !DropPoint(*pane, words[1], point, error))
        return false;
    // A file manager drags files that exist, by their full paths.
    std::vector<std::wstring> files;
    std::wstring names;
    for (size_t i = 2; i < words.size(); ++i)
    {
        std::error_code failure;
        const std::filesystem::path path = std::filesystem::absolute(words[i], failure);
        if (failure || !std::filesystem::exists(path, failure))
            return Fail(error, L"no file at \"" + words[i] + L"\"");
        files.push_back(path.lexically_normal().wstring());
        names += path.filename().wstring() + L" ";
    }
    const HierarchySnapshot before(m_session.GetProject());
    const DROPEFFECT effect =
        sn::DropFiles(pane->view->GetTreeCtrl(), files, point, DragKeyState(modifiers, right));
    // The import runs when the drop's notification is delivered.
    m_session.Pump();
    m_drops.push_back(L"drop " + names + Where(words[1]) + L": " + DropEffectName(effect));
    AddOutcome(m_drops, before, m_session.GetProject(), effect, files);
    return true;
}

bool ScriptRunner::Drag(Words const& given, std::wstring& error)
{
    Words words = given;
    const UINT modifiers = TakeModifiers(words);
    const bool right = TakeRightButton(words);
    if (words.size() < 3 || words.size() > 4)
        return Fail(error, L"usage: drag ROW ROW|below [PANE] [ctrl] [shift] [alt] [right]");
    Pane* source = CurrentPane(error);
    Pane* destination = PaneNamed(words, 3, error);
    if (!source || !destination)
        return false;
    PETreeCtrl& tree = source->view->GetTreeCtrl();
    HTREEITEM item = Row(tree, words[1], error);
    if (!item)
        return false;
    const CPoint start = LabelPoint(tree, item);
    CPoint end;
    if (!DropPoint(*destination, words[2], end, error))
        return false;
    const HierarchySnapshot before(m_session.GetProject());
    DragToDestination hand(tree, start, destination->view->GetTreeCtrl(), end,
                           DragKeyState(modifiers, right));
    {
        ScopedDragDriver install(&hand);
        if (!tree.BeginDrag(start, right))
            return Fail(error, L"\"" + words[1] + L"\" cannot be dragged from there");
    }
    const std::wstring record = L"drag " + words[1] + L" from " + source->name + L" " + Where(words[2]) +
                                L" in " + destination->name + L": ";
    m_drops.push_back(record + (hand.Ran() ? DropEffectName(hand.Effect()) : L"nothing was dragged"));
    m_session.Pump();
    AddOutcome(m_drops, before, m_session.GetProject(), hand.Effect(), {});
    return true;
}
} // namespace sn
