// sonarium [PROJECT] [--script FILE|-]
//
// Opens the project given (the bundled sample by default). With --script, runs the script
// headless over the default explorer panes and prints what it asks for; an error names the line
// and the run exits with 1. With a display, shows the main window with the panes the user left
// last time. Without one, says so, prints the default panes' trees, renders the main window
// offscreen to a PNG and prints where it went.

#include "host/Utf8.h"
#include "sonarium/app/script/ScriptRunner.h"
#include "sonarium/app/session/TreeText.h"
#include "sonarium/qt/DesktopRun.h"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>

namespace
{
struct Arguments
{
    std::string project = SONARIUM_SAMPLES_DIR "/Demo";
    std::string script; // empty: none; "-": standard input
};

bool Parse(int argc, char** argv, Arguments& arguments, std::string& error)
{
    bool projectGiven = false;
    for (int i = 1; i < argc; ++i)
    {
        const std::string word = argv[i];
        if (word == "--script")
        {
            if (++i == argc || !*argv[i])
                return error = "--script needs a file name, or - for standard input", false;
            arguments.script = argv[i];
        }
        else if (word.rfind("--", 0) == 0)
            return error = "unknown option " + word, false;
        else if (projectGiven)
            return error = "only one project can be opened: " + word, false;
        else
        {
            arguments.project = word;
            projectGiven = true;
        }
    }
    return true;
}

void LayOutDefaultPanes(sn::AppSession& session)
{
    for (sn::PaneDefinition const& pane : sn::DefaultPanes())
        session.OpenPane(pane);
}

int RunScript(sn::AppSession& session, std::string const& path)
{
    std::ifstream file;
    if (path != "-")
    {
        std::error_code ec;
        if (std::filesystem::is_directory(path, ec))
        {
            std::cerr << "sonarium: the script " << path << " is a folder, not a file\n";
            return 2;
        }
        file.open(path);
        if (!file)
        {
            std::cerr << "sonarium: cannot read the script " << path << "\n";
            return 2;
        }
    }
    sn::ScriptRunner runner(session, std::wcout);
    std::string error;
    const bool ran = runner.Run(path == "-" ? std::cin : file, path == "-" ? "<stdin>" : path, error);
    std::wcout.flush();
    if (!ran)
    {
        std::cerr << error << "\n";
        return 1;
    }
    return 0;
}

// Without a window, what the host has to tell the user goes to standard error; the desktop
// window takes over when it opens.
void ReportOnStandardError(sn::AppSession& session)
{
    session.Reports().SetPreferenceListener([](std::wstring const& problem)
                                            { std::cerr << "sonarium: preferences: " << Utf8::FromWide(problem) << "\n"; });
    session.Reports().ReportPreferenceProblems();
}

void PrintTrees(sn::AppSession& session)
{
    for (sn::Pane& pane : session.Panes())
    {
        std::wcout << L"tree " << pane.name << L"\n";
        for (std::wstring const& line : sn::TreeLines(pane.view->GetTreeCtrl()))
            std::wcout << L"  " << line << L"\n";
    }
}
} // namespace

int main(int argc, char** argv)
{
    std::locale::global(std::locale("C.UTF-8"));
    std::wcout.imbue(std::locale());
    Arguments arguments;
    std::string error;
    if (!Parse(argc, argv, arguments, error))
    {
        std::cerr << "sonarium: " << error << "\nusage: sonarium [PROJECT] [--script FILE|-]\n";
        return 2;
    }
    sn::AppSession session;
    std::vector<std::wstring> messages;
    const bool opened = session.OpenProject(arguments.project, messages);
    for (std::wstring const& message : messages)
        std::cerr << "sonarium: " << Utf8::FromWide(message) << "\n";
    if (!opened)
    {
        std::cerr << "sonarium: cannot open the project " << arguments.project << "\n";
        return 2;
    }
    if (!session.ReadOnlyReason().empty())
        std::cerr << "sonarium: " << session.ReadOnlyReason() << "\n";
    // The window opens the panes the user left last time; scripts and the printout without a
    // display always start from the default pair, so that what they print is stable.
    if (sn::qt::HasDisplay() && arguments.script.empty())
        return sn::qt::RunDesktop(session, argc, argv);
    ReportOnStandardError(session);
    LayOutDefaultPanes(session);
    if (!arguments.script.empty())
        return RunScript(session, arguments.script);
    std::wcout << L"No display: the explorer panes follow as text, and the window is rendered offscreen.\n";
    PrintTrees(session);
    std::wcout.flush();
    sn::qt::Screenshot shot;
    if (!sn::qt::RenderOffscreen(session, argc, argv, shot, error))
    {
        std::cerr << "sonarium: " << error << "\n";
        return 1;
    }
    std::wcout << L"window: " << shot.path.wstring() << L" (" << shot.width << L"x" << shot.height << L")\n";
    return 0;
}
