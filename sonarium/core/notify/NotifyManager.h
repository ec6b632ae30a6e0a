#pragma once
// The host's notification bus: synchronous delivery by channel, and posted delivery through
// the window system's queue so that a notification raised deep inside an operation reaches
// its subscribers once the operation has returned to the message loop.

#include "host/NotifyMgr.h"
#include "sonarium/core/notify/SubscriberSlots.h"

#include <cstddef>
#include <deque>
#include <memory>
#include <unordered_map>

namespace sn
{
class NotifyManager : public INotifyMgr
{
public:
    NotifyManager();
    NotifyManager(const NotifyManager&) = delete;
    NotifyManager& operator=(const NotifyManager&) = delete;
    ~NotifyManager() override;

    void Notify(ROString const& channel, NotifyData& data) override;
    void Register(ROString const& channel, NotifyDelegate const& subscriber) override;
    void UnRegister(ROString const& channel, NotifyDelegate const& subscriber) override;
    // Context and flag are accepted for the callers' sake; delivery does not depend on them.
    void PostNotify(ROString const& channel, NotifyData* data, void* context, bool flag) override;

    size_t SubscriberCount(ROString const& channel) const;
    size_t PendingCount() const { return m_pending.size(); }

private:
    class PostWindow;

    struct Channel
    {
        SubscriberSlots<NotifyDelegate> slots;
        int depth = 0;
    };

    struct Pending
    {
        ROString channel;
        std::unique_ptr<NotifyData> data;
    };

    void DeliverNextPending();

    // Entries are never erased, so a channel stays in place while it is being delivered.
    std::unordered_map<ROString, Channel> m_channels;
    std::deque<Pending> m_pending;
    std::unique_ptr<PostWindow> m_window;
};
} // namespace sn
