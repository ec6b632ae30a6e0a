// Faults the fuzz found, each as the shortest script it cut them down to, run with `check`
// after every line: the panes must agree with the project and nothing may crash.

#include "SessionFixture.h"

#include "host/Utf8.h"
#include "sonarium/app/script/ScriptRunner.h"

#include <sstream>

class FuzzFindingsTest : public SessionTest
{
protected:
    // Runs the lines, each followed by `check`; a line the host refuses is fine, a failed check
    // is not.
    void Run(std::vector<std::wstring> const& lines)
    {
        std::wostringstream out;
        sn::ScriptRunner runner(session, out);
        for (std::wstring const& line : lines)
        {
            std::wstring error;
            runner.RunLine(line, error);
            ASSERT_TRUE(runner.RunLine(L"check", error)) << "after \"" << Utf8::FromWide(line)
                                                        << "\": " << Utf8::FromWide(error);
        }
    }
};

TEST_F(FuzzFindingsTest, InclusionChangedUnderACollapsedRowShowsWhenItOpensAgain)
{
    // The undo's notification finds no row to refresh; opening the parent one level must still
    // show the object included.
    Run({L"toggle AudioObjects/Characters", L"click AudioObjects/Characters/Player", L"command exclude",
         L"toggle AudioObjects/Characters", L"host undo", L"click AudioObjects/Characters", L"key Add"});
}

TEST_F(FuzzFindingsTest, ExpandingASelectionWhoseNodesAnUndoRemovedWhileLocked)
{
    // Refreshing the first selected node replaced nodes later in the list the view was working
    // through; they were freed under it.
    Run({L"host create AudioObjects WorkUnit dup", L"drag AudioObjects Busses ctrl", L"host lock",
         L"command expand-descendants", L"host undo", L"key A ctrl", L"command expand-descendants",
         L"host unlock", L"command collapse-descendants"});
}

TEST_F(FuzzFindingsTest, APlatformSwitchedWhileALabelIsEditedShowsOnceTheEditEnds)
{
    // While the label is edited the view keeps only the bit that rebuilds the tree; the nodes
    // must still read the new platform's inclusion when it runs.
    Run({L"toggle AudioObjects/Characters", L"toggle Busses/Outputs", L"click AudioObjects/Characters/Player",
         L"send rename", L"host platform Handheld", L"key Enter"});
}

TEST_F(FuzzFindingsTest, ACutObjectWhoseAncestorWasDeletedIsNotPasted)
{
    // The cut object still had a parent, in the deleted subtree: pasting it and undoing left the
    // project's index holding objects of no hierarchy, freed later under it.
    Run({L"toggle AudioObjects/Interface", L"toggle AudioObjects/Interface/Interface",
         L"click AudioObjects/Interface/Interface/Menu_Open", L"edit cut", L"host delete AudioObjects/Interface",
         L"toggle AudioObjects/Characters", L"toggle AudioObjects/Characters/Player",
         L"toggle AudioObjects/Characters/Player/Player", L"toggle AudioObjects/Characters/Player/Player/Movement",
         L"toggle AudioObjects/Characters/Player/Player/Movement/Jump",
         L"click AudioObjects/Characters/Player/Player/Movement/Jump/Jump_02", L"edit paste", L"host undo"});
}

TEST_F(FuzzFindingsTest, NothingIsCreatedUnderARowWhoseObjectWasDeletedWhileLocked)
{
    // The locked view still shows the deleted rows; a new child of one was indexed with no place
    // in the hierarchy.
    Run({L"key A", L"host lock", L"command expand-descendants",
         L"double-click AudioObjects/Characters/Player/Player/Ranger_Voice/Ranger_Taunt/Ranger_Taunt_01",
         L"click AudioObjects/Characters/Player shift", L"click AudioObjects/Characters/Player/Player",
         L"host delete AudioObjects/Characters", L"toolbar \"Random Container\"", L"key Escape", L"host unlock"});
}
