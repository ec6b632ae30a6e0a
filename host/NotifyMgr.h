#pragma once
// The host's notification bus: named channels, each event named by an ROString.

#include "host/Delegate.h"
#include "host/ROString.h"

class NotifyData
{
public:
    NotifyData() = default;
    explicit NotifyData(ROString e) : event(e) {}
    virtual ~NotifyData() = default;

    ROString event;
};

// What a subscriber receives.
class CNotifyItemBase
{
public:
    ROString channel;
    NotifyData* pData = nullptr; // may be null
};

using NotifyDelegate = MemberDelegate<CNotifyItemBase*>;

class INotifyMgr
{
public:
    // Null when the host runs without a bus; callers then skip every call.
    static INotifyMgr* m_pInstance;

    // Delivers synchronously to every subscriber of the channel.
    virtual void Notify(ROString const& channel, NotifyData& data) = 0;
    virtual void Register(ROString const& channel, NotifyDelegate const& subscriber) = 0;
    virtual void UnRegister(ROString const& channel, NotifyDelegate const& subscriber) = 0;
    // Delivers later, from the UI message loop; takes ownership of data.
    virtual void PostNotify(ROString const& channel, NotifyData* data, void* context, bool flag) = 0;

protected:
    virtual ~INotifyMgr() = default;
};
