// A work unit whose objects are not in memory (unloaded, or unreadable) accepts no change to what
// it holds, and says which unit and why; objects never nest deeper than a file can hold. What
// the project file keeps about such a unit (its name, its place) still changes, and it loads.

#include "DiskFixture.h"
#include "HostFixture.h"

#include "host/Utf8.h"
#include "sonarium/core/model/EditGuard.h"
#include "sonarium/core/model/ModelNotify.h"
#include "sonarium/core/model/ProjectEdit.h"
#include "sonarium/core/storage/ProjectStorage.h"

namespace
{
namespace fs = std::filesystem;
using namespace sn;
using N = PMTreeNode::NodeType;

// The messages of "Host"/"EditRefused", as the host's window receives them.
class RefusalRecorder
{
public:
    RefusalRecorder() { INotifyMgr::m_pInstance->Register(notify::chHost, NotifyDelegate(this, &RefusalRecorder::On)); }
    ~RefusalRecorder()
    {
        INotifyMgr::m_pInstance->UnRegister(notify::chHost, NotifyDelegate(this, &RefusalRecorder::On));
    }
    void On(CNotifyItemBase* item)
    {
        if (auto* refused = dynamic_cast<notify::EditRefusedParam*>(item->pData))
            messages.push_back(Utf8::FromWide(refused->message));
    }
    std::vector<std::string> messages;
};

class EditGuardTest : public HostTest
{
protected:
    void OpenSample()
    {
        OpenResult opened = OpenProject(sample.Path());
        ASSERT_TRUE(opened.project);
        m_host->SetProject(std::move(opened.project));
    }
    Project& ProjectRef() { return *m_host->GetProject(); }
    WorkUnitObject* UnitAt(const std::wstring& path) { return dynamic_cast<WorkUnitObject*>(At(path)); }

    disk::SampleCopy sample;
};
} // namespace

TEST_F(EditGuardTest, AnUnloadedUnitRefusesNewContentButMovesRenamesAndLoads)
{
    OpenSample();
    WorkUnitObject* cinematics = UnitAt(L"AudioObjects/World/Cinematics");
    ASSERT_FALSE(cinematics->IsLoaded());
    ProjectObject* props = At(L"AudioObjects/World/Props")->Children()[0].Get();
    const disk::Checksums before = disk::ChecksumsOf(sample.Path());
    RefusalRecorder refusals;

    EXPECT_EQ(ProjectEdit::Create(cinematics, N::ActorMixer, L"New_In_Unloaded"), nullptr);
    EXPECT_EQ(ProjectEdit::Copy(props, cinematics), nullptr);
    EXPECT_FALSE(ProjectEdit::Move(props, cinematics));
    ProjectEdit::SetColor(cinematics, 4);
    ASSERT_EQ(refusals.messages.size(), 4u);
    for (const std::string& message : refusals.messages)
        EXPECT_EQ(message, "The work unit \"Cinematics\" is not loaded: load it before changing what it holds.");
    EXPECT_FALSE(cinematics->IsDirty());
    EXPECT_TRUE(cinematics->Children().empty());
    EXPECT_EQ(props->Parent()->GetName(), L"Props");
    EXPECT_EQ(cinematics->GetColor(), -1);
    EXPECT_FALSE(HostRef().Undo().CanUndo());
    StorageProblems problems;
    EXPECT_TRUE(SaveProject(ProjectRef(), problems));
    EXPECT_EQ(disk::Changes(before, disk::ChecksumsOf(sample.Path())), "") << "nothing was accepted";

    // Its name and place live in the project file: they change, and the file follows.
    ASSERT_TRUE(ProjectEdit::Rename(cinematics, L"Cutscenes"));
    ASSERT_TRUE(ProjectEdit::Move(cinematics, At(L"AudioObjects/Characters")));
    EXPECT_FALSE(cinematics->IsDirty()) << "its own file is carried, not rewritten";
    ASSERT_TRUE(SaveProject(ProjectRef(), problems)) << problems.size();
    EXPECT_EQ(disk::ChecksumsOf(sample.Path()).at("AudioObjects/Characters/Cutscenes.swu"),
              before.at("AudioObjects/World/Cinematics.swu"));

    // Loaded, it takes new objects again.
    ASSERT_TRUE(LoadWorkUnit(ProjectRef(), cinematics, problems));
    ASSERT_NE(ProjectEdit::Create(cinematics, N::ActorMixer, L"New_In_Loaded"), nullptr);
    EXPECT_TRUE(cinematics->IsDirty());
    EXPECT_EQ(refusals.messages.size(), 4u);
}

TEST_F(EditGuardTest, AnUnreadableUnitSaysWhyAndIsNeverWrittenOver)
{
    const fs::path file = sample.File("AudioObjects/World/Props.swu");
    disk::Spit(file, "{ \"format\": \"sonarium-workunit\",");
    OpenSample();
    WorkUnitObject* props = UnitAt(L"AudioObjects/World/Props");
    ASSERT_FALSE(props->IsLoaded());
    RefusalRecorder refusals;

    EXPECT_EQ(ProjectEdit::Create(props, N::SoundSFX, L"Fix"), nullptr);
    ASSERT_EQ(refusals.messages.size(), 1u);
    const std::string& message = refusals.messages[0];
    EXPECT_EQ(message.rfind("The work unit \"Props\" could not be read from its file (line ", 0), 0u)
        << message;
    EXPECT_NE(message.find("repair the file and load the work unit before changing what it holds."),
              std::string::npos)
        << message;
    StorageProblems problems;
    EXPECT_TRUE(SaveProject(ProjectRef(), problems));
    EXPECT_EQ(disk::Slurp(file), "{ \"format\": \"sonarium-workunit\",");
}

TEST_F(EditGuardTest, ObjectsNestNoDeeperThanAFileHolds)
{
    Open(L"Busses\n  Main : WorkUnit\n    Master : Bus\n  Other : WorkUnit\n    Aux : Bus\n");
    ProjectObject* bus = At(L"Busses/Main/Master");
    RefusalRecorder refusals;
    // Below the category's root and its work unit.
    for (size_t depth = 2; depth < EditGuard::kMaxDepth; ++depth)
        ASSERT_TRUE(bus = ProjectEdit::Create(bus, N::Bus, L"Bus"));
    EXPECT_TRUE(refusals.messages.empty());
    EXPECT_EQ(ProjectEdit::Create(bus, N::Bus, L"Too deep"), nullptr);
    ASSERT_EQ(refusals.messages.size(), 1u);
    EXPECT_EQ(refusals.messages[0], "Objects cannot nest deeper than " + std::to_string(EditGuard::kMaxDepth) +
                                        " levels: the change would put one deeper.");

    // A subtree moved or copied counts with its own depth.
    ProjectObject* top = At(L"Busses/Main/Master");
    ProjectObject* second = top->Children()[0].Get();
    EXPECT_EQ(ProjectEdit::Copy(second, second->Children()[0].Get()), nullptr);
    EXPECT_FALSE(ProjectEdit::Move(top, At(L"Busses/Other/Aux")));
    EXPECT_EQ(refusals.messages.size(), 3u);
}
