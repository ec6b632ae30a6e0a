#pragma once
// What the desktop window remembers between runs, in the user's Qt settings: the theme, the
// recent projects, and the panes the user arranged.

#include "sonarium/app/session/AppSession.h"

#include <QSettings>

#include <vector>

namespace sn::qt
{
QSettings DesktopSettings();

// The panes saved by the last run, in order; empty when none were saved or none is readable.
// An entry with no title, a taken title or no known category is left out.
std::vector<PaneDefinition> LoadPaneLayout();
void SavePaneLayout(std::vector<Pane> const& panes);
} // namespace sn::qt
