#include "sonarium/core/storage/SaveJournal.h"

#include "sonarium/core/storage/FileIO.h"
#include "sonarium/core/storage/StorageJson.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <unistd.h>

namespace sn::SaveJournal
{
namespace
{
namespace fs = std::filesystem;
using storage::Json;

constexpr const char* kJournalName = ".sonarium-save.json";
constexpr const char* kFormat = "sonarium-save-journal";

fs::path JournalOf(const fs::path& folder)
{
    return folder / kJournalName;
}

std::string HashText(uint64_t hash)
{
    char text[20];
    std::snprintf(text, sizeof(text), "%016llx", static_cast<unsigned long long>(hash));
    return text;
}

// Paths are kept relative to the project's folder, so that a folder moved after a crash still
// recovers.
fs::path Inside(const fs::path& folder, const std::string& relative)
{
    const fs::path path = (folder / relative).lexically_normal();
    if (fs::path(relative).is_absolute() || path.lexically_relative(folder).string().starts_with(".."))
        throw storage::FormatError("path " + relative + " is outside the project's folder");
    return path;
}

bool ProcessRuns(long process)
{
    return process > 0 && (::kill(static_cast<pid_t>(process), 0) == 0 || errno == EPERM);
}
} // namespace

bool Write(const fs::path& folder, const fs::path& projectFile, uint64_t projectHash,
           const std::vector<Rename>& renames, std::string& error)
{
    Json document = storage::Header(kFormat);
    document["projectFile"] = projectFile.lexically_relative(folder).string();
    document["projectHash"] = HashText(projectHash);
    Json list = Json::array();
    for (const Rename& rename : renames)
        list.push_back(Json{{"staged", rename.staged.lexically_relative(folder).string()},
                            {"target", rename.target.lexically_relative(folder).string()}});
    document["renames"] = std::move(list);
    return FileIO::WriteAtomically(JournalOf(folder), storage::Dump(document), error);
}

void Remove(const fs::path& folder)
{
    std::error_code ec;
    fs::remove(JournalOf(folder), ec);
}

void Recover(const fs::path& folder, StorageProblems& problems)
{
    const fs::path journal = JournalOf(folder);
    std::error_code ec;
    if (!fs::exists(journal, ec))
        return;
    std::string bytes, error;
    std::vector<Rename> renames;
    fs::path projectFile;
    std::string projectHash;
    try
    {
        if (!FileIO::ReadFile(journal, bytes, error))
            throw storage::FormatError(error);
        const Json document = storage::Parse(bytes);
        storage::CheckHeader(document, kFormat);
        projectFile = Inside(folder, storage::StringMember(document, "projectFile"));
        projectHash = storage::StringMember(document, "projectHash");
        for (const Json& item : storage::ArrayMember(document, "renames"))
            renames.push_back({Inside(folder, storage::StringMember(item, "staged")),
                               Inside(folder, storage::StringMember(item, "target"))});
    }
    catch (const std::exception& failure)
    {
        // Left for the user to look at: it may name the only copy of new content.
        problems.push_back({journal, std::string("cannot finish the save it describes: ") + failure.what()});
        return;
    }

    std::string project;
    const bool committed =
        FileIO::ReadFile(projectFile, project, error) && HashText(FileIO::ContentHash(project)) == projectHash;
    bool complete = true;
    for (const Rename& rename : renames)
    {
        if (!fs::exists(rename.staged, ec))
            continue; // renamed before the save was cut short
        if (committed && !FileIO::PutInPlace(rename.staged, rename.target, error))
        {
            problems.push_back({rename.target, "cannot finish a save that was cut short: " + error});
            complete = false;
        }
        else if (!committed)
            fs::remove(rename.staged, ec);
    }
    if (!complete)
        return;
    Remove(folder);
    problems.push_back({projectFile, committed ? "a save that was cut short has been completed"
                                               : "a save that was cut short has been undone; the files "
                                                 "are as they were before it"});
}

void RemoveLeftovers(const std::vector<fs::path>& folders)
{
    const long self = static_cast<long>(::getpid());
    for (const fs::path& folder : folders)
    {
        std::error_code ec;
        for (const fs::directory_entry& entry : fs::directory_iterator(folder, ec))
        {
            long process = 0;
            if (!FileIO::IsTemporaryName(entry.path().filename().string(), &process))
                continue;
            // This process writes nothing while it saves; another one that still runs might.
            if (process == self || !ProcessRuns(process))
                fs::remove(entry.path(), ec);
        }
    }
}
} // namespace sn::SaveJournal
