#include "HostFixture.h"

#include "sonarium/core/model/ProjectEdit.h"
#include "sonarium/core/storage/FileIO.h"
#include "sonarium/core/storage/ProjectStorage.h"

#include <map>

using namespace sn;

namespace
{
std::map<std::filesystem::path, std::string> Snapshot(const std::filesystem::path& folder)
{
    std::map<std::filesystem::path, std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder))
        if (entry.is_regular_file())
        {
            std::string bytes, error;
            EXPECT_TRUE(FileIO::ReadFile(entry.path(), bytes, error)) << error;
            files[std::filesystem::relative(entry.path(), folder)] = bytes;
        }
    return files;
}
} // namespace

TEST_F(HostTest, UndoingEverythingThenSavingGivesBackTheOriginalFiles)
{
    Project& built = Open(LR"(
platform Linux
platform Console
AudioObjects
  Default Work Unit : WorkUnit
    Ambience : ActorMixer
      Rain : SoundSFX
  Weapons : PhysicalFolder
    Guns : WorkUnit
      Rifle : SoundSFX
Events
  Default Work Unit : WorkUnit
    Play_Rain : Event
)");
    StorageProblems problems;
    const auto folder = m_dir / "Project";
    ASSERT_TRUE(SaveProjectAs(built, folder, problems));
    OpenResult opened = OpenProject(folder);
    ASSERT_TRUE(opened.project);
    HostRef().SetProject(std::move(opened.project));
    const auto original = Snapshot(folder);

    ProjectObject* ambience = At(L"AudioObjects/Default Work Unit/Ambience");
    ProjectEdit::Create(ambience, PMTreeNode::RandomContainer, L"Drops");
    ProjectEdit::Rename(At(L"AudioObjects/Weapons/Guns"), L"Firearms");
    ProjectEdit::Move(At(L"AudioObjects/Default Work Unit/Ambience/Rain"), At(L"AudioObjects/Weapons/Firearms"));
    ProjectEdit::SetInclusionLinked(ambience, false);
    ProjectEdit::SetIncluded(ambience, HostRef().GetProject()->Platforms()[1].id, false);
    ProjectEdit::SetColor(ambience, 5);
    ProjectEdit::Copy(ambience, At(L"AudioObjects/Default Work Unit"));
    ProjectEdit::Delete(At(L"Events/Default Work Unit/Play_Rain"));
    ASSERT_TRUE(SaveProject(*HostRef().GetProject(), problems));
    EXPECT_NE(original, Snapshot(folder));

    while (HostRef().Undo().Undo())
    {
    }
    ASSERT_TRUE(SaveProject(*HostRef().GetProject(), problems));
    EXPECT_EQ(original, Snapshot(folder));
    EXPECT_TRUE(problems.empty());
}
