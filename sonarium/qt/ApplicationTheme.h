#pragma once
// The loaded theme as the whole application wears it: every window, dialog, message box, file
// dialog, menu and tooltip, not only the main window.

#include <QPalette>

namespace sn::qt
{
// Loads the light or dark theme and gives its colours to the application.
void ApplyApplicationTheme(bool dark);
// The palette of the loaded theme, every group and role filled.
QPalette ThemePalette();
} // namespace sn::qt
