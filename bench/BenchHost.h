#pragma once
// A reference host with a generated project and one explorer view over every category, kept
// alive across the iterations of a benchmark.

#include "explorer/DlgProjectExplorer.h"
#include "sonarium/core/host/Host.h"

#include <cstddef>
#include <filesystem>
#include <memory>
#include <vector>

class BenchHost
{
public:
    // A project of objectCount objects; the view is built and loaded with nothing expanded
    // below the roots.
    explicit BenchHost(size_t objectCount);
    ~BenchHost();
    BenchHost(BenchHost const&) = delete;
    BenchHost& operator=(BenchHost const&) = delete;

    DlgProjectExplorer& View() { return *m_view; }
    sn::Host& Host() { return *m_host; }
    PETreeCtrl& Tree() { return m_view->GetTreeCtrl(); }
    size_t ObjectCount() const { return m_objectCount; }
    sn::Host& HostRef() { return *m_host; }

    // Marks nodes expanded, breadth first from the roots, until about `shown` nodes would be
    // shown; returns the number of nodes marked.
    size_t ExpandUntilShown(size_t shown);
    // Marks the first `count` nodes with children expanded, breadth first.
    size_t ExpandNodes(size_t count);
    // GUIDs of the items in the tree now.
    std::vector<GUID> ShownGuids();
    // Bytes the heap holds now.
    static size_t HeapInUse();
    // Reads through a buffer larger than the processor's caches, so that what the next
    // iteration touches comes from memory, as after a user's pause, and not from the cache the
    // previous iteration left warm (which favours small projects, whose shown part fits).
    static void EvictCaches();

private:
    std::filesystem::path m_dir;
    std::unique_ptr<sn::Host> m_host;
    CWnd m_main;
    DlgProjectExplorer* m_view = nullptr;
    size_t m_objectCount;
};
