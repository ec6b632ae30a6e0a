#pragma once
// The application with its windows: shown on a display, or rendered once without one.

#include "sonarium/app/session/AppSession.h"

#include <filesystem>
#include <string>

namespace sn::qt
{
// A display is there to show windows on: Qt is not asked to run offscreen and X11 or Wayland
// is reachable.
bool HasDisplay();

// Shows the main window where the user left it and opens the project given, else the one
// opened last, else the fallback; runs until the user closes it; the exit code.
int RunDesktop(AppSession& session, std::filesystem::path const& project, std::filesystem::path const& fallback,
               int argc, char** argv);

struct Screenshot
{
    std::filesystem::path path;
    int width = 0;
    int height = 0;
};

// Lays the main window out offscreen at its usual size and saves it as a PNG in the temporary
// folder; false with the reason in `error` when it could not be written.
bool RenderOffscreen(AppSession& session, int argc, char** argv, Screenshot& shot, std::string& error);
} // namespace sn::qt
