#include "host/ROString.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

ROString InternedInLibraryA();
ROString InternedInLibraryB();

TEST(ROString, EqualTextsAreOneValueAcrossLibrariesAndThreads)
{
    // Two libraries interned the text during their own static initialisation.
    EXPECT_EQ(InternedInLibraryA(), InternedInLibraryB());
    EXPECT_EQ(InternedInLibraryA().c_str(), InternedInLibraryB().c_str());
    EXPECT_EQ(InternedInLibraryA(), ROString("SharedChannel"));
    EXPECT_NE(InternedInLibraryA(), ROString("SharedChannel2"));

    std::vector<const char*> seen(8);
    std::vector<std::thread> threads;
    for (size_t i = 0; i < seen.size(); ++i)
        threads.emplace_back([&seen, i] {
            for (int k = 0; k < 1000; ++k)
                ROString("scratch" + std::to_string(k));
            seen[i] = ROString("Concurrent").c_str();
        });
    for (auto& t : threads)
        t.join();
    for (const char* p : seen)
        EXPECT_EQ(p, seen.front());
}

TEST(ROString, EmptyTextIsTheDefaultValue)
{
    EXPECT_EQ(ROString(""), ROString());
    EXPECT_EQ(ROString(static_cast<const char*>(nullptr)), ROString());
    EXPECT_TRUE(ROString().empty());
    EXPECT_STREQ(ROString().c_str(), "");
}
