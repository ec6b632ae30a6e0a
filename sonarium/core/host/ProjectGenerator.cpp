#include "sonarium/core/host/ProjectGenerator.h"

#include "sonarium/core/model/NodeRules.h"
#include "sonarium/core/model/ProjectEdit.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <unordered_map>
#include <vector>

namespace sn
{
namespace
{
using N = PMTreeNode;
using NodeType = N::NodeType;
using Category = OrbObjectCategories::Category;

constexpr int kTypeCount = 37;
constexpr size_t kLevels = 8;           // the category's root is the first level
constexpr size_t kObjectsPerUnit = 800; // a work unit a team would still open and review
constexpr size_t kUnitsPerFolder = 12;
constexpr size_t kMaxFanOut = 40;
constexpr size_t kUnlimited = std::numeric_limits<size_t>::max() / 2;

struct Kind
{
    unsigned holderWeight = 0; // how likely the kind is to be picked to hold a subtree
    unsigned leafWeight = 0;   // ... to be picked as a leaf
    size_t most = 24;          // most children it gets
    std::vector<std::wstring> stems;
};

const std::array<Kind, kTypeCount>& Kinds()
{
    static const std::array<Kind, kTypeCount> kinds = []
    {
        std::array<Kind, kTypeCount> k;
        k[N::PhysicalFolder] = {0, 0, 0, {L"Zone", L"Region", L"Chapter"}};
        k[N::WorkUnit] = {0, 0, 0, {L"Level", L"Area", L"Pack", L"Set"}};
        k[N::Folder] = {2, 0, 30, {L"Group", L"Variants", L"Layers", L"Misc"}};
        k[N::ActorMixer] = {
            3, 0, 30, {L"Weapons", L"Creatures", L"Foley", L"Vehicles", L"Props", L"Interface"}};
        k[N::SwitchContainer] = {2, 0, 12, {L"Surface", L"Material", L"Weapon_Select", L"Creature_Size"}};
        k[N::RandomContainer] = {
            4, 0, 16, {L"Impact", L"Whoosh", L"Footstep", L"Debris", L"Ricochet", L"Gust"}};
        k[N::SequenceContainer] = {2, 0, 8, {L"Reload", L"Door_Open", L"Combo", L"Engine_Start"}};
        k[N::BlendContainer] = {1, 0, 6, {L"Engine", L"Wind", L"Crowd", L"Fire"}};
        k[N::SoundSFX] = {6,
                          6,
                          2,
                          {L"Impact", L"Explosion", L"Footstep", L"Whoosh", L"Hit", L"Pickup", L"Door",
                           L"Glass", L"Metal", L"Splash"}};
        k[N::SoundVoice] = {2, 2, 2, {L"VO_Hero", L"VO_Guard", L"VO_Merchant", L"VO_Narrator"}};
        k[N::AudioSource] = {0, 1, 0, {L"Take", L"Recording", L"Layer"}};
        k[N::Bus] = {3, 1, 12, {L"Bus_SFX", L"Bus_Music", L"Bus_Voice", L"Bus_World", L"Bus_Interface"}};
        k[N::AuxBus] = {1, 2, 6, {L"Reverb", L"Delay", L"Echo"}};
        k[N::AudioDevice] = {0, 1, 0, {L"Output", L"Headset"}};
        k[N::EffectPlugin] = {0, 1, 0, {L"Compressor", L"Reverb", L"EQ", L"Delay"}};
        k[N::MixerPlugin] = {0, 1, 0, {L"Mixer"}};
        k[N::Event] = {4,
                       1,
                       4,
                       {L"Play_Impact", L"Play_Footstep", L"Stop_Ambience", L"Play_Explosion", L"Set_Music",
                        L"Play_Voice"}};
        k[N::EventAction] = {0, 1, 0, {L"Play", L"Stop", L"Pause", L"Resume", L"Set_State"}};
        k[N::SwitchGroup] = {1, 0, 12, {L"Surface", L"Weapon", L"Creature_Size"}};
        k[N::Switch] = {0, 1, 0, {L"Grass", L"Stone", L"Wood", L"Metal", L"Water", L"Sand"}};
        k[N::StateGroup] = {1, 0, 8, {L"Gameplay", L"Health", L"Weather"}};
        k[N::State] = {0, 1, 0, {L"Explore", L"Combat", L"Calm", L"Storm", L"Low", L"High"}};
        k[N::GameParameter] = {0, 1, 0, {L"Speed", L"Distance", L"Health", L"Intensity", L"Altitude"}};
        k[N::Trigger] = {0, 1, 0, {L"Stinger", L"Hit_Accent"}};
        k[N::SoundBank] = {0, 1, 0, {L"Bank_Level", L"Bank_Common", L"Bank_Creatures"}};
        k[N::AuditionSession] = {0, 1, 0, {L"Audition"}};
        k[N::MixingSession] = {0, 1, 0, {L"Mix"}};
        k[N::Query] = {0, 1, 0, {L"Query"}};
        k[N::ControlSurfaceSession] = {0, 1, 0, {L"Fader_Layout"}};
        k[N::MusicSwitchContainer] = {2, 0, 8, {L"Music_Zone", L"Music_State"}};
        k[N::MusicPlaylistContainer] = {3, 0, 12, {L"Playlist"}};
        k[N::MusicSegment] = {3, 1, 8, {L"Segment", L"Intro", L"Loop", L"Outro"}};
        k[N::MusicTrack] = {2, 1, 6, {L"Drums", L"Bass", L"Strings", L"Brass", L"Pads", L"Percussion"}};
        k[N::MusicClip] = {0, 1, 0, {L"Clip"}};
        k[N::MusicPlaylistItem] = {0, 1, 0, {L"Sequence"}};
        return k;
    }();
    return kinds;
}

// How much of the project each category gets, relative to the others.
unsigned CategoryWeight(Category category)
{
    switch (category)
    {
    case OrbObjectCategories::AudioObjects:
        return 420;
    case OrbObjectCategories::Events:
        return 230;
    case OrbObjectCategories::Music:
        return 110;
    case OrbObjectCategories::SoundBanks:
        return 40;
    case OrbObjectCategories::Switches:
        return 40;
    case OrbObjectCategories::Busses:
        return 30;
    case OrbObjectCategories::States:
        return 30;
    case OrbObjectCategories::GameParameters:
        return 30;
    default:
        return 10;
    }
}

// What each kind may hold in one category, asked of the structure table through scratch objects.
struct Structure
{
    std::array<std::vector<NodeType>, kTypeCount> children;
    // Most descendants an object of a kind may get with a number of levels below it.
    std::array<std::array<size_t, kLevels + 1>, kTypeCount> capacity{};

