#include "PlatformFixture.h"

#include "platform/Canvas.h"
#include "platform/Ole.h"
#include "platform/Wnd.h"

#include <string>
#include <vector>

namespace
{
using DragDropTest = PlatformTest;

std::vector<std::wstring> ReadFiles(HDROP drop)
{
    std::vector<std::wstring> files;
    const UINT count = DragQueryFileW(drop, 0xFFFFFFFF, nullptr, 0);
    for (UINT i = 0; i < count; ++i)
    {
        std::wstring name(DragQueryFileW(drop, i, nullptr, 0), L'\0');
        DragQueryFileW(drop, i, name.data(), static_cast<UINT>(name.size() + 1));
        files.push_back(name);
    }
    return files;
}

class RecordingTarget : public COleDropTarget
{
public:
    std::vector<std::string> log;
    std::vector<std::wstring> dropped;
    DROPEFFECT answer = DROPEFFECT_COPY;
    bool handleDropEx = false;

    DROPEFFECT OnDragEnter(CWnd*, COleDataObject*, DWORD keyState, CPoint p) override
    {
        log.push_back("enter " + std::to_string(p.x) + "," + std::to_string(p.y) + " k" + std::to_string(keyState));
        return answer;
    }
    DROPEFFECT OnDragOver(CWnd*, COleDataObject*, DWORD keyState, CPoint p) override
    {
        log.push_back("over " + std::to_string(p.x) + "," + std::to_string(p.y) + " k" + std::to_string(keyState));
        return answer;
    }
    DROPEFFECT OnDropEx(CWnd*, COleDataObject* data, DROPEFFECT dropDefault, DROPEFFECT list, CPoint) override
    {
        log.push_back("dropex " + std::to_string(dropDefault) + "/" + std::to_string(list));
        if (!handleDropEx)
            return static_cast<DROPEFFECT>(-1);
        HGLOBAL memory = data->GetGlobalData(CF_HDROP);
        dropped = ReadFiles(static_cast<HDROP>(GlobalLock(memory)));
        GlobalUnlock(memory);
        GlobalFree(memory);
        return dropDefault;
    }
    BOOL OnDrop(CWnd*, COleDataObject*, DROPEFFECT effect, CPoint) override
    {
        log.push_back("drop " + std::to_string(effect));
        return TRUE;
    }
    void OnDragLeave(CWnd*) override { log.push_back("leave"); }
};
} // namespace

TEST_F(DragDropTest, FileListsSurviveTheHDropLayout)
{
    const std::vector<std::wstring> files{L"/audio/Rain Loop.wav", L"/audio/Été.wav", L"/x"};
    HGLOBAL memory = MakeDropFiles(files);
    EXPECT_EQ(files, ReadFiles(static_cast<HDROP>(GlobalLock(memory))));
    GlobalUnlock(memory);
    EXPECT_EQ(files, ReadFiles(reinterpret_cast<HDROP>(memory))) << "the handle itself is accepted too";

    wchar_t small[5];
    EXPECT_EQ(4u, DragQueryFileW(reinterpret_cast<HDROP>(memory), 0, small, 5));
    EXPECT_EQ(std::wstring(L"/aud"), small);
    EXPECT_EQ(0u, DragQueryFileW(reinterpret_cast<HDROP>(memory), 7, small, 5));
    EXPECT_EQ(nullptr, GlobalFree(memory));
    EXPECT_EQ(nullptr, GlobalLock(memory)) << "a freed block cannot be locked";
}

