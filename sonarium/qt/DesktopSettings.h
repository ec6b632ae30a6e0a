#pragma once
// What the desktop window remembers between runs, in the user's Qt settings: the theme, the
// recent projects and the one opened last, the platform chosen per project, the panes the user
// arranged, and the window's place and splitter sizes.

#include "sonarium/app/session/AppSession.h"

#include <QSettings>
#include <QStringList>

#include <filesystem>
#include <vector>

namespace sn::qt
{
QSettings DesktopSettings();
// Keeps the settings in folder instead of the user's; to be called before any is read.
void UseSettingsFolder(std::filesystem::path const& folder);

// The project opened last (empty when none), and the recent ones, latest first.
std::filesystem::path LastProject();
QStringList RecentProjects();
// Makes the project the last one and the first of the recent ones.
void RememberProject(std::filesystem::path const& path);
// The platform last chosen in the project (GUID_NULL when none).
GUID LastPlatform(std::filesystem::path const& project);
void RememberPlatform(std::filesystem::path const& project, GUID const& platform);

// The panes saved by the last run, in order; empty when none were saved or none is readable.
// An entry with no title, a taken title or no known category is left out.
std::vector<PaneDefinition> LoadPaneLayout();
void SavePaneLayout(std::vector<Pane> const& panes);
} // namespace sn::qt
