// The project manager's save, load and unload as the user asks for them: what is reported, what
// is refused, and what is cleared.

#include "HostFixture.h"

#include "host/Utf8.h"
#include "sonarium/core/model/CurrentState.h"

#include "host/ProjectLoadProgress.h"
#include "host/ProjectManager.h"
#include "host/WorkUnitHelpers.h"
#include "sonarium/core/model/ProjectEdit.h"
#include "sonarium/core/storage/ProjectStorage.h"

using namespace sn;

namespace
{
const wchar_t* kProject = LR"(
platform Desktop
AudioObjects
  Default Work Unit : WorkUnit
    Ambience : ActorMixer
  Weapons : PhysicalFolder
    Guns : WorkUnit
      Pistol : SoundSFX
)";

// Remembers what a progress dialog would show, and stops when told.
class ProgressRecord : public IProjectLoadProgress
{
public:
    void Begin(const CStdStr<wchar_t>& operation, size_t steps) override
    {
        lines.push_back(operation + L" (" + std::to_wstring(steps) + L")");
    }
    bool Step(const CStdStr<wchar_t>& item) override
    {
        lines.push_back(L"step " + item);
        return lines.size() <= stopAfter;
    }
    void Problem(const CStdStr<wchar_t>& text) override { lines.push_back(L"problem " + text); }
    void End() override { lines.push_back(L"end"); }

    std::vector<std::wstring> lines;
    size_t stopAfter = 100;
};

class WorkUnitLoadingTest : public HostTest
{
protected:
    void SetUp() override
    {
        HostTest::SetUp();
        OpenSaved(kProject);
    }

    WorkUnitObject* Unit(const std::wstring& path) { return dynamic_cast<WorkUnitObject*>(At(path)); }
    ProjectManager& Manager() { return *ProjectManager::m_pInstance; }
    std::vector<OrbObjectSmartPtr> Units(std::initializer_list<std::wstring> paths)
    {
        std::vector<OrbObjectSmartPtr> units;
        for (const std::wstring& path : paths)
            units.emplace_back(static_cast<IOrbObject*>(At(path)));
        return units;
    }
};
} // namespace

TEST_F(WorkUnitLoadingTest, WorkUnitFilesAndTheUnsavedOnesBelowAFolder)
{
    ProjectObject* pistol = At(L"AudioObjects/Weapons/Guns/Pistol");
    CStdStr<wchar_t> path;
    ASSERT_TRUE(WorkUnitHelpers::GetWorkUnitFilePath(pistol, path, true)) << "an object gives its unit's file";
    EXPECT_EQ((m_dir / "Project" / "AudioObjects" / "Weapons" / "Guns.swu").wstring(), std::wstring(path));

    ProjectObject* fresh = ProjectEdit::Create(At(L"AudioObjects/Weapons"), PMTreeNode::WorkUnit, L"Fresh");
    EXPECT_FALSE(WorkUnitHelpers::GetWorkUnitFilePath(fresh, path, true)) << "not on disk yet";
    EXPECT_TRUE(WorkUnitHelpers::GetWorkUnitFilePath(fresh, path, false)) << "but it has its place";
    EXPECT_TRUE(WorkUnitHelpers::CanUnloadWorkUnit(Unit(L"AudioObjects/Weapons/Fresh")));
    EXPECT_FALSE(WorkUnitHelpers::CanUnloadWorkUnit(Unit(L"AudioObjects/Weapons"))) << "a physical folder";
    EXPECT_FALSE(WorkUnitHelpers::CanUnloadWorkUnit(Unit(L"AudioObjects"))) << "a category";

    std::set<IOrbObject*> dirty;
    WorkUnitHelpers::GetDirtyWorkUnitsUnder({At(L"AudioObjects/Weapons"), At(L"AudioObjects/Default Work Unit")}, dirty);
    EXPECT_EQ((std::set<IOrbObject*>{fresh}), dirty) << "the physical folder's units; the clean one is not dirty";
}

