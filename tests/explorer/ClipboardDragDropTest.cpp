// Cut, copy and paste through the host's object clipboard, and drags of rows and files onto the
// tree, in a running reference host.

#include "ExplorerFixture.h"

#include "host/ClipboardHelpers.h"
#include "host/OrbObjectDataSource.h"
#include "platform/Ole.h"
#include "host/Undo.h"
#include "sonarium/core/import/AudioWriter.h"
#include "sonarium/core/model/ProjectEdit.h"

#include <fstream>

namespace
{
const wchar_t* kProject = LR"(
AudioObjects
  Default Work Unit : WorkUnit
    Ambience : ActorMixer
      Rain : SoundSFX
        rain.wav : AudioSource
      Thunder : SoundSFX
    Weather : Folder
      Storm : RandomContainer
        Gust : SoundSFX
)";

const std::wstring kUnit = L"AudioObjects/Default Work Unit";
const std::wstring kAmbience = kUnit + L"/Ambience";
const std::wstring kWeather = kUnit + L"/Weather";
const std::wstring kStorm = kWeather + L"/Storm";
} // namespace

class ClipboardDragDropTest : public ExplorerTest
{
protected:
    void SetUp() override
    {
        ExplorerTest::SetUp();
        Open(kProject);
        m_view = OpenView({OrbObjectCategories::AudioObjects});
    }

    LRESULT Send(UINT message)
    {
        const LRESULT result = m_view->SendMessage(message, 0, 0);
        WindowSystem::Get().RunUntilIdle();
        return result;
    }

    std::vector<std::wstring> OnClipboard()
    {
        std::vector<IOrbObject*> objects;
        HostRef().Clipboard().GetObjects(objects);
        std::vector<std::wstring> names;
        for (IOrbObject* object : objects)
        {
            names.push_back(object->GetName().c_str());
            object->Release();
        }
        return names;
    }

    std::vector<std::wstring> ChildNames(const std::wstring& path)
    {
        std::vector<std::wstring> names;
        for (const auto& child : At(path)->Children())
            names.push_back(child->GetName().c_str());
        return names;
    }

    PMTreeNode* NodeAt(const std::wstring& path) { return m_view->GetTreeCtrl().GetNodeFromItem(Reveal(m_view, path)); }

    CPoint LabelOf(const std::wstring& path)
    {
        HTREEITEM item = Reveal(m_view, path);
        RECT label{};
        m_view->GetTreeCtrl().GetItemRect(item, &label, TRUE);
        return CPoint((label.left + label.right) / 2, (label.top + label.bottom) / 2);
    }

    // Drags the rows' objects from the tree onto a row with the keys held; the effect performed.
    DROPEFFECT DragOnto(std::initializer_list<std::wstring> paths, const std::wstring& onto, DWORD keys)
    {
        SelectRows(m_view, paths);
        std::vector<HTREEITEM> items;
        m_view->GetTreeCtrl().GetSelectedList(items);
        std::vector<IOrbObject*> objects;
        m_view->GetSelectedObjects(items, objects);
        auto* source = new COrbObjectDataSource(SonariumDragSource_ProjectTree, nullptr);
        source->Init(objects);
        DROPEFFECT effect;
        {
            DragSession drag(*source, DROPEFFECT_COPY | DROPEFFECT_MOVE | DROPEFFECT_LINK);
            drag.MoveTo(m_view->GetTreeCtrl().GetSafeHwnd(), LabelOf(onto), keys | MK_LBUTTON);
            effect = drag.Drop();
        }
        source->InternalRelease();
        WindowSystem::Get().RunUntilIdle();
        return effect;
    }

    // Drops files from a file manager onto a row with the keys held; the effect performed.
    DROPEFFECT DropFilesOnto(const std::vector<std::wstring>& files, const std::wstring& onto, DWORD keys)
    {
        COleDataSource* source = new COleDataSource;
        source->CacheGlobalData(CF_HDROP, MakeDropFiles(files));
        DROPEFFECT effect;
        {
            DragSession drag(*source, DROPEFFECT_COPY | DROPEFFECT_MOVE | DROPEFFECT_LINK);
            drag.MoveTo(m_view->GetTreeCtrl().GetSafeHwnd(), LabelOf(onto), keys | MK_LBUTTON);
            effect = drag.Drop();
        }
        source->InternalRelease();
        WindowSystem::Get().RunUntilIdle();
        return effect;
    }

