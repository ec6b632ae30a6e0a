#include "sonarium/core/host/Host.h"
#include "sonarium/core/nodes/RetiredNodes.h"

#include "host/ProjectManager.h"
#include "host/Utf8.h"
#include "sonarium/core/host/ProjectManagerImpl.h"
#include "sonarium/core/model/CurrentState.h"
#include "sonarium/core/model/ModelNotify.h"
#include "sonarium/core/model/ProjectEdit.h"
#include "sonarium/core/presets/PresetObject.h"
#include "sonarium/core/storage/StorageState.h"

namespace sn
{
namespace
{
Host* g_host = nullptr;
}

Host* Host::Get()
{
    return g_host;
}

Host::Host(HostOptions options)
    : m_preferences(std::make_unique<PreferencesStore>(
          options.preferencesFile.empty() ? PreferencesStore::DefaultPath() : options.preferencesFile)),
      m_projectManager(std::make_unique<ProjectManagerImpl>(*this)),
      m_presetManager(std::make_unique<PresetManagerImpl>())
{
    m_services.SetService(ServiceId_ObjectClipboard, &m_clipboard);
    m_services.SetService(ServiceId_WorkUnitGate, &m_gate);
    m_services.SetService(ServiceId_MainWindow, &m_mainWindow);
    m_services.SetService(ServiceId_Commands, &m_commands);
    m_services.SetService(ServiceId_EditingCapabilities, &m_capabilities);
    m_properties.Prop(propLockUIUpdate, 3, 1) = 0;
    ProjectEdit::SetChangeGate(&m_files);

    g_host = this;
    INotifyMgr::m_pInstance = &m_notify;
    GlobalPropMgr::m_pInstance = &m_properties;
    IUndoMgr::m_instance = &m_undo;
    PreferencesStore::Install(m_preferences.get());
    g_serviceProviderInstance = &m_services;
    ProjectManager::m_pInstance = m_projectManager.get();
    IPresetManager::m_pInstance = m_presetManager.get();
}

Host::~Host()
{
    // The project's objects may still be referenced by the clipboard and undo steps: let
    // those go while the bus still runs, then the project.
    m_clipboard.Clear();
    m_undo.Clear();
    nodes::FreeRetired();
    DropProject();
    ProjectEdit::SetChangeGate(nullptr);
    IPresetManager::m_pInstance = nullptr;
    ProjectManager::m_pInstance = nullptr;
    g_serviceProviderInstance = nullptr;
    PreferencesStore::Install(nullptr);
    IUndoMgr::m_instance = nullptr;
    GlobalPropMgr::m_pInstance = nullptr;
    INotifyMgr::m_pInstance = nullptr;
    g_host = nullptr;
}

void Host::SetProject(std::unique_ptr<Project> project, bool created)
{
    if (m_project)
        CloseProject();
    m_project = std::move(project);
    if (!m_project)
        return;
    m_preferences->SetProjectKey(Utf8::ToWide(GuidText::ToString(m_project->GetId())));
    m_sourceControl.Read(*m_project);
    if (!m_project->Platforms().empty())
        SetPlatform(m_project->Platforms().front().id);
    SetLanguage(m_project->GetReferenceLanguage());
    notify::Project(created ? notify::evCreated : notify::evLoaded);
}

void Host::CloseProject()
{
    if (!m_project)
        return;
    // From here on the views empty: what they would save now is not the project's state.
    m_preferences->SetProjectKey({});
    notify::Project(notify::evPreClose);
    m_clipboard.Clear();
    m_undo.Clear();
    DropProject();
    notify::Project(notify::evPostClose);
}

void Host::DropProject()
{
    m_preferences->SetProjectKey({});
    m_sourceControl.Clear();
    if (m_project)
        ForgetStorageState(*m_project);
    if (m_leaveProjectToExit && m_project)
    {
        // Never freed, and so never destroyed at exit either; reachable for leak checkers.
        static auto* s_leftToExit = new std::vector<Project*>();
        s_leftToExit->push_back(m_project.release());
        return;
    }
    m_project.reset();
}

void Host::SetPlayback(bool playing)
{
    if (m_playback == playing)
        return;
    m_playback = playing;
    notify::EditingManager(playing ? notify::evPlaybackStarted : notify::evPlaybackStopped);
}

void Host::SetPlatform(GUID const& platform)
{
    ShownStateChanged();
    m_properties[propCurrentPlatform].SetValue(platform);
}

void Host::SetLanguage(unsigned long language)
{
    ShownStateChanged();
    m_properties[propCurrentLanguage].SetValue(static_cast<long long>(language));
}

void Host::RefreshSourceControlIcons()
{
    notify::SourceControl(notify::evSourceControlIconsRefreshAll);
}

bool Host::ReadSourceControlStatus()
{
    if (!m_project)
        return false;
    const bool read = m_sourceControl.Read(*m_project);
    RefreshSourceControlIcons();
    return read;
}
} // namespace sn