TEST_F(WorkUnitLoadingTest, UnloadingDropsUnsavedChangesOnlyWhenAFileIsThere)
{
    ProjectEdit::Rename(At(L"AudioObjects/Weapons/Guns/Pistol"), L"Revolver");
    ProjectEdit::Create(At(L"AudioObjects"), PMTreeNode::WorkUnit, L"Fresh");
    ASSERT_TRUE(HostRef().Undo().CanUndo());
    ProgressRecord progress;
    EXPECT_EQ(PersistResult::Failed,
              Manager().UserUnloadWorkUnits(Units({L"AudioObjects/Weapons/Guns", L"AudioObjects/Fresh"}), &progress));
    EXPECT_FALSE(Unit(L"AudioObjects/Weapons/Guns")->IsLoaded()) << "its changes thrown away, as the user chose";
    EXPECT_TRUE(Unit(L"AudioObjects/Fresh")->IsLoaded()) << "never saved: unloading would lose it";
    EXPECT_EQ((std::vector<std::wstring>{L"Unloading Work Units (2)", L"step Guns", L"step Fresh",
                                         L"problem Fresh: its file was never saved, so it stays loaded.", L"end"}),
              progress.lines);
    EXPECT_FALSE(HostRef().Undo().CanUndo()) << "something was unloaded: undo steps could name its objects";
    EXPECT_EQ(0, HostRef().Properties()[propLockUIUpdate].GetInt());
    EXPECT_FALSE(HostRef().Gate().IsBlocked());

    ASSERT_EQ(PersistResult::Success, Manager().UserLoadWorkUnits(Units({L"AudioObjects/Weapons/Guns"}), nullptr));
    EXPECT_TRUE(At(L"AudioObjects/Weapons/Guns/Pistol")) << "as it was saved";
}

TEST_F(WorkUnitLoadingTest, NothingChangedKeepsUndoAndAStopKeepsWhatWasDone)
{
    ProjectEdit::Rename(At(L"AudioObjects/Default Work Unit/Ambience"), L"Amb");
    StorageProblems problems;
    ASSERT_TRUE(SaveProject(*HostRef().GetProject(), problems));
    ProgressRecord stop;
    stop.stopAfter = 1;
    EXPECT_EQ(PersistResult::Cancelled,
              Manager().UserUnloadWorkUnits(Units({L"AudioObjects/Weapons/Guns", L"AudioObjects/Default Work Unit"}), &stop));
    EXPECT_TRUE(HostRef().Undo().CanUndo()) << "nothing was unloaded";
    EXPECT_TRUE(Unit(L"AudioObjects/Default Work Unit")->IsLoaded());

    // A file that cannot be read is reported, and the unit stays unloaded.
    ASSERT_EQ(PersistResult::Success, Manager().UserUnloadWorkUnits(Units({L"AudioObjects/Weapons/Guns"}), nullptr));
    std::filesystem::remove(m_dir / "Project" / "AudioObjects" / "Weapons" / "Guns.swu");
    ProgressRecord progress;
    EXPECT_EQ(PersistResult::Failed, Manager().UserLoadWorkUnits(Units({L"AudioObjects/Weapons/Guns"}), &progress));
    ASSERT_EQ(4u, progress.lines.size());
    EXPECT_NE(std::wstring::npos, progress.lines[2].find(L"Guns.swu")) << progress.lines[2];
    EXPECT_FALSE(Unit(L"AudioObjects/Weapons/Guns")->IsLoaded());
}

TEST_F(WorkUnitLoadingTest, ASaveNamesTheFilesThatFailed)
{
    std::map<CStdStr<wchar_t>, ProjectManager::ProjectManagerResult> results;
    ProjectEdit::Rename(At(L"AudioObjects/Default Work Unit/Ambience"), L"Amb");
    EXPECT_EQ(ProjectManager::Result_OK, Manager().SaveProject(results, {}));
    EXPECT_TRUE(results.empty());
    EXPECT_EQ((m_dir / "Project" / "Test.sonproj").wstring(), std::wstring(Manager().GetProjectPath()));

    HostRef().GetProject()->SetName(L"Bad/Name");
    ProjectEdit::Rename(At(L"AudioObjects/Default Work Unit/Amb"), L"Ambience");
    EXPECT_EQ(ProjectManager::Result_Failed, Manager().SaveProject(results, {}));
    ASSERT_EQ(1u, results.size());
    EXPECT_EQ(ProjectManager::Result_Failed, results.begin()->second);
    EXPECT_FALSE(HostRef().Gate().IsBlocked());
}