    DlgProjectExplorer* m_view = nullptr;
};

TEST_F(ClipboardDragDropTest, AParentAndItsChildGoToTheClipboardAsTheParentOnly)
{
    SelectRows(m_view, {kAmbience, kAmbience + L"/Rain"});
    EXPECT_EQ(Send(HostMessages::CanCopy), HostMessages::Allowed);
    Send(WM_COPY);
    EXPECT_EQ(OnClipboard(), std::vector<std::wstring>{L"Ambience"});
    EXPECT_EQ(HostRef().Clipboard().GetFlags(), 0x10u);
}

TEST_F(ClipboardDragDropTest, AWorkUnitMayNotGoToTheClipboardAndLeavesItsContentAsItWas)
{
    SelectRows(m_view, {kAmbience});
    Send(WM_COPY);
    // The work unit holds Weather, so only the unit counts, and it may not go to the clipboard.
    SelectRows(m_view, {kUnit, kWeather});
    EXPECT_EQ(Send(HostMessages::CanCopy), HostMessages::NotAllowed);
    EXPECT_EQ(Send(HostMessages::CanCut), HostMessages::NotAllowed);
    Send(WM_CUT);
    Send(WM_COPY);
    EXPECT_EQ(OnClipboard(), std::vector<std::wstring>{L"Ambience"});
    EXPECT_EQ(HostRef().Clipboard().GetFlags(), 0x10u);
}

TEST_F(ClipboardDragDropTest, ACopyPastesAsOftenAsWantedWithChildrenNewIdentitiesAndOneUndoStepEach)
{
    SelectRows(m_view, {kAmbience});
    Send(WM_COPY);
    const GUID original = *At(kAmbience)->GetGUID();
    for (int i = 0; i < 2; ++i)
    {
        SelectRows(m_view, {kUnit});
        EXPECT_EQ(Send(HostMessages::CanPaste), HostMessages::Allowed);
        Send(WM_PASTE);
    }
    EXPECT_EQ(ChildNames(kUnit), (std::vector<std::wstring>{L"Ambience", L"Weather", L"Ambience 1", L"Ambience 2"}));
    EXPECT_EQ(ChildNames(kUnit + L"/Ambience 2"), (std::vector<std::wstring>{L"Rain", L"Thunder"}));
    EXPECT_EQ(ChildNames(kUnit + L"/Ambience 2/Rain"), std::vector<std::wstring>{L"rain.wav"});
    EXPECT_NE(*At(kUnit + L"/Ambience 1")->GetGUID(), original);
    // The pasted copy is revealed and selected.
    EXPECT_TRUE(m_view->GetTreeCtrl().IsSelected(ItemOf(m_view, kUnit + L"/Ambience 2")));
    // The copy stays on the clipboard.
    EXPECT_EQ(OnClipboard(), std::vector<std::wstring>{L"Ambience"});

    ASSERT_TRUE(IUndoMgr::m_instance->Undo());
    EXPECT_EQ(ChildNames(kUnit), (std::vector<std::wstring>{L"Ambience", L"Weather", L"Ambience 1"}));
}

TEST_F(ClipboardDragDropTest, ACutIsMarkedMovesOnceKeepingItsIdentityAndLeavesTheClipboardEmpty)
{
    const GUID rain = *At(kAmbience + L"/Rain")->GetGUID();
    SelectRows(m_view, {kAmbience + L"/Rain"});
    Send(WM_CUT);
    EXPECT_TRUE(NodeAt(kAmbience + L"/Rain")->m_bCutMarked);
    EXPECT_EQ(HostRef().Clipboard().GetFlags(), 0x30u);

    SelectRows(m_view, {kStorm});
    Send(WM_PASTE);
    EXPECT_EQ(ChildNames(kStorm), (std::vector<std::wstring>{L"Gust", L"Rain"}));
    EXPECT_EQ(*At(kStorm + L"/Rain")->GetGUID(), rain);
    EXPECT_FALSE(NodeAt(kStorm + L"/Rain")->m_bCutMarked);
    EXPECT_TRUE(OnClipboard().empty());
    EXPECT_EQ(Send(HostMessages::CanPaste), HostMessages::NotAllowed);

    ASSERT_TRUE(IUndoMgr::m_instance->Undo());
    EXPECT_EQ(ChildNames(kAmbience), (std::vector<std::wstring>{L"Rain", L"Thunder"}));
}

