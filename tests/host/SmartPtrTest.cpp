#include "host/SmartPtr.h"

#include <gtest/gtest.h>

namespace
{
struct Counted
{
    mutable int refs = 1; // the creator's reference
    void AddRef() const { ++refs; }
    void Release() const { --refs; }
};
} // namespace

TEST(SmartPtr, ReferencesBalanceThroughCopiesMovesAndAttach)
{
    Counted object;
    {
        CSmartPtr<Counted> a(&object);
        EXPECT_EQ(object.refs, 2);
        CSmartPtr<Counted> b = a;
        EXPECT_EQ(object.refs, 3);
        CSmartPtr<Counted> c = std::move(b);
        EXPECT_EQ(object.refs, 3);
        EXPECT_FALSE(b);
        c = a; // self-equivalent assignment keeps the count
        EXPECT_EQ(object.refs, 3);
        c = nullptr;
        EXPECT_EQ(object.refs, 2);
    }
    EXPECT_EQ(object.refs, 1);

    object.AddRef(); // as a lookup would hand it over
    {
        CSmartPtr<Counted> adopted;
        adopted.Attach(&object);
        EXPECT_EQ(object.refs, 2);
    }
    EXPECT_EQ(object.refs, 1);
}
