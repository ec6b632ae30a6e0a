#pragma once
// A running reference host: it owns the notification bus, the global properties, undo, the
// preferences, the services and the open project, and installs them as the singletons that
// modules reach. One host runs at a time; tests build a fresh one per test.

#include "host/GlobalProp.h"
#include "sonarium/core/model/Project.h"
#include "sonarium/core/notify/NotifyManager.h"
#include "sonarium/core/plugins/PluginRegistry.h"
#include "sonarium/core/prefs/PreferencesStore.h"
#include "sonarium/core/services/KeyBindings.h"
#include "sonarium/core/services/Services.h"
#include "sonarium/core/sourcecontrol/SourceControlStatus.h"
#include "sonarium/core/sourcecontrol/WritableFiles.h"
#include "sonarium/core/undo/UndoManager.h"

#include <filesystem>
#include <memory>

class CWnd;

namespace sn
{
class ProjectManagerImpl;
class PresetManagerImpl;

struct HostOptions
{
    // The per-user store; empty means the user's default location.
    std::filesystem::path preferencesFile;
};

class Host
{
public:
    explicit Host(HostOptions options = {});
    ~Host();
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    // The running host, or null.
    static Host* Get();

    NotifyManager& Notifications() { return m_notify; }
    CProp& Properties() { return m_properties; }
    UndoManager& Undo() { return m_undo; }
    PreferencesStore& Preferences() { return *m_preferences; }
    ObjectClipboard& Clipboard() { return m_clipboard; }
    WorkUnitGate& Gate() { return m_gate; }
    MainWindowState& MainWindow() { return m_mainWindow; }
    Commands& CommandRegistry() { return m_commands; }
    EditingCapabilities& Capabilities() { return m_capabilities; }
    KeyBindings& Keys() { return m_keys; }
    // What a change does with read-only files: the application installs the question it asks.
    WritableFiles& Files() { return m_files; }
    PluginRegistry& Plugins() { return m_plugins; }

    Project* GetProject() const { return m_project.get(); }
    // Takes the project as the open one, closing the previous one first, and announces it
    // ("Project"/"Created" for a new project, "Loaded" for one read from disk).
    void SetProject(std::unique_ptr<Project> project, bool created = false);
    // "Pre_Close", then the project goes away, then "Post_Close".
    void CloseProject();
    // For a process about to end: the host's end still closes the project (its folder's lock is
    // released, storage forgets it) but leaves its objects allocated, still reachable, for the
    // system to take back whole rather than freeing a large project object by object.
    void LeaveProjectToExit() { m_leaveProjectToExit = true; }

    bool IsInPlayback() const { return m_playback; }
    // Starts or stops playback: "EditingManager"/"PlaybackStarted" or "PlaybackStopped", since
    // what may be edited changes with it.
    void SetPlayback(bool playing);
    void SetPlatform(GUID const& platform);
    void SetLanguage(unsigned long language);
    // The source-control status was read again: views drop the overlays they drew from the old one.
    void RefreshSourceControlIcons();
    // The status of the open project's files, as last read.
    const SourceControlStatus& SourceControl() const { return m_sourceControl; }
    // Reads the status again (after a save, or when the user asks) and has the views redraw their
    // overlays; false, with the status's Problem(), when the repository could not be read.
    bool ReadSourceControlStatus();

    CWnd* GetMainWnd() const { return m_mainWnd; }
    void SetMainWnd(CWnd* wnd) { m_mainWnd = wnd; }

private:
    // Lets the project go together with what storage remembers of it.
    void DropProject();

    NotifyManager m_notify;
    CProp m_properties;
    UndoManager m_undo;
    std::unique_ptr<PreferencesStore> m_preferences;
    ObjectClipboard m_clipboard;
    WorkUnitGate m_gate;
    MainWindowState m_mainWindow;
    Commands m_commands;
    EditingCapabilities m_capabilities;
    KeyBindings m_keys;
    ServiceProvider m_services;
    std::unique_ptr<ProjectManagerImpl> m_projectManager;
    PluginRegistry m_plugins;
    std::unique_ptr<PresetManagerImpl> m_presetManager;
    std::unique_ptr<Project> m_project;
    bool m_leaveProjectToExit = false;
    SourceControlStatus m_sourceControl;
    WritableFiles m_files{m_undo};
    bool m_playback = false;
    CWnd* m_mainWnd = nullptr;
};
} // namespace sn