    explicit Structure(Category category)
    {
        Project scratch(L"scratch");
        WorkUnitObject* root = scratch.AddRoot(category, NewGuid(), L"scratch");
        for (int type = 1; type < kTypeCount; ++type)
        {
            root->RawInsertChild(0, NewProjectObject(nullptr, NodeType(type), L"probe", GUID_NULL));
            for (int child = 1; child < kTypeCount; ++child)
                if (child != N::WorkUnit && child != N::PhysicalFolder &&
                    ProjectEdit::CanHold(root->Children()[0].Get(), NodeType(child)))
                    children[size_t(type)].push_back(NodeType(child));
            root->RawRemoveChild(0);
        }
        for (size_t levels = 1; levels <= kLevels; ++levels)
            for (size_t type = 0; type < children.size(); ++type)
            {
                size_t below = 0;
                for (NodeType child : children[type])
                    below = std::max(below, capacity[size_t(child)][levels - 1]);
                const size_t most = Kinds()[type].most;
                capacity[type][levels] = most && below >= kUnlimited / most ? kUnlimited : most * (1 + below);
            }
    }

    size_t Capacity(NodeType type, size_t levels) const
    {
        return capacity[size_t(type)][std::min(levels, kLevels)];
    }
};

class Generator
{
public:
    Generator(Project& project, uint32_t seed) : m_project(project), m_random(seed), m_ids(seed) {}