TEST_F(ClipboardDragDropTest, AMoveBesideAnObjectOfTheSameNameTakesAFreeNameInTheSameUndoStep)
{
    EXPECT_EQ(DragOnto({kAmbience + L"/Thunder"}, kStorm, MK_CONTROL), DROPEFFECT_COPY);
    const GUID thunder = *At(kAmbience + L"/Thunder")->GetGUID();
    SelectRows(m_view, {kAmbience + L"/Thunder"});
    Send(WM_CUT);
    SelectRows(m_view, {kStorm});
    Send(WM_PASTE);
    EXPECT_EQ(ChildNames(kStorm), (std::vector<std::wstring>{L"Gust", L"Thunder", L"Thunder 1"}));
    EXPECT_EQ(*At(kStorm + L"/Thunder 1")->GetGUID(), thunder);
    EXPECT_TRUE(m_view->GetTreeCtrl().IsSelected(ItemOf(m_view, kStorm + L"/Thunder 1")));

    ASSERT_TRUE(IUndoMgr::m_instance->Undo());
    EXPECT_EQ(ChildNames(kAmbience), (std::vector<std::wstring>{L"Rain", L"Thunder"}));
    EXPECT_EQ(*At(kAmbience + L"/Thunder")->GetGUID(), thunder);
    EXPECT_EQ(ChildNames(kStorm), (std::vector<std::wstring>{L"Gust", L"Thunder"}));

    // A drag moves the same way.
    EXPECT_EQ(DragOnto({kAmbience + L"/Thunder"}, kStorm, 0), DROPEFFECT_MOVE);
    EXPECT_EQ(ChildNames(kStorm), (std::vector<std::wstring>{L"Gust", L"Thunder", L"Thunder 1"}));
    EXPECT_EQ(ChildNames(kAmbience), std::vector<std::wstring>{L"Rain"});
}

TEST_F(ClipboardDragDropTest, TheTreeIsRebuiltOncePerDropOrPasteWhateverTheNumberOfObjects)
{
    PETreeCtrl& tree = m_view->GetTreeCtrl();
    Reveal(m_view, kStorm + L"/Gust");
    uint64_t before = tree.RedrawSuspensionCount();
    EXPECT_EQ(DragOnto({kAmbience + L"/Rain", kAmbience + L"/Thunder"}, kStorm, 0), DROPEFFECT_MOVE);
    EXPECT_EQ(tree.RedrawSuspensionCount() - before, 1u);

    // A paste rebuilds once for the change, then reveals and selects what it pasted.
    auto paste = [&](std::initializer_list<std::wstring> rows)
    {
        SelectRows(m_view, rows);
        Send(WM_COPY);
        SelectRows(m_view, {kAmbience});
        const uint64_t start = tree.RedrawSuspensionCount();
        Send(WM_PASTE);
        return tree.RedrawSuspensionCount() - start;
    };
    const uint64_t perPaste[2] = {paste({kStorm + L"/Gust"}),
                                  paste({kStorm + L"/Gust", kStorm + L"/Rain", kStorm + L"/Thunder"})};
    EXPECT_EQ(ChildNames(kAmbience).size(), 4u);
    EXPECT_EQ(perPaste[0], 2u);
    EXPECT_EQ(perPaste[1], perPaste[0]);
}

TEST_F(ClipboardDragDropTest, ANewCopyClearsTheCutMarksAndAPasteOfADeletedObjectDoesNothing)
{
    SelectRows(m_view, {kAmbience + L"/Thunder"});
    Send(WM_CUT);
    SelectRows(m_view, {kStorm});
    Send(WM_COPY);
    EXPECT_FALSE(NodeAt(kAmbience + L"/Thunder")->m_bCutMarked);

    ASSERT_TRUE(sn::ProjectEdit::Delete(At(kStorm)));
    WindowSystem::Get().RunUntilIdle();
    SelectRows(m_view, {kAmbience});
    EXPECT_EQ(Send(HostMessages::CanPaste), HostMessages::NotAllowed);
    Send(WM_PASTE);
    EXPECT_EQ(ChildNames(kAmbience), (std::vector<std::wstring>{L"Rain", L"Thunder"}));
}

TEST_F(ClipboardDragDropTest, ARowIntoItsOwnSubtreeNeitherPastesNorMoves)
{
    SelectRows(m_view, {kWeather});
    Send(WM_CUT);
    SelectRows(m_view, {kStorm});
    EXPECT_EQ(Send(HostMessages::CanPaste), HostMessages::NotAllowed);
    EXPECT_EQ(DragOnto({kWeather}, kStorm, 0), DROPEFFECT_NONE);
    EXPECT_EQ(ChildNames(kUnit), (std::vector<std::wstring>{L"Ambience", L"Weather"}));
}

