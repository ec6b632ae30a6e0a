// sonarium [PROJECT] [--script FILE|-] [--settings DIR]
//
// Opens the project given. With --script, runs the script headless over the default explorer
// panes and prints what it asks for; an error names the line and the run exits with 1. With a
// display, shows the main window with the project given, else the one opened last, else the
// bundled sample, and the panes the user left last time. Without one, says so, prints the
// default panes' trees, renders the main window offscreen to a PNG and prints where it went.
//
// The runs without a window keep their settings in a fresh folder removed at the end, so that
// they neither read nor change the desktop user's; --settings DIR names the folder to use instead
// (for the window too).

#include "host/Utf8.h"
#include "sonarium/app/script/ScriptRunner.h"
#include "sonarium/app/session/TreeText.h"
#include "sonarium/qt/DesktopRun.h"
#include "sonarium/qt/DesktopSettings.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <string>

namespace
{
constexpr char k_usage[] = "usage: sonarium [PROJECT] [--script FILE|-] [--settings DIR]\n";
constexpr char k_help[] =
    "Opens PROJECT (a project folder or its .sonproj file) in the Sonarium application.\n"
    "\n"
    "  PROJECT          the project to open; by default the one opened last in the window,\n"
    "                   else the bundled sample " SONARIUM_SAMPLES_DIR "/Demo\n"
    "  --script FILE    runs the script FILE (- for standard input) without a window and prints\n"
    "                   what it asks for; the language is described in docs/scripting.md\n"
    "  --settings DIR   keeps preferences and window settings in DIR; without it, the window uses\n"
    "                   the user's (under $XDG_CONFIG_HOME, else ~/.config) and runs without a\n"
    "                   window use a fresh folder that is removed at the end\n"
    "  --help           prints this text\n"
    "\n"
    "Without a display the panes are printed as text and the window is rendered to a PNG.\n";

struct Arguments
{
    std::string project;  // empty: none given
    std::string script;   // empty: none; "-": standard input
    std::string settings; // empty: the default for the kind of run
    bool help = false;
};

bool Parse(int argc, char** argv, Arguments& arguments, std::string& error)
{
    bool projectGiven = false;
    for (int i = 1; i < argc; ++i)
    {
        const std::string word = argv[i];
        if (word == "--help" || word == "-h")
            arguments.help = true;
        else if (word == "--script")
        {
            if (++i == argc || !*argv[i])
                return error = "--script needs a file name, or - for standard input", false;
            arguments.script = argv[i];
        }
        else if (word == "--settings")
        {
            if (++i == argc || std::string(argv[i]).empty())
                return error = "--settings needs a folder", false;
            arguments.settings = argv[i];
        }
        else if (word.rfind("-", 0) == 0)
        {
            error = "unknown option " + word;
            // A single dash may begin a file's name: say how to give one.
            if (word.rfind("--", 0) != 0)
                error += " (a project whose name begins with - is given as ./" + word + ")";
            return false;
        }
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

// A settings folder of the run's own, removed with everything in it when the run ends.
class FreshSettingsFolder
{
public:
    FreshSettingsFolder()
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "sonarium-settings-XXXXXX").string();
        if (mkdtemp(pattern.data()))
            m_path = pattern;
    }
    ~FreshSettingsFolder()
    {
        std::error_code ignored;
        if (!m_path.empty())
            std::filesystem::remove_all(m_path, ignored);
    }
    FreshSettingsFolder(FreshSettingsFolder const&) = delete;
    FreshSettingsFolder& operator=(FreshSettingsFolder const&) = delete;
    std::filesystem::path const& Path() const { return m_path; }

private:
    std::filesystem::path m_path;
};

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
            std::cerr << "sonarium: cannot read the script " << path << ": " << std::strerror(errno) << "\n";
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
        std::cerr << "sonarium: " << error << "\n" << k_usage;
        return 2;
    }
    if (arguments.help)
    {
        std::cout << k_usage << k_help;
        return 0;
    }
    const bool desktop = sn::qt::HasDisplay() && arguments.script.empty();
    std::filesystem::path settings = arguments.settings;
    std::unique_ptr<FreshSettingsFolder> fresh;
    if (settings.empty() && !desktop)
    {
        fresh = std::make_unique<FreshSettingsFolder>();
        if (fresh->Path().empty())
        {
            std::cerr << "sonarium: cannot make a settings folder under "
                      << std::filesystem::temp_directory_path().string() << "\n";
            return 2;
        }
        settings = fresh->Path();
    }
    sn::HostOptions options;
    if (!settings.empty())
    {
        options.preferencesFile = settings / "preferences.json";
        sn::qt::UseSettingsFolder(settings);
    }
    sn::AppSession session(options);
    // The window opens its project itself, so that the user sees it coming.
    if (desktop)
        return sn::qt::RunDesktop(session, arguments.project, SONARIUM_SAMPLES_DIR "/Demo", argc, argv);
    if (arguments.project.empty())
        arguments.project = SONARIUM_SAMPLES_DIR "/Demo";
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
    ReportOnStandardError(session);
    // Scripts and the printout without a display always start from the default pair of panes,
    // so that what they print is stable.
    LayOutDefaultPanes(session);
    if (!arguments.script.empty())
    {
        const int status = RunScript(session, arguments.script);
        session.GetHost().LeaveProjectToExit();
        return status;
    }
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
