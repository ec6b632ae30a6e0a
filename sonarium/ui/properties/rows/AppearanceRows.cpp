// The object's colour (its own, or its parent's when it has none) and the user's notes; both
// editable on several objects at once.

#include "sonarium/core/model/ProjectEdit.h"
#include "sonarium/core/nodes/ProjectNode.h"
#include "sonarium/ui/properties/PropertyRowSource.h"

#include <cwctype>
#include <iomanip>
#include <sstream>

namespace sn
{
namespace
{
const std::string k_notesKey = "Notes";
// Raised on the object channel when notes change, so that whoever shows them follows, undo too.
const ROString k_notesChanged("NotesChanged");
constexpr int k_paletteSize = 16;

std::wstring ColourText(int colour)
{
    if (colour < 0)
        return L"inherited";
    std::wostringstream text;
    text << colour << L" #" << std::hex << std::uppercase << std::setw(6) << std::setfill(L'0')
         << ProjectNode::PaletteColor(colour);
    return text.str();
}

// "inherited" (or "none", "-1") or a palette number, written alone or as ColourText writes it.
bool ParseColour(std::wstring const& text, int& colour)
{
    if (text == L"inherited" || text == L"none" || text == L"-1")
        return colour = -1, true;
    size_t digits = 0;
    while (digits < text.size() && std::iswdigit(text[digits]))
        ++digits;
    if (digits == 0 || digits > 2 || (digits < text.size() && text[digits] != L' '))
        return false;
    colour = std::stoi(text.substr(0, digits));
    return colour < k_paletteSize;
}

void Rows(ProjectObject const& object, PropertyRowSink& rows)
{
    rows.Add("colour", L"Colour", ColourText(object.GetColor()), PropertyEdit::Colour);
    rows.Add("notes", L"Notes", object.GetProperty(k_notesKey), PropertyEdit::Notes);
}

bool Edit(std::string const& key, std::vector<ProjectObject*> const& objects, std::wstring const& value,
          std::wstring& why)
{
    if (key == "colour")
    {
        int colour = -1;
        if (!ParseColour(value, colour))
        {
            why = L"not a colour: \"" + value + L"\" (inherited, or a palette number from 0 to 15)";
            return false;
        }
        for (ProjectObject* object : objects)
            ProjectEdit::SetColor(object, colour);
        return true;
    }
    if (key == "notes")
    {
        for (ProjectObject* object : objects)
            ProjectEdit::SetProperty(object, k_notesKey, value, &k_notesChanged);
        return true;
    }
    return false;
}

[[maybe_unused]] const bool k_registered = RegisterPropertyRowSource({300, &Rows, &Edit});
} // namespace
} // namespace sn
