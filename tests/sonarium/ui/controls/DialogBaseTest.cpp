#include "HostFixture.h"

#include "host/DialogBase.h"
#include "host/Theme.h"
#include "platform/Canvas.h"

#include <cstdio>

namespace
{
// A view that chains its size handler to the base, as views do.
class SizedView : public CDialogBase
{
public:
    std::vector<CSize> sizes;
    int invalidationsSeenBeforeBase = -1;

protected:
    void OnSize(UINT type, int cx, int cy)
    {
        invalidationsSeenBeforeBase = GetInvalidationCount();
        CDialogBase::OnSize(type, cx, cy);
        sizes.emplace_back(cx, cy);
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(SizedView, CDialogBase)
ON_WM_SIZE()
END_MESSAGE_MAP()

// A view with a message map of its own that does not name WM_SIZE.
class PlainView : public CDialogBase
{
public:
    int destroyed = 0;

protected:
    void OnDestroy()
    {
        ++destroyed;
        CDialogBase::OnDestroy();
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(PlainView, CDialogBase)
ON_WM_DESTROY()
END_MESSAGE_MAP()

class DialogBaseTest : public HostTest
{
protected:
    void SetUp() override
    {
        HostTest::SetUp();
        m_pane.Create(nullptr, L"", WS_VISIBLE, CRect(0, 0, 300, 200), nullptr, 1);
    }
    CWnd m_pane;
};

TEST_F(DialogBaseTest, SizeReachesTheDerivedHandlerAndThroughItTheBase)
{
    SizedView view;
    ASSERT_TRUE(view.Create(2001, &m_pane));
    const int before = view.GetInvalidationCount();
    view.SendMessage(WM_SIZE, SIZE_RESTORED, MAKELPARAM(240, 180));
    ASSERT_FALSE(view.sizes.empty());
    EXPECT_EQ(240, view.sizes.back().cx);
    EXPECT_EQ(180, view.sizes.back().cy);
    EXPECT_EQ(before, view.invalidationsSeenBeforeBase);
    EXPECT_GT(view.GetInvalidationCount(), before);

    // Without an entry of its own, the base still handles the message.
    PlainView plain;
    ASSERT_TRUE(plain.Create(2002, &m_pane));
    const int plainBefore = plain.GetInvalidationCount();
    plain.SendMessage(WM_SIZE, SIZE_RESTORED, MAKELPARAM(10, 10));
    EXPECT_GT(plain.GetInvalidationCount(), plainBefore);
    plain.DestroyWindow();
    view.DestroyWindow();
}

TEST_F(DialogBaseTest, EraseFillsTheClientAreaWithTheThemeBackground)
{
    PlainView view;
    ASSERT_TRUE(view.Create(2001, &m_pane));
    view.MoveWindow(0, 0, 120, 80);

    RecordingCanvas canvas;
    EXPECT_EQ(TRUE, view.SendMessage(WM_ERASEBKGND, reinterpret_cast<WPARAM>(CanvasToHdc(&canvas))));
    char expected[64];
    std::snprintf(expected, sizeof expected, "fill 0,0 120x80 #%06X",
                  static_cast<COLORREF>(sn::theme::Color("Window_Background")));
    EXPECT_EQ(std::vector<std::string>{expected}, canvas.calls);

    // Nothing to draw on: the default erase is left to happen.
    EXPECT_EQ(FALSE, view.SendMessage(WM_ERASEBKGND, 0));
    view.DestroyWindow();
}

TEST_F(DialogBaseTest, DestroyChainsAndHandsTheFocusToTheParent)
{
    PlainView view;
    ASSERT_TRUE(view.Create(2001, &m_pane));
    CButton inner;
    inner.Create(L"", WS_CHILD | WS_VISIBLE, CRect(0, 0, 10, 10), &view, 5);
    inner.SetFocus();

    view.DestroyWindow();
    EXPECT_EQ(1, view.destroyed);
    EXPECT_EQ(&m_pane, CWnd::GetFocus());
}
} // namespace
