// Loading and unloading the selected work units: which ones, the confirmation, the offer to save
// before an unload, and what the main window is told.

#include "ExplorerFixture.h"

#include "sonarium/core/model/ProjectEdit.h"
#include "sonarium/core/storage/ProjectStorage.h"

namespace
{
const wchar_t* kProject = LR"(
platform Desktop
AudioObjects
  Default Work Unit : WorkUnit
    Ambience : ActorMixer
  Characters : WorkUnit
    Player : ActorMixer
  Weapons : WorkUnit
    Guns : ActorMixer
)";

const std::wstring kDefault = L"AudioObjects/Default Work Unit";
const std::wstring kCharacters = L"AudioObjects/Characters";
const std::wstring kWeapons = L"AudioObjects/Weapons";

} // namespace

class WorkUnitCommandsTest : public ExplorerTest
{
protected:
    void SetUp() override
    {
        ExplorerTest::SetUp();
        // A project that lives in a folder: what is unloaded waits in its file.
        OpenSaved(kProject);
        m_view = OpenView({OrbObjectCategories::AudioObjects});
    }

    void Select(std::initializer_list<std::wstring> paths) { SelectRows(m_view, paths); }

    bool Loaded(const std::wstring& path) { return At(path)->IsLoaded(); }
    long long Lock() { return GlobalPropMgr::m_pInstance->Prop(sn::propLockUIUpdate, 3, 1).GetInt(); }
    std::wstring Last() { return m_dialogs.Records().empty() ? L"" : m_dialogs.Records().back().line; }

    DlgProjectExplorer* m_view = nullptr;
};

TEST_F(WorkUnitCommandsTest, AMixedSelectionLoadsOnlyAndTellsTheMainWindow)
{
    ASSERT_TRUE(sn::UnloadWorkUnit(*HostRef().GetProject(), static_cast<sn::WorkUnitObject*>(At(kWeapons))));
    WindowSystem::Get().RunUntilIdle();
    Select({kDefault, kWeapons, L"AudioObjects/Default Work Unit/Ambience"});
    m_dialogs.AnswerMessageBox(IDOK);
    m_view->OnEnableWorkUnit();
    EXPECT_TRUE(Loaded(kWeapons));
    EXPECT_TRUE(Loaded(kDefault)) << "loading wins: nothing is unloaded in the same call";
    ASSERT_EQ(2u, m_dialogs.Records().size());
    EXPECT_EQ(0x1000021u, m_dialogs.Records()[0].style);
    EXPECT_NE(std::wstring::npos, m_dialogs.Records()[0].line.find(L"dont-ask-again=\"LoadUnloadWorkUnits\""));
    EXPECT_NE(std::wstring::npos, Last().find(L"progress caption=\"Loading Work Units\" steps=1 -> done"));
    ASSERT_EQ(1u, m_main.refreshes.size());
    EXPECT_EQ(-1, m_main.refreshes[0].firstView);
    EXPECT_EQ(2, m_main.refreshes[0].reason);
    EXPECT_EQ(-1, m_main.refreshes[0].lastView);
    EXPECT_EQ(0, Lock());

    // Nothing to do: no dialog at all. A main window that takes no input is not told.
    Select({L"AudioObjects/Default Work Unit/Ambience"});
    m_view->OnEnableWorkUnit();
    HostRef().MainWindow().SetEnabled(false);
    sn::UnloadWorkUnit(*HostRef().GetProject(), static_cast<sn::WorkUnitObject*>(At(kWeapons)));
    WindowSystem::Get().RunUntilIdle();
    Select({kWeapons});
    m_dialogs.AnswerMessageBox(IDOK);
    m_view->OnEnableWorkUnit();
    EXPECT_TRUE(Loaded(kWeapons));
    EXPECT_EQ(1u, m_main.refreshes.size());
}

TEST_F(WorkUnitCommandsTest, AnUnloadWithNothingUnsavedAsksNoMoreAndClearsUndo)
{
    sn::ProjectEdit::Rename(At(L"AudioObjects/Weapons/Guns"), L"Rifles");
    sn::StorageProblems problems;
    ASSERT_TRUE(sn::SaveProject(*HostRef().GetProject(), problems));
    ASSERT_TRUE(HostRef().Undo().CanUndo());
    Select({kWeapons});
    m_dialogs.AnswerMessageBox(IDOK, true);
    m_view->OnEnableWorkUnit();
    EXPECT_FALSE(Loaded(kWeapons));
    EXPECT_EQ(2u, m_dialogs.Records().size()) << "the confirmation and the progress, no save dialog";
    EXPECT_FALSE(HostRef().Undo().CanUndo()) << "as the confirmation warned";

    // The answer remembered: loading back asks nothing, and brings the saved name.
    m_view->OnEnableWorkUnit();
    EXPECT_TRUE(Loaded(kWeapons));
    EXPECT_TRUE(At(L"AudioObjects/Weapons/Rifles"));
    EXPECT_EQ(3u, m_dialogs.Records().size());
}