    void Run(size_t objectCount)
    {
        m_project.Platforms() = {
            {NewGuid(m_ids), L"Desktop"}, {NewGuid(m_ids), L"Console"}, {NewGuid(m_ids), L"Mobile"}};
        m_project.Languages() = {{1, L"English"}};
        m_project.SetReferenceLanguage(1);
        const std::vector<Category>& categories = rules::AllCategories();
        std::vector<WorkUnitObject*> roots;
        for (Category category : categories)
            roots.push_back(m_project.AddRoot(category, NewGuid(m_ids), rules::CategoryName(category)));
        const size_t rest = objectCount > roots.size() ? objectCount - roots.size() : 0;

        std::vector<double> weights;
        for (Category category : categories)
            weights.push_back(CategoryWeight(category));
        const std::vector<size_t> budgets = Split(rest, weights);
        for (size_t i = 0; i < categories.size(); ++i)
        {
            Structure structure(categories[i]);
            m_structure = &structure;
            FillCategory(roots[i], budgets[i]);
        }
        m_structure = nullptr;
    }

private:
    // total split in proportion to weights, exactly.
    static std::vector<size_t> Split(size_t total, const std::vector<double>& weights)
    {
        double sum = 0;
        for (double weight : weights)
            sum += weight;
        std::vector<size_t> parts(weights.size(), 0);
        size_t given = 0;
        for (size_t i = 0; i < weights.size(); ++i)
        {
            parts[i] = static_cast<size_t>(static_cast<double>(total) * weights[i] / sum);
            given += parts[i];
        }
        // What rounding left goes to the heaviest parts first.
        std::vector<size_t> order(weights.size());
        for (size_t i = 0; i < order.size(); ++i)
            order[i] = i;
        std::stable_sort(order.begin(), order.end(),
                         [&](size_t a, size_t b) { return weights[a] > weights[b]; });
        for (size_t i = 0; given < total; i = (i + 1) % order.size(), ++given)
            ++parts[order[i]];
        return parts;
    }

    std::vector<size_t> RandomSplit(size_t total, size_t parts)
    {
        std::uniform_real_distribution<double> spread(0.25, 1.75);
        std::vector<double> weights(parts);
        for (double& weight : weights)
            weight = spread(m_random);
        return Split(total, weights);
    }

    void FillCategory(WorkUnitObject* root, size_t budget)
    {
        if (budget == 0)
            return;
        const size_t units = std::max<size_t>(1, budget / kObjectsPerUnit);
        const size_t folders = units > kUnitsPerFolder ? (units + kUnitsPerFolder - 1) / kUnitsPerFolder : 0;
        const std::vector<size_t> contents = RandomSplit(budget - units - folders, units);
        ProjectObject* folder = root;
        for (size_t i = 0; i < units; ++i)
        {
            if (folders && i % kUnitsPerFolder == 0)
                folder = Add(root, N::PhysicalFolder);
            ProjectObject* unit = Add(folder, N::WorkUnit);
            Grow(unit, contents[i], kLevels - (folders ? 3 : 2));
        }
    }

