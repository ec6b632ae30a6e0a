#pragma once
// A subscriber as the host's buses and properties know it: an object and one of its
// member functions. Two delegates are equal when both the object and the member
// function are the same, which is how a subscriber is found again to unsubscribe it.

#include <cstring>
#include <type_traits>

template <typename Arg>
class MemberDelegate
{
public:
    MemberDelegate() = default;

    template <class T>
    MemberDelegate(T* object, void (T::*member)(Arg)) : m_object(object), m_invoke(&Invoke<T>)
    {
        static_assert(sizeof(member) <= sizeof(m_member), "member function pointer too large");
        std::memcpy(m_member, &member, sizeof(member));
    }

    void operator()(Arg arg) const
    {
        if (m_invoke)
            m_invoke(*this, arg);
    }

    void* Object() const { return m_object; }
    explicit operator bool() const { return m_invoke != nullptr; }

    friend bool operator==(const MemberDelegate& a, const MemberDelegate& b)
    {
        return a.m_object == b.m_object && a.m_invoke == b.m_invoke &&
               std::memcmp(a.m_member, b.m_member, sizeof(a.m_member)) == 0;
    }

private:
    template <class T>
    static void Invoke(const MemberDelegate& self, Arg arg)
    {
        void (T::*member)(Arg);
        std::memcpy(&member, self.m_member, sizeof(member));
        (static_cast<T*>(self.m_object)->*member)(arg);
    }

    void* m_object = nullptr;
    void (*m_invoke)(const MemberDelegate&, Arg) = nullptr;
    alignas(void*) unsigned char m_member[2 * sizeof(void*)] = {};
};