TEST_F(WorkUnitCommandsTest, CancelAtEitherDialogChangesNothing)
{
    sn::ProjectEdit::Rename(At(L"AudioObjects/Weapons/Guns"), L"Rifles");
    Select({kWeapons});
    m_dialogs.AnswerMessageBox(IDCANCEL);
    m_view->OnEnableWorkUnit();
    m_dialogs.AnswerMessageBox(IDOK);
    m_dialogs.AnswerUnloadDirty(UnloadDirtyWorkUnitsDlg::Decision_Cancel);
    m_view->OnEnableWorkUnit();
    EXPECT_TRUE(Loaded(kWeapons));
    EXPECT_TRUE(At(L"AudioObjects/Weapons/Rifles"));
    EXPECT_TRUE(HostRef().Undo().CanUndo());
    EXPECT_EQ(3u, m_dialogs.Records().size());
    EXPECT_EQ(0, Lock());
}

TEST_F(WorkUnitCommandsTest, UnsavedUnitsAreSavedFirstAndOneWithoutAFileIsAskedAboutUnlisted)
{
    // A new work unit has no file on disk yet: it is left out of the list, but still asked about.
    sn::ProjectObject* audio = At(L"AudioObjects");
    sn::ProjectObject* fresh = sn::ProjectEdit::Create(audio, PMTreeNode::WorkUnit, L"Fresh");
    sn::ProjectEdit::Create(fresh, PMTreeNode::ActorMixer, L"Mix");
    sn::ProjectEdit::Rename(At(L"AudioObjects/Weapons/Guns"), L"Rifles");
    WindowSystem::Get().RunUntilIdle();
    Select({L"AudioObjects/Fresh", kWeapons});
    m_dialogs.AnswerMessageBox(IDOK);
    m_dialogs.AnswerUnloadDirty(UnloadDirtyWorkUnitsDlg::Decision_Save);
    m_view->OnEnableWorkUnit();
    const std::wstring weaponsFile = (m_dir / "Project" / "AudioObjects" / "Weapons.swu").wstring();
    EXPECT_EQ(L"unload-dirty paths=[\"" + weaponsFile + L"\"] -> Save", m_dialogs.Records()[1].line);
    EXPECT_FALSE(Loaded(L"AudioObjects/Fresh")) << "saved first, so it has a file to come back from";
    EXPECT_FALSE(Loaded(kWeapons));
    EXPECT_TRUE(std::filesystem::exists(m_dir / "Project" / "AudioObjects" / "Fresh.swu"));
}

TEST_F(WorkUnitCommandsTest, AFailedSaveCancelsTheUnloadAndSaysSo)
{
    // A project whose name cannot name a file cannot be saved.
    HostRef().GetProject()->SetName(L"Bad/Name");
    sn::ProjectEdit::Rename(At(L"AudioObjects/Weapons/Guns"), L"Rifles");
    Select({kWeapons});
    m_dialogs.AnswerMessageBox(IDOK);
    m_dialogs.AnswerUnloadDirty(UnloadDirtyWorkUnitsDlg::Decision_Save);
    m_dialogs.AnswerMessageBox(IDOK);
    m_view->OnEnableWorkUnit();
    ASSERT_EQ(3u, m_dialogs.Records().size()) << "no progress: nothing is unloaded";
    const sn::DialogRecord& error = m_dialogs.Records()[2];
    EXPECT_EQ(L"Project Save Error", error.caption);
    EXPECT_EQ(L"There was an error while saving the project. The \"Unload Work Unit(s)\" operation has been canceled.",
              error.text);
    EXPECT_EQ(static_cast<UINT>(MB_ICONERROR), error.style);
    EXPECT_TRUE(Loaded(kWeapons));
    EXPECT_TRUE(At(L"AudioObjects/Weapons/Rifles")) << "the unsaved change is still there";
    EXPECT_EQ(0, Lock());
}

TEST_F(WorkUnitCommandsTest, ContinuingWithoutSavingDropsTheChanges)
{
    sn::ProjectEdit::Rename(At(L"AudioObjects/Weapons/Guns"), L"Rifles");
    Select({kWeapons});
    m_dialogs.AnswerMessageBox(IDOK);
    m_dialogs.AnswerUnloadDirty(UnloadDirtyWorkUnitsDlg::Decision_Discard);
    m_view->OnEnableWorkUnit();
    ASSERT_FALSE(Loaded(kWeapons));
    m_dialogs.AnswerMessageBox(IDOK);
    m_view->OnEnableWorkUnit();
    EXPECT_TRUE(At(L"AudioObjects/Weapons/Guns")) << "as saved";
}
