// The Edit menu over the active pane: enabled only when the pane can act, and a command that
// cannot be done says why instead of doing nothing.

#include "SessionFixture.h"

#include "sonarium/app/script/ScriptRunner.h"
#include "sonarium/app/session/EditMenu.h"
#include "sonarium/core/host/ProjectBuilder.h"

#include <sstream>

namespace
{
using sn::EditCommand;

class EditMenuTest : public SessionTest
{
protected:
    void Run(std::wstring const& line)
    {
        std::wstring error;
        EXPECT_TRUE(runner.RunLine(line, error)) << error;
    }

    std::wostringstream out;
    sn::ScriptRunner runner{session, out};
    sn::EditMenu menu{session};
};
} // namespace

TEST_F(EditMenuTest, DeleteAndRenameFollowTheSelectionOfTheActivePane)
{
    auto enabled = [&](EditCommand command) { return menu.Availability(command).enabled; };
    EXPECT_FALSE(enabled(EditCommand::Delete));
    EXPECT_EQ(menu.Availability(EditCommand::Rename).why, L"nothing is selected in Audio");
    EXPECT_EQ(menu.Run(EditCommand::Delete), L"Cannot delete: nothing is selected in Audio");
    EXPECT_EQ(menu.Run(EditCommand::Undo), L"Cannot undo: there is nothing to undo");

    Run(L"click AudioObjects/World");
    EXPECT_TRUE(enabled(EditCommand::Delete));
    EXPECT_TRUE(enabled(EditCommand::Rename));
    Run(L"click AudioObjects/Interface ctrl");
    EXPECT_TRUE(enabled(EditCommand::Delete));
    EXPECT_EQ(menu.Run(EditCommand::Rename),
              L"Cannot rename: only one object can be renamed at a time, and 2 are selected");
    Run(L"click AudioObjects");
    EXPECT_EQ(menu.Availability(EditCommand::Delete).why, L"\"Audio Objects\" cannot be deleted");
    EXPECT_EQ(menu.Availability(EditCommand::Rename).why, L"\"Audio Objects\" cannot be renamed");

    // The menu follows the pane the user moved to, not the first one.
    Run(L"use Events");
    EXPECT_EQ(menu.Availability(EditCommand::Delete).why, L"nothing is selected in Events");
    Run(L"click Events/Player_Events");
    EXPECT_TRUE(enabled(EditCommand::Rename));

    // Done by the menu, undo is one step away; with every pane closed, nothing can be sent.
    Run(L"host rename AudioObjects/World Overworld");
    EXPECT_TRUE(menu.Run(EditCommand::Undo).empty());
    EXPECT_NE(sn::FindByPath(*session.GetProject(), L"AudioObjects/World"), nullptr);
    session.CloseAllPanes();
    EXPECT_EQ(menu.Run(EditCommand::Cut), L"Cannot cut: no explorer pane is open");
}

TEST_F(EditMenuTest, ScriptsUseTheMenuAndPrintWhatItOffers)
{
    Run(L"click AudioObjects/World");
    Run(L"click AudioObjects/Interface ctrl");
    Run(L"edit rename");
    Run(L"print edit-menu");
    EXPECT_EQ(
        out.str(),
        L"status: Cannot rename: only one object can be renamed at a time, and 2 are selected\n"
        L"edit-menu\n"
        L"  Undo: disabled (there is nothing to undo)\n"
        L"  Redo: disabled (there is nothing to redo)\n"
        L"  Cut: disabled (the selection in Audio cannot be cut)\n"
        L"  Copy: disabled (the selection in Audio cannot be copied)\n"
        L"  Paste: disabled (the clipboard holds nothing that can be pasted on the selection in Audio)\n"
        L"  Delete: enabled\n"
        L"  Rename: disabled (only one object can be renamed at a time, and 2 are selected)\n");
    std::wstring error;
    EXPECT_FALSE(runner.RunLine(L"edit frob", error));
    EXPECT_EQ(error, L"unknown Edit menu command \"frob\" (undo, redo, cut, copy, paste, delete or rename)");
}
