#pragma once
// Owning reference to a reference-counted host object (intrusive AddRef/Release).

#include <cstddef>
#include <utility>

template <class T>
class CSmartPtr
{
public:
    CSmartPtr() = default;
    CSmartPtr(std::nullptr_t) {}
    // Takes a new reference.
    CSmartPtr(T* p) : m_p(p)
    {
        if (m_p)
            m_p->AddRef();
    }
    CSmartPtr(const CSmartPtr& other) : CSmartPtr(other.m_p) {}
    CSmartPtr(CSmartPtr&& other) noexcept : m_p(std::exchange(other.m_p, nullptr)) {}
    ~CSmartPtr() { Release(); }

    CSmartPtr& operator=(const CSmartPtr& other)
    {
        CSmartPtr(other).Swap(*this);
        return *this;
    }
    CSmartPtr& operator=(CSmartPtr&& other) noexcept
    {
        CSmartPtr(std::move(other)).Swap(*this);
        return *this;
    }
    CSmartPtr& operator=(T* p)
    {
        CSmartPtr(p).Swap(*this);
        return *this;
    }

    // Adopts a reference the caller already holds (as returned by a lookup).
    void Attach(T* p)
    {
        Release();
        m_p = p;
    }
    // Gives up ownership without releasing.
    T* Detach() { return std::exchange(m_p, nullptr); }

    void Release()
    {
        if (T* p = std::exchange(m_p, nullptr))
            p->Release();
    }

    T* Get() const { return m_p; }
    T* operator->() const { return m_p; }
    T& operator*() const { return *m_p; }
    operator T*() const { return m_p; }
    explicit operator bool() const { return m_p != nullptr; }

    void Swap(CSmartPtr& other) noexcept { std::swap(m_p, other.m_p); }

private:
    T* m_p = nullptr;
};
