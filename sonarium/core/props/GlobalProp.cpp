#include "host/GlobalProp.h"

#include "sonarium/core/notify/SubscriberSlots.h"

CProp* GlobalPropMgr::m_pInstance = nullptr;

CProp& CProp::operator[](ROString const& name)
{
    std::unique_ptr<CProp>& child = m_children[name];
    if (!child)
        child = std::make_unique<CProp>();
    return *child;
}

CProp& CProp::Prop(ROString const& name, unsigned long kind, unsigned long access)
{
    // Every property holds any kind of value and is writable, so the request needs no check.
    return (*this)[name];
}

void CProp::Register(PropFuncPtrType const& handler, bool callNow)
{
    if (!handler)
        return;
    sn::AddSubscriber(m_handlers, handler);
    if (callNow)
        handler(*this);
}

void CProp::UnRegister(PropFuncPtrType const& handler)
{
    sn::RemoveSubscriber(m_handlers, m_firing, handler);
}

long long CProp::GetInt() const
{
    const long long* value = std::get_if<long long>(&m_value);
    return value ? *value : 0;
}

std::wstring CProp::GetString() const
{
    const std::wstring* value = std::get_if<std::wstring>(&m_value);
    return value ? *value : std::wstring();
}

GUID CProp::GetGUID() const
{
    const GUID* value = std::get_if<GUID>(&m_value);
    return value ? *value : GUID_NULL;
}

void CProp::SetValue(Value value)
{
    if (value == m_value)
        return;
    m_value = std::move(value);
    FireChanged();
}

CProp& CProp::operator=(long long value)
{
    SetValue(Value(value));
    return *this;
}

void CProp::FireChanged()
{
    sn::CallSubscribers(m_handlers, m_firing, *this);
}
