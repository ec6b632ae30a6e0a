#pragma once
// A fresh reference host per test, with its preferences in a private temporary folder, and
// a recorder of what the host's notification bus carried.

#include "host/OrbObjNotify.h"
#include "platform/WindowSystem.h"
#include "sonarium/core/host/Host.h"
#include "sonarium/core/host/ProjectBuilder.h"
#include "sonarium/core/storage/ProjectStorage.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

class HostTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        WindowSystem::Get().Reset();
        m_dir = std::filesystem::temp_directory_path() /
                ("sonarium-test-" + std::to_string(::testing::UnitTest::GetInstance()->random_seed()) + "-" +
                 ::testing::UnitTest::GetInstance()->current_test_info()->name());
        std::filesystem::remove_all(m_dir);
        std::filesystem::create_directories(m_dir);
        sn::HostOptions options;
        options.preferencesFile = m_dir / "preferences.json";
        m_host = std::make_unique<sn::Host>(options);
    }

    void TearDown() override
    {
        m_host.reset();
        WindowSystem::Get().Reset();
        std::filesystem::remove_all(m_dir);
    }

    // Opens a project written in the builder's text form; fails the test on bad text.
    sn::Project& Open(const std::wstring& text)
    {
        std::wstring error;
        auto project = sn::ProjectBuilder::Build(L"Test", text, &error);
        EXPECT_TRUE(project) << std::string(error.begin(), error.end());
        m_host->SetProject(std::move(project));
        return *m_host->GetProject();
    }

    // The same, saved into a folder of the test's own: what needs files on disk (work units to
    // unload, audio to import) has them.
    sn::Project& OpenSaved(const std::wstring& text)
    {
        sn::Project& project = Open(text);
        sn::StorageProblems problems;
        EXPECT_TRUE(sn::SaveProjectAs(project, m_dir / "Project", problems));
        return project;
    }

    sn::ProjectObject* At(const std::wstring& path)
    {
        sn::ProjectObject* object = sn::FindByPath(*m_host->GetProject(), path);
        EXPECT_TRUE(object) << "no object at " << std::string(path.begin(), path.end());
        return object;
    }

    sn::Host& HostRef() { return *m_host; }

    std::filesystem::path m_dir;
    std::unique_ptr<sn::Host> m_host;
};

// Records "channel/event name" for each notification of the channels it listens to.
class BusRecorder
{
public:
    explicit BusRecorder(std::vector<const char*> channels)
    {
        for (const char* channel : channels)
        {
            m_channels.emplace_back(channel);
            INotifyMgr::m_pInstance->Register(m_channels.back(), NotifyDelegate(this, &BusRecorder::OnNotify));
        }
    }
    ~BusRecorder()
    {
        if (INotifyMgr::m_pInstance)
            for (const ROString& channel : m_channels)
                INotifyMgr::m_pInstance->UnRegister(channel, NotifyDelegate(this, &BusRecorder::OnNotify));
    }

    void OnNotify(CNotifyItemBase* item)
    {
        std::string line = std::string(item->channel.c_str()) + "/" + item->pData->event.c_str();
        if (auto* param = dynamic_cast<OrbObjNotify::OrbObjectNotifyParam*>(item->pData); param && param->object)
        {
            const CStdStr<wchar_t> name = param->object->GetName();
            line += " " + std::string(name.begin(), name.end());
        }
        events.push_back(line);
    }

    std::vector<std::string> events;

private:
    std::vector<ROString> m_channels;
};
