#pragma once
// A session of the sample project with the default panes, its preferences in a file of the
// running test's own, since ctest runs tests side by side.

#include "sonarium/app/session/AppSession.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <unistd.h>

class SessionTest : public testing::Test
{
protected:
    void SetUp() override
    {
        std::vector<std::wstring> messages;
        ASSERT_TRUE(session.OpenProject(SONARIUM_SAMPLES_DIR "/Demo", messages));
        for (sn::PaneDefinition const& definition : sn::DefaultPanes())
            session.OpenPane(definition, CRect(0, 0, 300, 600));
    }

    void TearDown() override
    {
        session.CloseAllPanes();
        std::filesystem::remove(preferences);
    }

    static std::filesystem::path PrivateFile(std::string const& extension)
    {
        const testing::TestInfo* test = testing::UnitTest::GetInstance()->current_test_info();
        return std::filesystem::temp_directory_path() /
               ("sonarium-" + std::string(test->test_suite_name()) + "." + test->name() + "-" +
                std::to_string(getpid()) + extension);
    }

    PETreeCtrl& Tree(size_t pane = 0) { return session.Panes()[pane].view->GetTreeCtrl(); }

    std::filesystem::path preferences = PrivateFile(".json");
    sn::AppSession session{sn::HostOptions{preferences}};
};
