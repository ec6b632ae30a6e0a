#include "HostFixture.h"

#include "host/ButtonWithTooltip.h"
#include "host/UISubClassingMgr.h"
#include "platform/Canvas.h"
#include "platform/TreeViewTypes.h"

#include <cmath>

namespace
{
// Puts the process-wide scale back, whatever the test set.
class DpiScale
{
public:
    explicit DpiScale(float scale) : m_previous(UISubClassingMgr::GetDpiScale())
    {
        EXPECT_TRUE(UISubClassingMgr::SetDpiScale(scale));
    }
    ~DpiScale() { UISubClassingMgr::SetDpiScale(m_previous); }

private:
    float m_previous;
};

TEST(UISubClassingMgr, ScaleToDpiRoundsToTheNearestPixel)
{
    {
        DpiScale scale(1.25f);
        EXPECT_EQ(24, UISubClassingMgr::ScaleToDpi(19)); // 23.75
        EXPECT_EQ(19, UISubClassingMgr::ScaleToDpi(15)); // 18.75
        EXPECT_EQ(25, UISubClassingMgr::ScaleToDpi(20));
        EXPECT_EQ(1, UISubClassingMgr::ScaleToDpi(1)); // 1.25
        EXPECT_EQ(3, UISubClassingMgr::ScaleToDpi(2)); // 2.5: halves go away from zero
        EXPECT_EQ(-3, UISubClassingMgr::ScaleToDpi(-2));
    }
    {
        DpiScale scale(1.5f);
        EXPECT_EQ(29, UISubClassingMgr::ScaleToDpi(19)); // 28.5
        EXPECT_EQ(23, UISubClassingMgr::ScaleToDpi(15)); // 22.5
        EXPECT_EQ(30, UISubClassingMgr::ScaleToDpi(20));
        EXPECT_EQ(0, UISubClassingMgr::ScaleToDpi(0));
        EXPECT_FLOAT_EQ(1.5f, UISubClassingMgr::GetDpiScale());
    }
    EXPECT_EQ(19, UISubClassingMgr::ScaleToDpi(19));
}

TEST(UISubClassingMgr, RefusesScalesThatAreNoScreen)
{
    DpiScale scale(2.0f);
    EXPECT_FALSE(UISubClassingMgr::SetDpiScale(0.0f));
    EXPECT_FALSE(UISubClassingMgr::SetDpiScale(-1.0f));
    EXPECT_FALSE(UISubClassingMgr::SetDpiScale(std::nanf("")));
    EXPECT_FALSE(UISubClassingMgr::SetDpiScale(INFINITY));
    EXPECT_FLOAT_EQ(2.0f, UISubClassingMgr::GetDpiScale());
}

class ThemedControlsTest : public HostTest
{
protected:
    void SetUp() override
    {
        HostTest::SetUp();
        m_toolbar.Create(nullptr, L"", WS_CHILD | WS_VISIBLE, CRect(0, 0, 40, 19), nullptr, 1);
        m_themed.Create(L"", WS_CHILD | WS_VISIBLE, CRect(0, 0, 19, 19), &m_toolbar, 10);
        m_plain.Create(L"", WS_CHILD | WS_VISIBLE, CRect(19, 0, 38, 19), &m_toolbar, 11);
        UISubClassingMgr::SubClassControl(m_themed.GetSafeHwnd());
    }

    // What the button's owner gets when the button is painted at one stage.
    bool Paint(CButton& button, DWORD stage, LRESULT& result)
    {
        NMCUSTOMDRAW draw;
        draw.hdr.hwndFrom = button.GetSafeHwnd();
        draw.hdr.idFrom = static_cast<UINT_PTR>(button.GetDlgCtrlID());
        draw.hdr.code = NM_CUSTOMDRAW;
        draw.dwDrawStage = stage;
        draw.hdc = CanvasToHdc(&m_canvas);
        draw.rc = CRect(0, 0, 19, 19);
        result = -1;
        return UISubClassingMgr::OnNotify(draw.hdr.idFrom, &draw.hdr, &result);
    }

    CWnd m_toolbar;
    CButtonWithTooltip m_themed;
    CButton m_plain;
    RecordingCanvas m_canvas;
};

TEST_F(ThemedControlsTest, PrepaintOfAThemedControlIsLeftToItsOwnerToDrawOn)
{
    LRESULT result = 0;
    EXPECT_TRUE(Paint(m_themed, CDDS_PREPAINT, result));
    EXPECT_EQ(CDRF_SKIPDEFAULT, result);
    ASSERT_EQ(1u, m_canvas.calls.size());
    EXPECT_EQ(0u, m_canvas.calls[0].find("fill 0,0 19x19"));

    EXPECT_FALSE(Paint(m_themed, CDDS_POSTPAINT, result));
    EXPECT_FALSE(Paint(m_plain, CDDS_PREPAINT, result));
    EXPECT_EQ(-1, result);

    NMHDR click{m_themed.GetSafeHwnd(), 10, NM_CLICK};
    EXPECT_FALSE(UISubClassingMgr::OnNotify(10, &click, &result));
    EXPECT_FALSE(UISubClassingMgr::OnNotify(10, nullptr, &result));

    // A destroyed control is forgotten.
    m_themed.DestroyWindow();
    EXPECT_FALSE(UISubClassingMgr::IsSubClassed(m_themed.GetSafeHwnd()));
    EXPECT_EQ(1u, m_canvas.calls.size());
}

TEST_F(ThemedControlsTest, TooltipShowsOnlyOnceCreatedOnALiveControlWithText)
{
    CButtonWithTooltip unborn;
    EXPECT_FALSE(unborn.CreateToolTip());

    m_themed.SetToolTipText(L"Create new 'Folder'");
    EXPECT_FALSE(m_themed.ShowsToolTip());
    EXPECT_TRUE(m_themed.CreateToolTip());
    EXPECT_TRUE(m_themed.ShowsToolTip());
    EXPECT_EQ(L"Create new 'Folder'", m_themed.GetToolTipText());

    // Disabled buttons keep and show their tooltip.
    m_themed.EnableWindow(FALSE);
    m_themed.SetToolTipText(L"Create new parent 'Folder'");
    EXPECT_TRUE(m_themed.ShowsToolTip());
    EXPECT_EQ(L"Create new parent 'Folder'", m_themed.GetToolTipText());

    m_themed.DestroyWindow();
    EXPECT_FALSE(m_themed.ShowsToolTip());
}
} // namespace