TEST_F(ClipboardDragDropTest, TheKeysChooseMoveOrCopyAsFileManagersDo)
{
    EXPECT_EQ(DragOnto({kAmbience + L"/Rain"}, kStorm, 0), DROPEFFECT_MOVE);
    EXPECT_EQ(ChildNames(kStorm), (std::vector<std::wstring>{L"Gust", L"Rain"}));
    EXPECT_EQ(DragOnto({kStorm + L"/Gust"}, kAmbience, MK_CONTROL), DROPEFFECT_COPY);
    EXPECT_EQ(ChildNames(kStorm), (std::vector<std::wstring>{L"Gust", L"Rain"}));
    EXPECT_EQ(ChildNames(kAmbience), (std::vector<std::wstring>{L"Thunder", L"Gust"}));
    // A link needs an event to refer from.
    EXPECT_EQ(DragOnto({kAmbience + L"/Thunder"}, kStorm, MK_CONTROL | MK_SHIFT), DROPEFFECT_NONE);

    EXPECT_EQ(ClipboardHelpers::DragEffect(DROPEFFECT_MOVE | DROPEFFECT_COPY, MK_CONTROL | MK_SHIFT),
              DROPEFFECT_NONE);
    EXPECT_EQ(ClipboardHelpers::DragEffect(DROPEFFECT_LINK, 0), DROPEFFECT_LINK);
    EXPECT_EQ(ClipboardHelpers::DragEffect(DROPEFFECT_COPY, 0), DROPEFFECT_NONE);
}

TEST_F(ClipboardDragDropTest, MidiNamesAreFoundWhateverTheCaseOfTheirExtension)
{
    using F = std::vector<CStdStr<wchar_t>>;
    EXPECT_TRUE(PEDropTarget::HasMidiFile(F{L"a.wav", L"B.MID"}));
    EXPECT_FALSE(PEDropTarget::HasMidiFile(F{L"a.midi", L"mid", L"x.wav"}));
    EXPECT_TRUE(PEDropTarget::HasMidiFile(F{L".mid"}));
}

TEST_F(ClipboardDragDropTest, FilesThatAreNotAudioAndControlWithAltAreRefused)
{
    const std::filesystem::path text = m_dir / "notes.wav";
    std::ofstream(text) << "not audio";
    for (DWORD keys : {DWORD(0), DWORD(MK_CONTROL), DWORD(MK_CONTROL | MK_ALT)})
    {
        COleDataSource* source = new COleDataSource;
        source->CacheGlobalData(CF_HDROP, MakeDropFiles({text.wstring()}));
        {
            DragSession drag(*source, DROPEFFECT_COPY | DROPEFFECT_MOVE | DROPEFFECT_LINK);
            EXPECT_EQ(drag.MoveTo(m_view->GetTreeCtrl().GetSafeHwnd(), LabelOf(kAmbience), keys | MK_LBUTTON),
                      DROPEFFECT_NONE);
            EXPECT_EQ(drag.Drop(), DROPEFFECT_NONE);
        }
        source->InternalRelease();
        WindowSystem::Get().RunUntilIdle();
    }
    EXPECT_EQ(ChildNames(kAmbience), (std::vector<std::wstring>{L"Rain", L"Thunder"}));
}

TEST_F(ClipboardDragDropTest, ADroppedFolderBringsTheSoundsInItAndOneWithoutSoundsIsRefused)
{
    const std::filesystem::path folder = m_dir / "Gravel";
    std::filesystem::create_directories(folder / "More");
    std::filesystem::create_directories(folder / ".cache");
    std::string error;
    for (const std::filesystem::path& file :
         {folder / "Step_B.wav", folder / "More" / "Step_C.wav", folder / "Step_A.wav", folder / ".cache" / "x.wav"})
        ASSERT_TRUE(sn::audio::WriteWav(file, sn::audio::Synthesize(L"Footstep", 8000), 16, error)) << error;
    std::ofstream(folder / "readme.txt") << "recorded on gravel";
    const std::filesystem::path notes = m_dir / "Notes";
    std::filesystem::create_directories(notes);
    std::ofstream(notes / "readme.txt") << "nothing to hear";
    // Imported files are kept in the project's folder.
    sn::StorageProblems problems;
    ASSERT_TRUE(sn::SaveProjectAs(*HostRef().GetProject(), m_dir / "Project", problems));

    EXPECT_EQ(DropFilesOnto({notes.wstring()}, kAmbience, MK_CONTROL), DROPEFFECT_NONE);
    EXPECT_EQ(DropFilesOnto({folder.wstring()}, kAmbience, MK_CONTROL), DROPEFFECT_COPY);
    EXPECT_EQ(ChildNames(kAmbience),
              (std::vector<std::wstring>{L"Rain", L"Thunder", L"Step_C", L"Step_A", L"Step_B"}));
}

