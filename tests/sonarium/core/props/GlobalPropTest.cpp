#include "host/GlobalProp.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace
{
class Watcher
{
public:
    void OnChanged(CProp& prop)
    {
        seen.push_back(prop.GetInt());
        if (action)
            action(prop);
    }
    PropFuncPtrType Handler() { return PropFuncPtrType(this, &Watcher::OnChanged); }

    std::vector<long long> seen;
    std::function<void(CProp&)> action;
};
} // namespace

TEST(GlobalPropTest, ChildrenHoldTypedValuesAndFireOnlyOnChange)
{
    CProp root;
    CProp& lock = root.Prop(ROString("LockUIUpdate"), 3, 1);
    EXPECT_EQ(&lock, &root[ROString("LockUIUpdate")]);
    EXPECT_NE(&lock, &root[ROString("Other")]);

    Watcher a;
    lock.Register(a.Handler(), false);
    lock.Register(a.Handler(), true); // kept once, but called now as asked
    lock = -1;
    lock = -1;
    lock.SetValue(std::wstring(L"-1")); // another kind is a change, and reads as no integer
    EXPECT_EQ(a.seen, (std::vector<long long>{0, -1, 0}));
    EXPECT_EQ(lock.GetString(), L"-1");

    const GUID id{0x12345678, 1, 2, {3, 4, 5, 6, 7, 8, 9, 10}};
    lock.SetValue(id);
    EXPECT_EQ(lock.GetGUID(), id);
    EXPECT_EQ(lock.GetString(), L"");
    lock.UnRegister(a.Handler());
    lock = -1;
    EXPECT_EQ(static_cast<long long>(lock), -1);
    EXPECT_EQ(a.seen.size(), 4u);
}

TEST(GlobalPropTest, HandlersMayChangeTheListWhileCalled)
{
    CProp prop;
    Watcher once, victim, writer, late;
    once.action = [&](CProp& p)
    {
        p.UnRegister(once.Handler());
        p.UnRegister(victim.Handler());
        p.Register(late.Handler(), false);
    };
    // Writes again: the nested change reaches everyone, then the outer call carries on.
    writer.action = [&](CProp& p)
    {
        if (p.GetInt() == 6)
            p = 7;
    };
    for (Watcher* w : {&once, &victim, &writer})
        prop.Register(w->Handler(), false);
    prop = 5;
    prop = 6;
    EXPECT_EQ(once.seen, (std::vector<long long>{5}));
    EXPECT_TRUE(victim.seen.empty());
    EXPECT_EQ(writer.seen, (std::vector<long long>{5, 6, 7}));
    EXPECT_EQ(late.seen, (std::vector<long long>{7, 7}));
}
