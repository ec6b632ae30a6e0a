#include "sonarium/core/notify/NotifyManager.h"

#include "platform/WindowSystem.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace
{
const ROString kChannel("Project.Changed");
using Calls = std::vector<std::string>;

class Subscriber
{
public:
    Subscriber(Calls& calls, std::string name) : m_calls(calls), m_name(std::move(name)) {}
    void OnNotify(CNotifyItemBase* item)
    {
        m_calls.push_back(m_name + (item->channel == kChannel ? ":" : "@") + item->pData->event.c_str());
        if (action)
            action(item->pData->event.view());
    }
    NotifyDelegate Delegate() { return NotifyDelegate(this, &Subscriber::OnNotify); }
    std::function<void(std::string_view event)> action;

private:
    Calls& m_calls;
    std::string m_name;
};

class CountedData : public NotifyData
{
public:
    CountedData(const char* event, int& destroyed) : NotifyData(ROString(event)), m_destroyed(destroyed) {}
    ~CountedData() override { ++m_destroyed; }

private:
    int& m_destroyed;
};

class NotifyManagerTest : public ::testing::Test
{
protected:
    void SetUp() override { WindowSystem::Get().Reset(); }
    void Send(const char* event, ROString const& channel = kChannel)
    {
        NotifyData data{ROString(event)};
        bus.Notify(channel, data);
    }

    Calls calls;
    sn::NotifyManager bus;
    Subscriber a{calls, "a"}, b{calls, "b"}, c{calls, "c"}, d{calls, "d"};
};
} // namespace

TEST_F(NotifyManagerTest, DeliversByChannelInRegistrationOrderOnce)
{
    const ROString other("Selection.Changed");
    bus.Register(kChannel, b.Delegate());
    bus.Register(kChannel, a.Delegate());
    bus.Register(kChannel, b.Delegate());
    bus.Register(other, c.Delegate());
    Send("e1");
    bus.UnRegister(kChannel, c.Delegate()); // not on this channel
    bus.UnRegister(kChannel, b.Delegate());
    Send("e2");
    Send("e3", other);
    EXPECT_EQ(calls, (Calls{"b:e1", "a:e1", "a:e2", "c@e3"}));
    EXPECT_EQ(bus.SubscriberCount(kChannel), 1u);
}

TEST_F(NotifyManagerTest, SubscribersChangeTheListDuringDelivery)
{
    for (Subscriber* s : {&a, &b, &c})
        bus.Register(kChannel, s->Delegate());
    // a drops itself and c and adds d: c is skipped, b still runs, d waits for the next delivery.
    a.action = [&](std::string_view)
    {
        bus.UnRegister(kChannel, a.Delegate());
        bus.UnRegister(kChannel, c.Delegate());
        bus.Register(kChannel, d.Delegate());
    };
    // b re-raises once; in the nested delivery d removes b, which only then stops hearing.
    b.action = [&](std::string_view event)
    {
        if (event == "e2")
            Send("nested");
    };
    d.action = [&](std::string_view event)
    {
        if (event == "nested")
            bus.UnRegister(kChannel, b.Delegate());
    };
    Send("e1");
    Send("e2");
    Send("e3");
    EXPECT_EQ(calls, (Calls{"a:e1", "b:e1", "b:e2", "b:nested", "d:nested", "d:e2", "d:e3"}));
    EXPECT_EQ(bus.SubscriberCount(kChannel), 1u);
}

TEST_F(NotifyManagerTest, PostedNotificationsWaitForTheQueueAndAreDeleted)
{
    int destroyed = 0;
    bus.Register(kChannel, a.Delegate());
    bus.PostNotify(kChannel, new CountedData("p1", destroyed), nullptr, false);
    bus.PostNotify(kChannel, nullptr, nullptr, false);
    bus.PostNotify(kChannel, new CountedData("p2", destroyed), nullptr, true);
    EXPECT_TRUE(calls.empty());
    // Posted from a posted delivery: served later in the same run.
    a.action = [&](std::string_view event)
    {
        if (event == "p1")
            bus.PostNotify(kChannel, new CountedData("p3", destroyed), nullptr, false);
    };
    WindowSystem::Get().RunUntilIdle();
    EXPECT_EQ(calls, (Calls{"a:p1", "a:p2", "a:p3"}));
    EXPECT_EQ(destroyed, 3);

    {
        sn::NotifyManager doomed;
        doomed.Register(kChannel, b.Delegate());
        doomed.PostNotify(kChannel, new CountedData("lost", destroyed), nullptr, false);
    }
    EXPECT_EQ(destroyed, 4);
    WindowSystem::Get().RunUntilIdle();
    EXPECT_EQ(calls.size(), 3u);
}
