#include "PlatformFixture.h"

#include "platform/Wnd.h"

#include <string>
#include <vector>

namespace
{
std::vector<std::string> g_log;

class Node : public CWnd
{
public:
    explicit Node(std::string n, bool selfDelete = false) : name(std::move(n)), deleteSelf(selfDelete) {}
    std::string name;
    bool deleteSelf;

    void OnDestroy() { g_log.push_back(name + ":destroy"); }
    void OnSetFocus(CWnd*) { g_log.push_back(name + ":setfocus"); }
    void OnKillFocus(CWnd*) { g_log.push_back(name + ":killfocus"); }
    void PostNcDestroy() override
    {
        g_log.push_back(name + ":ncdestroy");
        if (deleteSelf)
            delete this;
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(Node, CWnd)
    ON_WM_DESTROY()
    ON_WM_SETFOCUS()
    ON_WM_KILLFOCUS()
END_MESSAGE_MAP()

using WindowTest = PlatformTest;
} // namespace

TEST_F(WindowTest, DestroyRunsOnDestroyThenChildrenThenPostNcDestroy)
{
    g_log.clear();
    auto* parent = new Node("parent", true);
    parent->Create(nullptr, L"", WS_VISIBLE, CRect(0, 0, 100, 100), nullptr, 1);
    Node child("child");
    child.Create(nullptr, L"", WS_CHILD | WS_VISIBLE, CRect(0, 0, 10, 10), parent, 2);
    auto* grandchild = new Node("grandchild", true);
    grandchild->Create(nullptr, L"", WS_CHILD, CRect(), &child, 3);
    child.SetFocus();
    g_log.clear();

    const size_t before = Sys().WindowCount();
    parent->DestroyWindow(); // deletes itself
    EXPECT_EQ((std::vector<std::string>{"parent:destroy", "child:destroy", "grandchild:destroy",
                                        "grandchild:ncdestroy", "child:ncdestroy", "parent:ncdestroy"}),
              g_log);
    EXPECT_EQ(before - 3, Sys().WindowCount());
    EXPECT_EQ(nullptr, child.GetSafeHwnd());
    EXPECT_EQ(nullptr, CWnd::GetFocus()) << "the focus does not outlive its window";
}

TEST_F(WindowTest, VisibilityEnablingAndAncestryFollowWin32)
{
    Node top("top"), middle("middle"), leaf("leaf"), other("other");
    top.Create(nullptr, L"", 0, CRect(100, 50, 400, 350), nullptr, 1);
    middle.Create(nullptr, L"", WS_CHILD | WS_VISIBLE, CRect(10, 20, 210, 220), &top, 2);
    leaf.Create(nullptr, L"", WS_CHILD | WS_VISIBLE, CRect(5, 5, 55, 25), &middle, 3);
    other.Create(nullptr, L"", 0, CRect(), nullptr, 4);

    EXPECT_FALSE(leaf.IsWindowVisible()) << "a hidden ancestor hides the leaf";
    EXPECT_FALSE(top.ShowWindow(SW_SHOW));
    EXPECT_TRUE(leaf.IsWindowVisible());
    middle.ShowWindow(SW_HIDE);
    EXPECT_FALSE(leaf.IsWindowVisible());
    EXPECT_TRUE(leaf.GetStyle() & WS_VISIBLE);

    EXPECT_TRUE(top.IsChild(&leaf));
    EXPECT_FALSE(leaf.IsChild(&top));
    EXPECT_FALSE(top.IsChild(&other));
    EXPECT_EQ(&middle, top.GetDlgItem(2));
    EXPECT_EQ(nullptr, top.GetDlgItem(3)) << "only direct children";

    leaf.EnableWindow(FALSE);
    EXPECT_FALSE(leaf.IsWindowEnabled());

    CPoint p(1, 2);
    leaf.ClientToScreen(&p);
    EXPECT_EQ(CPoint(116, 77), p);
    leaf.ScreenToClient(&p);
    EXPECT_EQ(CPoint(1, 2), p);
    CRect client;
    leaf.GetClientRect(&client);
    EXPECT_EQ(CRect(0, 0, 50, 20), client);
}

TEST_F(WindowTest, FocusMovesWithKillAndSetMessages)
{
    g_log.clear();
    Node a("a"), b("b");
    a.Create(nullptr, L"", 0, CRect(), nullptr, 1);
    b.Create(nullptr, L"", 0, CRect(), nullptr, 2);
    EXPECT_EQ(nullptr, a.SetFocus());
    EXPECT_EQ(&a, b.SetFocus());
    EXPECT_EQ(&b, CWnd::GetFocus());
    EXPECT_EQ((std::vector<std::string>{"a:setfocus", "a:killfocus", "b:setfocus"}), g_log);

    Sys().SetKeyDown(VK_SHIFT, true);
    EXPECT_LT(GetKeyState(VK_SHIFT), 0);
    EXPECT_EQ(0, GetKeyState(VK_CONTROL));
}