TEST_F(ClipboardDragDropTest, HoveringNearAnEdgeStartsOneScrollTimerThatLeavingStops)
{
    COleDataSource* source = new COleDataSource;
    source->CacheGlobalData(CF_HDROP, MakeDropFiles({L"/nowhere.wav"}));
    {
        DragSession drag(*source, DROPEFFECT_COPY);
        CRect client;
        m_view->GetTreeCtrl().GetClientRect(&client);
        drag.MoveTo(m_view->GetTreeCtrl().GetSafeHwnd(), CPoint(client.left + 40, client.top + 16), MK_LBUTTON);
        EXPECT_EQ(CScrollTreeDropTarget::m_idScrollTimer, 0u);
        drag.MoveTo(m_view->GetTreeCtrl().GetSafeHwnd(), CPoint(client.left + 40, client.top + 14), MK_LBUTTON);
        const UINT_PTR timer = CScrollTreeDropTarget::m_idScrollTimer;
        EXPECT_NE(timer, 0u);
        EXPECT_EQ(CScrollTreeDropTarget::m_ivScrollDir, -1);
        drag.MoveTo(m_view->GetTreeCtrl().GetSafeHwnd(), CPoint(client.left + 40, client.bottom - 14), MK_LBUTTON);
        EXPECT_EQ(CScrollTreeDropTarget::m_idScrollTimer, timer);
        EXPECT_EQ(CScrollTreeDropTarget::m_ivScrollDir, 1);
        drag.MoveTo(m_view->GetTreeCtrl().GetSafeHwnd(), CPoint(client.left + 40, client.top + 40), MK_LBUTTON);
        EXPECT_EQ(CScrollTreeDropTarget::m_idScrollTimer, timer);
        EXPECT_EQ(CScrollTreeDropTarget::m_ivScrollDir, 0);
        drag.Cancel();
    }
    source->InternalRelease();
    EXPECT_EQ(CScrollTreeDropTarget::m_idScrollTimer, 0u);
}

TEST_F(ClipboardDragDropTest, HoveringAtTheSideEdgesScrollsWideRowsSidewaysAtEachTick)
{
    PETreeCtrl& tree = m_view->GetTreeCtrl();
    tree.SetTextMeasure([](const std::wstring&) { return 2000; });
    CRect client;
    tree.GetClientRect(&client);
    COleDataSource* source = new COleDataSource;
    source->CacheGlobalData(CF_HDROP, MakeDropFiles({L"/nowhere.wav"}));
    {
        DragSession drag(*source, DROPEFFECT_COPY);
        drag.MoveTo(tree.GetSafeHwnd(), CPoint(client.right - 10, client.top + 40), MK_LBUTTON);
        EXPECT_EQ(CScrollTreeDropTarget::m_ihScrollDir, 1);
        WindowSystem::Get().Advance(74);
        EXPECT_EQ(tree.GetScrollX(), 0);
        WindowSystem::Get().Advance(1);
        EXPECT_EQ(tree.GetScrollX(), tree.GetIndent());
        WindowSystem::Get().Advance(75);
        EXPECT_EQ(tree.GetScrollX(), 2 * tree.GetIndent());
        drag.MoveTo(tree.GetSafeHwnd(), CPoint(client.left + 10, client.top + 40), MK_LBUTTON);
        EXPECT_EQ(CScrollTreeDropTarget::m_ihScrollDir, -1);
        WindowSystem::Get().Advance(75);
        EXPECT_EQ(tree.GetScrollX(), tree.GetIndent());
        drag.Cancel();
    }
    source->InternalRelease();
    WindowSystem::Get().Advance(150);
    EXPECT_EQ(tree.GetScrollX(), tree.GetIndent()) << "the drag is over: the tree stays where it is";
    tree.SetTextMeasure(nullptr);
}
