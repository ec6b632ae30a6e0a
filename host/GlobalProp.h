#pragma once
// The host's global properties: a tree of named, typed values with change handlers.

#include "host/Delegate.h"
#include "host/Guid.h"
#include "host/ROString.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

class CProp;

// A change handler: (object, member function); the flag is 1 for handlers made this way.
class PropFuncPtrType : public MemberDelegate<CProp&>
{
public:
    template <class T>
    PropFuncPtrType(T* object, void (T::*member)(CProp&)) : MemberDelegate<CProp&>(object, member)
    {
    }
    int m_flag = 1;
};

class CProp
{
public:
    using Value = std::variant<std::monostate, long long, std::wstring, GUID>;

    CProp() = default;
    CProp(const CProp&) = delete;
    CProp& operator=(const CProp&) = delete;

    // The child property of that name, created empty on first use.
    CProp& operator[](ROString const& name);
    // The child property for writing; the arguments (3, 1) ask for a writable integer.
    CProp& Prop(ROString const& name, unsigned long kind, unsigned long access);

    void Register(PropFuncPtrType const& handler, bool callNow);
    void UnRegister(PropFuncPtrType const& handler);

    long long GetInt() const;
    operator long long() const { return GetInt(); }
    std::wstring GetString() const;
    GUID GetGUID() const;
    Value const& GetValue() const { return m_value; }

    // Stores the value and, when it changed, calls every handler.
    void SetValue(Value value);
    CProp& operator=(long long value);

private:
    void FireChanged();

    Value m_value;
    // Handlers removed during a call are emptied, and compacted when the outermost call ends.
    std::vector<std::optional<PropFuncPtrType>> m_handlers;
    std::map<ROString, std::unique_ptr<CProp>> m_children;
    int m_firing = 0;
};

class GlobalPropMgr
{
public:
    static CProp* m_pInstance; // the global property set; null outside a running host
};

// Raises an integer global property by one for the guard's lifetime and lowers it on every way
// out: "LockUIUpdate" around an operation that changes many objects, so that views rebuild once.
class ScopedGlobalPropRaise
{
public:
    explicit ScopedGlobalPropRaise(ROString const& name)
        : m_prop(GlobalPropMgr::m_pInstance ? &GlobalPropMgr::m_pInstance->Prop(name, 3, 1) : nullptr)
    {
        if (m_prop)
            *m_prop = m_prop->GetInt() + 1;
    }
    ~ScopedGlobalPropRaise()
    {
        if (m_prop)
            *m_prop = m_prop->GetInt() - 1;
    }
    ScopedGlobalPropRaise(const ScopedGlobalPropRaise&) = delete;
    ScopedGlobalPropRaise& operator=(const ScopedGlobalPropRaise&) = delete;

private:
    CProp* m_prop;
};
