#pragma once
// What went wrong with one project file, as the application lists it to the user.

#include "host/StdStr.h"

#include <filesystem>
#include <string>
#include <vector>

namespace sn
{
struct StorageProblem
{
    std::filesystem::path path; // the file concerned
    std::string reason;         // UTF-8, e.g. "line 4, column 9: syntax error ..." or "missing key \"guid\""

    // "<path>: <reason>", ready to show.
    CStdStr<wchar_t> Text() const;
};

using StorageProblems = std::vector<StorageProblem>;
} // namespace sn
