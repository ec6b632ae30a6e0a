// A change that needs a read-only work-unit file asks the user first: declined, nothing changes
// and the host reports the abort on "SourceControl"; accepted, the file becomes writable.

#include "host/Undo.h"
#include "sonarium/app/session/AppSession.h"
#include "sonarium/core/host/ProjectBuilder.h"
#include "sonarium/core/model/ModelNotify.h"
#include "sonarium/core/model/ProjectEdit.h"
#include "sonarium/core/storage/ProjectStorage.h"
#include "sonarium/ui/dialogs/ScriptedDialogService.h"

#include <gtest/gtest.h>

#include <unistd.h>

namespace
{
namespace fs = std::filesystem;

class ReadOnlyFile : public testing::Test
{
protected:
    void SetUp() override
    {
        fs::remove_all(m_dir);
        auto project = sn::ProjectBuilder::Build(
            L"Game", L"AudioObjects\n  Props : WorkUnit\n    Door : SoundSFX\n  Ambience : WorkUnit\n    Rain : SoundSFX\n",
            nullptr);
        sn::StorageProblems problems;
        ASSERT_TRUE(sn::SaveProjectAs(*project, m_dir / "Game", problems));
        std::vector<std::wstring> messages;
        ASSERT_TRUE(m_session.OpenProject(m_dir / "Game", messages));
        ASSERT_TRUE(sn::WritableFiles::SetReadOnly(Props(), true));
        INotifyMgr::m_pInstance->Register(sn::notify::chSourceControl, NotifyDelegate(this, &ReadOnlyFile::OnNotify));
    }
    void TearDown() override
    {
        INotifyMgr::m_pInstance->UnRegister(sn::notify::chSourceControl,
                                            NotifyDelegate(this, &ReadOnlyFile::OnNotify));
        EXPECT_EQ(m_dialogs.UnansweredCount(), 0u);
        EXPECT_EQ(m_dialogs.PendingAnswers(), 0u);
        sn::WritableFiles::SetReadOnly(Props(), false);
        fs::remove_all(m_dir);
    }

    void OnNotify(CNotifyItemBase* item) { m_heard.push_back(item->pData->event.c_str()); }

    fs::path Props() const { return m_dir / "Game" / "AudioObjects" / "Props.swu"; }
    sn::ProjectObject* At(const wchar_t* path) { return sn::FindByPath(*m_session.GetProject(), path); }

    fs::path m_dir = fs::temp_directory_path() / ("sonarium-read-only-" + std::to_string(getpid()));
    sn::AppSession m_session{sn::HostOptions{m_dir / "preferences.json"}};
    sn::ScriptedDialogService m_dialogs;
    sn::ScopedDialogService m_install{&m_dialogs};
    std::vector<std::string> m_heard;
};
} // namespace

TEST_F(ReadOnlyFile, IsMadeWritableOnlyWhenTheUserAgrees)
{
    sn::ProjectObject* door = At(L"AudioObjects/Props/Door");
    m_dialogs.AnswerMessageBox(IDNO);
    EXPECT_FALSE(sn::ProjectEdit::Rename(door, L"Gate"));
    EXPECT_EQ(door->GetName(), L"Door");
    EXPECT_FALSE(door->OwningWorkUnit()->IsDirty());
    EXPECT_FALSE(m_session.GetHost().Undo().CanUndo());
    EXPECT_TRUE(sn::WritableFiles::IsReadOnly(Props()));
    EXPECT_EQ(m_heard, std::vector<std::string>{"SourceControlAborted"});
    ASSERT_EQ(m_dialogs.Records().size(), 1u);
    EXPECT_EQ(m_dialogs.Records()[0].caption, L"Read-Only File");
    EXPECT_NE(m_dialogs.Records()[0].text.find(L"\"AudioObjects/Props.swu\" is read-only"), std::wstring::npos);

    // Within one command the file declined is not asked about again; a file that is writable never is.
    {
        AutoComplexUndo step(L"Several", false);
        m_dialogs.AnswerMessageBox(IDNO);
        EXPECT_FALSE(sn::ProjectEdit::Create(door->Parent(), PMTreeNode::SoundSFX, L"Window"));
        sn::ProjectEdit::SetColor(door, 3);
        EXPECT_TRUE(sn::ProjectEdit::Rename(At(L"AudioObjects/Ambience/Rain"), L"Drizzle"));
    }
    EXPECT_EQ(m_dialogs.Records().size(), 2u);
    EXPECT_EQ(door->GetColor(), -1);
    EXPECT_EQ(m_heard.size(), 3u);

    // The next command asks again; agreed, the file is writable and the change is saved.
    m_dialogs.AnswerMessageBox(IDYES);
    EXPECT_TRUE(sn::ProjectEdit::Rename(door, L"Gate"));
    EXPECT_FALSE(sn::WritableFiles::IsReadOnly(Props()));
    std::vector<std::wstring> messages;
    EXPECT_TRUE(m_session.SaveProject(messages));
    EXPECT_TRUE(messages.empty());
    EXPECT_EQ(m_dialogs.Records().size(), 3u);
}
