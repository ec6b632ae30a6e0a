// The flat GUID table against a std::map kept alongside: every answer must agree through
// growth, erasures that shift probe runs, and purges.

#include "host/GuidTable.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <vector>

namespace
{
struct Entry
{
    GUID id;
    int value = 0; // 0: empty
};

struct Traits
{
    static GUID const& Key(const Entry& entry) { return entry.id; }
    static bool IsEmpty(const Entry& entry) { return entry.value == 0; }
};

using Table = GuidTable<Entry, Traits>;

GUID MakeGuid(std::mt19937_64& engine)
{
    GUID id;
    const uint64_t a = engine(), b = engine();
    id.Data1 = static_cast<uint32_t>(a);
    id.Data2 = static_cast<uint16_t>(a >> 32);
    id.Data3 = static_cast<uint16_t>(a >> 48);
    for (int i = 0; i < 8; ++i)
        id.Data4[i] = static_cast<uint8_t>(b >> (8 * i));
    return id;
}

void ExpectSame(const Table& table, const std::map<GUID, int, GUIDLess>& expected,
                const std::vector<GUID>& ids)
{
    ASSERT_EQ(expected.size(), table.Size());
    for (const GUID& id : ids)
    {
        const Entry* found = table.Find(id);
        auto it = expected.find(id);
        ASSERT_EQ(it != expected.end(), found != nullptr);
        if (found)
        {
            EXPECT_EQ(it->second, found->value);
        }
    }
    size_t visited = 0;
    table.ForEach(
        [&](const Entry& entry)
        {
            ++visited;
            EXPECT_EQ(expected.at(entry.id), entry.value);
        });
    EXPECT_EQ(expected.size(), visited);
}
} // namespace

TEST(GuidTable, AgreesWithAMapThroughGrowthReplacementAndErasure)
{
    std::mt19937_64 engine(11);
    Table table;
    std::map<GUID, int, GUIDLess> expected;
    std::vector<GUID> ids;
    EXPECT_EQ(nullptr, table.Find(GUID_NULL)) << "an empty table finds nothing";
    EXPECT_FALSE(table.Erase(GUID_NULL));

    for (int i = 1; i <= 3000; ++i)
    {
        ids.push_back(MakeGuid(engine));
        table.Insert({ids.back(), i});
        expected[ids.back()] = i;
    }
    ExpectSame(table, expected, ids);

    // Replacing keeps the count; erasing every third entry moves the runs behind the holes.
    table.Insert({ids[5], -5});
    expected[ids[5]] = -5;
    for (size_t i = 0; i < ids.size(); i += 3)
    {
        EXPECT_TRUE(table.Erase(ids[i]));
        EXPECT_FALSE(table.Erase(ids[i])) << "erased twice";
        expected.erase(ids[i]);
    }
    ExpectSame(table, expected, ids);

    // Refilling the holes must not leave a key twice.
    for (size_t i = 0; i < ids.size(); i += 3)
    {
        table.Insert({ids[i], 7});
        expected[ids[i]] = 7;
    }
    ExpectSame(table, expected, ids);

    // Emptied with its room kept, the table fills again from nothing.
    table.Reset();
    EXPECT_TRUE(table.Empty());
    EXPECT_EQ(nullptr, table.Find(ids[1]));
    table.Insert({ids[1], 9});
    ASSERT_NE(nullptr, table.Find(ids[1]));
    EXPECT_EQ(1u, table.Size());

    table.Clear();
    EXPECT_TRUE(table.Empty());
    EXPECT_EQ(nullptr, table.Find(ids[1]));
}

TEST(GuidTable, KeysSharingAProbeRunStayFoundAfterErasures)
{
    // A small table at its fullest: most keys sit away from their home slot.
    std::mt19937_64 engine(5);
    Table table;
    std::map<GUID, int, GUIDLess> expected;
    std::vector<GUID> ids;
    do
    {
        ids.push_back(MakeGuid(engine));
        table.Insert({ids.back(), static_cast<int>(ids.size())});
        expected[ids.back()] = static_cast<int>(ids.size());
    } while (!table.IsFull());
    ASSERT_GT(ids.size(), 8u);
    for (size_t i = 0; i < ids.size(); i += 2)
    {
        table.Erase(ids[i]);
        expected.erase(ids[i]);
        ExpectSame(table, expected, ids);
    }
}

TEST(GuidTable, PurgingKeepsTheSurvivorsAndRoomForAsManyMore)
{
    std::mt19937_64 engine(3);
    Table table;
    std::map<GUID, int, GUIDLess> expected;
    std::vector<GUID> ids;
    do
    {
        ids.push_back(MakeGuid(engine));
        table.Insert({ids.back(), static_cast<int>(ids.size())});
    } while (!table.IsFull());
    ASSERT_GT(ids.size(), 8u);
    // Dropping only one entry of a full table: it must not be full again after one insert.
    table.EraseIf([&](const Entry& entry) { return entry.id == ids[0]; });
    for (size_t i = 1; i < ids.size(); ++i)
        expected[ids[i]] = static_cast<int>(i + 1);
    ExpectSame(table, expected, ids);
    for (size_t added = 0; added < expected.size(); ++added)
    {
        EXPECT_FALSE(table.IsFull()) << "after " << added << " inserts";
        table.Insert({MakeGuid(engine), 1});
    }

    // Dropping most entries keeps exactly the others.
    table.EraseIf([](const Entry& entry) { return entry.value != 2 && entry.value != 3; });
    ASSERT_EQ(2u, table.Size());
    EXPECT_EQ(2, table.Find(ids[1])->value);
    EXPECT_EQ(3, table.Find(ids[2])->value);
    EXPECT_EQ(nullptr, table.Find(ids[3]));
}
