#include "sonarium/core/notify/NotifyManager.h"

#include "platform/WindowSystem.h"
#include "platform/Wnd.h"

INotifyMgr* INotifyMgr::m_pInstance = nullptr;

namespace sn
{
namespace
{
// One message per posted notification; the notification itself waits in the manager.
constexpr UINT WM_DELIVER_POSTED = WM_APP + 1;
} // namespace

class NotifyManager::PostWindow : public CWnd
{
public:
    explicit PostWindow(NotifyManager& owner) : m_owner(owner) {}

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message != WM_DELIVER_POSTED)
            return CWnd::WindowProc(message, wParam, lParam);
        m_owner.DeliverNextPending();
        return 0;
    }

private:
    NotifyManager& m_owner;
};

NotifyManager::NotifyManager() : m_window(std::make_unique<PostWindow>(*this))
{
    m_window->Create(nullptr, L"", 0, RECT{}, nullptr, 0);
}

NotifyManager::~NotifyManager()
{
    // The window goes first so that no queued message reaches a half-destroyed manager.
    m_window->DestroyWindow();
    m_window.reset();
    m_pending.clear();
}

void NotifyManager::Notify(ROString const& channel, NotifyData& data)
{
    auto it = m_channels.find(channel);
    if (it == m_channels.end())
        return;
    CNotifyItemBase item;
    item.channel = channel;
    item.pData = &data;
    CallSubscribers(it->second.slots, it->second.depth, &item);
}

void NotifyManager::Register(ROString const& channel, NotifyDelegate const& subscriber)
{
    if (subscriber)
        AddSubscriber(m_channels[channel].slots, subscriber);
}

void NotifyManager::UnRegister(ROString const& channel, NotifyDelegate const& subscriber)
{
    auto it = m_channels.find(channel);
    if (it != m_channels.end())
        RemoveSubscriber(it->second.slots, it->second.depth, subscriber);
}

void NotifyManager::PostNotify(ROString const& channel, NotifyData* data, void* context, bool flag)
{
    if (!data)
        return;
    m_pending.push_back(Pending{channel, std::unique_ptr<NotifyData>(data)});
    m_window->PostMessage(WM_DELIVER_POSTED);
}

void NotifyManager::DeliverNextPending()
{
    if (m_pending.empty())
        return;
    // Taken off the queue first: a subscriber may post again, or run the queue itself.
    Pending next = std::move(m_pending.front());
    m_pending.pop_front();
    Notify(next.channel, *next.data);
}

size_t NotifyManager::SubscriberCount(ROString const& channel) const
{
    auto it = m_channels.find(channel);
    return it == m_channels.end() ? 0 : CountSubscribers(it->second.slots);
}
} // namespace sn
