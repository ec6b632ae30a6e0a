#pragma once
// Storage problems as one block of text, for test failure messages.

#include "host/Utf8.h"
#include "sonarium/core/storage/StorageProblem.h"

#include <string>

inline std::string Problems(const sn::StorageProblems& problems)
{
    std::string text;
    for (const sn::StorageProblem& problem : problems)
        text += Utf8::FromWide(problem.Text()) + "\n";
    return text;
}