    // Adds exactly budget descendants under parent, at most levels deep.
    void Grow(ProjectObject* parent, size_t budget, size_t levels)
    {
        if (budget == 0 || levels == 0)
            return;
        const std::vector<NodeType>& kinds = m_structure->children[size_t(parent->GetNodeType())];
        bool leavesOnly = levels == 1;
        for (NodeType kind : kinds)
            leavesOnly = leavesOnly && m_structure->children[size_t(kind)].empty();
        if (leavesOnly)
        {
            for (size_t i = 0; i < budget; ++i)
                Add(parent, Choose(kinds, 0, 0));
            return;
        }
        // Fan-out such that the budget would use every level, varied by a random factor.
        std::uniform_real_distribution<double> vary(0.6, 1.8);
        const double fanOut =
            std::pow(static_cast<double>(budget), 1.0 / static_cast<double>(levels)) * vary(m_random);
        size_t count =
            std::clamp<size_t>(static_cast<size_t>(std::lround(fanOut)), 1, std::min(budget, kMaxFanOut));
        // Enough children that the kinds here can hold the budget between them.
        size_t roomiest = 0;
        for (NodeType kind : kinds)
            roomiest = std::max(roomiest, m_structure->Capacity(kind, levels - 1));
        count = std::max(count, (budget + roomiest) / (roomiest + 1));
        size_t carry = 0;
        for (size_t share : RandomSplit(budget - count, count))
            carry += AddSubtree(parent, kinds, share, levels - 1);
        // Shares that no kind here could hold go to further children, each taking one at least.
        while (carry > 0)
            carry = AddSubtree(parent, kinds, carry - 1, levels - 1);
    }

    // A child with up to share descendants; returns the part of share it could not take.
    size_t AddSubtree(ProjectObject* parent, const std::vector<NodeType>& kinds, size_t share, size_t levels)
    {
        const NodeType kind = Choose(kinds, share, levels);
        const size_t taken = std::min(share, m_structure->Capacity(kind, levels));
        Grow(Add(parent, kind), taken, levels);
        return share - taken;
    }

    // A kind able to hold share descendants, by weight; the most capacious one when none can.
    NodeType Choose(const std::vector<NodeType>& kinds, size_t share, size_t levels)
    {
        unsigned total = 0;
        NodeType roomiest = kinds.front();
        for (NodeType kind : kinds)
        {
            if (m_structure->Capacity(kind, levels) > m_structure->Capacity(roomiest, levels))
                roomiest = kind;
            if (m_structure->Capacity(kind, levels) >= share)
                total += Weight(kind, share);
        }
        if (total == 0)
            return roomiest;
        unsigned pick = std::uniform_int_distribution<unsigned>(0, total - 1)(m_random);
        for (NodeType kind : kinds)
            if (m_structure->Capacity(kind, levels) >= share)
            {
                const unsigned weight = Weight(kind, share);
                if (pick < weight)
                    return kind;
                pick -= weight;
            }
        return roomiest;
    }

    static unsigned Weight(NodeType kind, size_t share)
    {
        const Kind& info = Kinds()[size_t(kind)];
        return share > 0 ? info.holderWeight : info.leafWeight;
    }

    ProjectObject* Add(ProjectObject* parent, NodeType type)
    {
        ProjectObject* object = NewProjectObject(&m_project, type, NextName(type), NewGuid(m_ids));
        parent->RawInsertChild(parent->Children().size(), object);
        m_project.Index(object);
        return object;
    }

    // "Impact_0042": a stem of the kind and that stem's own counter, so that names do not repeat.
    std::wstring NextName(NodeType type)
    {
        const std::vector<std::wstring>& stems = Kinds()[size_t(type)].stems;
        static const std::wstring plain = L"Object";
        const std::wstring& stem =
            stems.empty() ? plain
                          : stems[std::uniform_int_distribution<size_t>(0, stems.size() - 1)(m_random)];
        const std::wstring number = std::to_wstring(++m_counters[stem]);
        std::wstring name;
        name.reserve(stem.size() + 1 + std::max<size_t>(4, number.size()));
        name.append(stem)
            .append(1, L'_')
            .append(number.size() < 4 ? 4 - number.size() : 0, L'0')
            .append(number);
        return name;
    }

    Project& m_project;
    std::mt19937 m_random;
    std::mt19937_64 m_ids;
    const Structure* m_structure = nullptr;
    std::unordered_map<std::wstring, unsigned> m_counters;
};
} // namespace

std::unique_ptr<Project> GenerateProject(size_t objectCount, uint32_t seed)
{
    auto project = std::make_unique<Project>(L"Generated");
    Generator(*project, seed).Run(objectCount);
    return project;
}
} // namespace sn