TEST_F(DragDropTest, ASessionEntersMovesLeavesAndDropsOnRegisteredTargets)
{
    CWnd top, tree, other;
    top.Create(nullptr, L"", WS_VISIBLE, CRect(0, 0, 300, 300), nullptr, 1);
    tree.Create(nullptr, L"", WS_CHILD | WS_VISIBLE, CRect(0, 0, 200, 200), &top, 2);
    other.Create(nullptr, L"", WS_CHILD | WS_VISIBLE, CRect(200, 0, 300, 200), &top, 3);
    RecordingTarget target;
    ASSERT_TRUE(target.Register(&tree));

    auto* source = new COleDataSource;
    source->CacheGlobalData(CF_HDROP, MakeDropFiles({L"/a.wav", L"/b.wav"}));
    {
        DragSession drag(*source, DROPEFFECT_COPY | DROPEFFECT_MOVE);
        EXPECT_EQ(DROPEFFECT_COPY, drag.MoveTo(tree.m_hWnd, POINT{10, 20}, MK_LBUTTON));
        EXPECT_EQ(DROPEFFECT_COPY, drag.MoveTo(tree.m_hWnd, POINT{11, 21}, MK_LBUTTON | MK_SHIFT));
        EXPECT_EQ(DROPEFFECT_NONE, drag.MoveTo(other.m_hWnd, POINT{5, 5}, MK_LBUTTON)) << "no target there";
        target.answer = DROPEFFECT_LINK; // not allowed by the source
        EXPECT_EQ(DROPEFFECT_NONE, drag.MoveTo(tree.m_hWnd, POINT{12, 22}, MK_LBUTTON));
        EXPECT_EQ(DROPEFFECT_NONE, drag.Drop()) << "a refused drop only leaves";
    }
    EXPECT_EQ((std::vector<std::string>{"enter 10,20 k1", "over 11,21 k5", "leave", "enter 12,22 k1", "leave"}),
              target.log);

    target.log.clear();
    target.answer = DROPEFFECT_COPY;
    target.handleDropEx = true;
    {
        DragSession drag(*source, DROPEFFECT_COPY | DROPEFFECT_MOVE);
        drag.MoveTo(tree.m_hWnd, POINT{1, 1}, MK_LBUTTON);
        EXPECT_EQ(DROPEFFECT_COPY, drag.Drop());
    }
    EXPECT_EQ((std::vector<std::string>{"enter 1,1 k1", "dropex 1/3"}), target.log);
    EXPECT_EQ((std::vector<std::wstring>{L"/a.wav", L"/b.wav"}), target.dropped);

    target.log.clear();
    target.handleDropEx = false;
    {
        DragSession drag(*source, DROPEFFECT_COPY);
        drag.MoveTo(tree.m_hWnd, POINT{1, 1}, MK_LBUTTON);
        EXPECT_EQ(DROPEFFECT_COPY, drag.Drop()) << "OnDrop handles what OnDropEx passes on";
    }
    EXPECT_EQ((std::vector<std::string>{"enter 1,1 k1", "dropex 1/1", "drop 1"}), target.log);
    source->InternalRelease();

    tree.DestroyWindow();
    EXPECT_EQ(nullptr, COleDropTarget::FromWindow(tree.m_hWnd));
}

TEST_F(DragDropTest, DoDragDropRunsThroughTheDriverOnceAtATime)
{
    struct Driver : IDragDriver
    {
        int runs = 0;
        DROPEFFECT RunDrag(COleDataSource& source, DROPEFFECT allowed) override
        {
            ++runs;
            EXPECT_EQ(DROPEFFECT_NONE, source.DoDragDrop()) << "no nested drag";
            return allowed & DROPEFFECT_MOVE;
        }
    } driver;
    auto* source = new COleDataSource;
    EXPECT_EQ(DROPEFFECT_NONE, source->DoDragDrop()) << "without a driver nothing happens";
    COleDataSource::SetDragDriver(&driver);
    EXPECT_EQ(DROPEFFECT_MOVE, source->DoDragDrop(DROPEFFECT_COPY | DROPEFFECT_MOVE));
    EXPECT_EQ(1, driver.runs);
    COleDataSource::SetDragDriver(nullptr);
    source->InternalRelease();
}

TEST_F(DragDropTest, GdiPlusCallsReachTheCanvasWithTheWorldTransform)
{
    RecordingCanvas canvas;
    GpGraphics* graphics = nullptr;
    ASSERT_EQ(Ok, GdipCreateFromHDC(CanvasToHdc(&canvas), &graphics));
    // Centre a 16-pixel icon in a 30-pixel button at 150 % scale, as a toolbar would.
    GdipTranslateWorldTransform(graphics, 3, 3, MatrixOrderPrepend);
    GdipScaleWorldTransform(graphics, 1.5f, 1.5f, MatrixOrderPrepend);
    int image = 0;
    GdipDrawImageRectRectI(graphics, reinterpret_cast<GpImage*>(&image), 0, 0, 16, 16, 0, 0, 16, 16, UnitPixel,
                           nullptr, nullptr, nullptr);
    GdipDeleteGraphics(graphics);
    ASSERT_EQ(1u, canvas.images.size());
    EXPECT_EQ(&image, canvas.images[0].image);
    EXPECT_FLOAT_EQ(3.f, canvas.images[0].dest.x);
    EXPECT_FLOAT_EQ(24.f, canvas.images[0].dest.width);
    EXPECT_EQ(InvalidParameter, GdipCreateFromHDC(nullptr, &graphics));

    HBITMAP bitmap = nullptr;
    ASSERT_EQ(Ok, GdipCreateHBITMAPFromBitmap(reinterpret_cast<GpBitmap*>(&image), &bitmap, 0xFF000000));
    EXPECT_EQ(&image, BitmapImage(bitmap));
    EXPECT_TRUE(DeleteObject(bitmap));
    EXPECT_EQ(nullptr, BitmapImage(bitmap));
}
