// Files dropped by a script reach the drop target registered on a pane's tree at the row aimed
// at, with the drag's key state; a tree's drag travels from the source to the destination.

#include "SessionFixture.h"

#include "sonarium/app/script/ScriptRunner.h"
#include "sonarium/app/session/Drops.h"
#include "sonarium/core/host/ProjectBuilder.h"

#include <fstream>
#include <sstream>

namespace
{
class RecordingTarget : public COleDropTarget
{
public:
    RecordingTarget(std::string name, std::vector<std::string>& log, DROPEFFECT answer)
        : m_name(std::move(name)), m_log(log), m_answer(answer)
    {
    }

    DROPEFFECT OnDragEnter(CWnd*, COleDataObject*, DWORD keyState, CPoint point) override
    {
        m_log.push_back(m_name + " enter");
        keys = keyState;
        at = point;
        return m_answer;
    }
    DROPEFFECT OnDragOver(CWnd*, COleDataObject*, DWORD, CPoint) override { return m_answer; }
    DROPEFFECT OnDropEx(CWnd*, COleDataObject* data, DROPEFFECT dropDefault, DROPEFFECT,
                        CPoint point) override
    {
        m_log.push_back(m_name + " drop");
        at = point;
        if (HGLOBAL memory = data->GetGlobalData(CF_HDROP))
        {
            auto drop = static_cast<HDROP>(GlobalLock(memory));
            for (UINT i = 0, count = DragQueryFileW(drop, 0xFFFFFFFF, nullptr, 0); i < count; ++i)
            {
                std::wstring name(DragQueryFileW(drop, i, nullptr, 0), L'\0');
                DragQueryFileW(drop, i, name.data(), static_cast<UINT>(name.size() + 1));
                files.push_back(name);
            }
            GlobalUnlock(memory);
            GlobalFree(memory);
        }
        return dropDefault;
    }
    void OnDragLeave(CWnd*) override { m_log.push_back(m_name + " leave"); }

    DWORD keys = 0;
    CPoint at;
    std::vector<std::wstring> files;

private:
    std::string m_name;
    std::vector<std::string>& m_log;
    DROPEFFECT m_answer;
};

constexpr CLIPFORMAT k_objectsFormat = 0xC000;

// Starts a drag of its own when asked, as a tree does from its begin-drag notification.
class DragStarter : public CWnd
{
public:
    DROPEFFECT StartDrag()
    {
        sn::DataSourceRef source(new COleDataSource);
        source->CacheData(k_objectsFormat, {1});
        return source->DoDragDrop(DROPEFFECT_COPY | DROPEFFECT_MOVE);
    }
};

using Drops = SessionTest;
} // namespace

TEST_F(Drops, AScriptedFileDropLandsOnTheRowAimedAtWithTheKeysHeld)
{
    const std::filesystem::path file = PrivateFile(".wav");
    std::ofstream(file) << "RIFF";
    std::vector<std::string> log;
    RecordingTarget target("tree", log, DROPEFFECT_COPY);
    target.Register(&Tree());
    std::wostringstream out;
    sn::ScriptRunner runner(session, out);
    std::wstring error;

    ASSERT_TRUE(runner.RunLine(L"drop AudioObjects/World \"" + file.wstring() + L"\" shift", error)) << error;
    EXPECT_EQ(target.files, std::vector<std::wstring>{file.wstring()});
    EXPECT_EQ(target.keys, DWORD(MK_SHIFT | MK_LBUTTON));
    const GUID world = sn::FindByPath(*session.GetProject(), L"AudioObjects/World")->Id();
    EXPECT_EQ(Tree().HitTest(target.at), Tree().GetItemWithGUID(world, TVI_ROOT));

    ASSERT_TRUE(runner.RunLine(L"drop below \"" + file.wstring() + L"\" ctrl right", error)) << error;
    EXPECT_EQ(target.keys, DWORD(MK_CONTROL | MK_RBUTTON));
    EXPECT_EQ(Tree().HitTest(target.at), nullptr) << "below the last row is on no row";
    EXPECT_EQ(log, (std::vector<std::string>{"tree enter", "tree drop", "tree enter", "tree drop"}));

    ASSERT_TRUE(runner.RunLine(L"print drops", error));
    const std::wstring name = file.filename().wstring();
    // The recording target imports nothing, whatever it answers.
    EXPECT_EQ(out.str(), L"drops\n  drop " + name + L" on AudioObjects/World: copy\n    changed nothing\n  drop " +
                             name + L" below the last row: copy\n    changed nothing\n");
    std::filesystem::remove(file);
}

TEST(DragToDestination, TheDragEntersTheSourceThenDropsOnTheDestination)
{
    std::vector<std::string> log;
    DragStarter source;
    CWnd destination;
    source.Create(L"Source", L"", WS_VISIBLE, CRect(0, 0, 100, 100), nullptr, 0);
    destination.Create(L"Destination", L"", WS_VISIBLE, CRect(0, 0, 100, 100), nullptr, 0);
    RecordingTarget atSource("source", log, DROPEFFECT_COPY);
    RecordingTarget atDestination("destination", log, DROPEFFECT_MOVE);
    atSource.Register(&source);
    atDestination.Register(&destination);

    EXPECT_EQ(source.StartDrag(), DROPEFFECT_NONE) << "with no driver installed nothing is dragged";
    sn::DragToDestination hand(source, CPoint(5, 5), destination, CPoint(20, 30),
                               sn::DragKeyState(MK_ALT, false));
    {
        sn::ScopedDragDriver install(&hand);
        EXPECT_FALSE(hand.Ran());
        EXPECT_EQ(source.StartDrag(), DROPEFFECT_MOVE);
    }
    EXPECT_EQ(COleDataSource::GetDragDriver(), nullptr) << "the previous driver is back";
    EXPECT_TRUE(hand.Ran());
    EXPECT_EQ(hand.Effect(), DROPEFFECT_MOVE);
    EXPECT_EQ(log, (std::vector<std::string>{"source enter", "source leave", "destination enter",
                                             "destination drop"}));
    EXPECT_EQ(atDestination.at, CPoint(20, 30));
    EXPECT_EQ(atDestination.keys, DWORD(MK_ALT | MK_LBUTTON));
    EXPECT_EQ(sn::DropEffectName(DROPEFFECT_COPY | DROPEFFECT_LINK), L"copy+link");
    EXPECT_EQ(sn::DropEffectName(DROPEFFECT_NONE), L"none");

    source.DestroyWindow();
    destination.DestroyWindow();
}
