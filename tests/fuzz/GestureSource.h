#pragma once
// Random but legal user gestures and host actions, as script lines, chosen from what the session
// shows now: rows that are in the tree, panes that are open, files that exist (and some that
// are not audio). The same seed over the same project gives the same lines.

#include "sonarium/app/session/AppSession.h"

#include <filesystem>
#include <random>
#include <string>
#include <vector>

namespace fuzz
{
struct DropFiles
{
    std::vector<std::filesystem::path> audio; // files libsndfile reads
    std::vector<std::filesystem::path> bad;   // not audio, truncated, a folder, missing
};

class GestureSource
{
public:
    GestureSource(sn::AppSession& session, uint64_t seed, DropFiles files, std::filesystem::path project);

    // The next line; answers and menu choices it needs come first, as separate lines.
    std::vector<std::wstring> Next();
    // Lines that bring the session back to rest before the final checks: every raise of the UI
    // lock the lines made is lowered and open label editors are cancelled.
    std::vector<std::wstring> Settle();

private:
    std::wstring Row();
    std::wstring Mods(bool alt = false);
    std::wstring Name();
    std::wstring Pick(std::vector<std::wstring> const& words);
    std::wstring PaneName();
    std::wstring File();
    bool Chance(int percent);
    std::vector<std::wstring> Gesture();
    std::vector<std::wstring> HostAction();
    std::vector<std::wstring> Command();

    sn::AppSession& m_session;
    std::mt19937_64 m_random;
    DropFiles m_files;
    std::filesystem::path m_project;
    std::wstring m_pane; // where gestures go: the pane the last `use` named
    int m_locks = 0;     // raises of the UI lock the lines hold
    int m_extraPanes = 0;
};

// A word of a script line, quoted when it needs to be.
std::wstring Quote(std::wstring const& word);
} // namespace fuzz
