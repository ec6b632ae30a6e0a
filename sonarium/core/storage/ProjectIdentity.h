#pragma once
// The project's identity in its project file: key "id", a GUID that stays with the project when
// it is renamed or moved. A project file written before projects had one gets a GUID derived from
// where the file is, the same at every opening, until a save writes it down.

#include "sonarium/core/model/Project.h"
#include "sonarium/core/storage/StorageJson.h"

#include <filesystem>

namespace sn::storage
{
// Throws FormatError when "id" is there but is not a GUID.
void ReadProjectIdentity(const Json& document, const std::filesystem::path& projectFile, Project& project);
void WriteProjectIdentity(Json& document, const Project& project);
} // namespace sn::storage
