#include "FuzzRun.h"

#include "GestureSource.h"
#include "host/Utf8.h"
#include "sonarium/app/script/ScriptRunner.h"
#include "sonarium/core/storage/ProjectLock.h"

#include <csignal>
#include <cstring>
#include <fstream>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fuzz
{
namespace fs = std::filesystem;

namespace
{
// A line of the child's report that is not a script line.
constexpr char k_failure = '\x01';
// A step that takes this long is a hang.
constexpr int k_stepTimeoutMs = 120000;

void Send(int fd, std::string text)
{
    text += '\n';
    for (size_t done = 0; done < text.size();)
    {
        const ssize_t wrote = ::write(fd, text.data() + done, text.size() - done);
        if (wrote <= 0)
            return;
        done += static_cast<size_t>(wrote);
    }
}

void CopyProject(fs::path const& from, fs::path const& to)
{
    fs::create_directories(to);
    for (auto it = fs::recursive_directory_iterator(from); it != fs::recursive_directory_iterator(); ++it)
    {
        const fs::path relative = it->path().lexically_relative(from);
        if (relative == sn::ProjectLock::kFileName)
            continue;
        if (it->is_directory())
            fs::create_directories(to / relative);
        else
            fs::copy_file(it->path(), to / relative, fs::copy_options::overwrite_existing);
    }
}

// Files a user may drop, named from the run's folder: a few real audio files, and a text file
// named like audio, a truncated WAV, a folder and a file that is not there.
DropFiles MakeDropFiles(fs::path const& audio)
{
    DropFiles files;
    fs::create_directories("files");
    std::vector<fs::path> sources;
    for (auto const& entry : fs::directory_iterator(audio))
        if (entry.path().extension() == ".wav")
            sources.push_back(entry.path());
    std::sort(sources.begin(), sources.end());
    sources.resize(std::min<size_t>(sources.size(), 3));
    for (fs::path const& source : sources)
    {
        fs::copy_file(source, "files" / source.filename(), fs::copy_options::overwrite_existing);
        files.audio.push_back("files" / source.filename());
    }
    std::ofstream("files/not_audio.wav") << "plain text, not audio\n";
    if (!sources.empty())
    {
        std::ifstream in(sources.front(), std::ios::binary);
        char head[40] = {};
        in.read(head, sizeof head);
        std::ofstream("files/truncated.wav", std::ios::binary).write(head, in.gcount());
    }
    fs::create_directories("files/folder.wav");
    files.bad = {"files/not_audio.wav", "files/truncated.wav", "files/folder.wav", "files/missing.wav"};
    return files;
}

// The child: a fresh copy of the project and a session over it, the lines run one by one with
// the checks after each. Reports each line before running it, and a failure as its last line.
int RunChild(int fd, RunSetup const& setup, std::vector<std::wstring> const* replay, uint64_t seed, int steps)
{
    const fs::path run = setup.work / "run";
    fs::remove_all(run);
    fs::create_directories(run / "settings");
    if (::chdir(run.c_str()) != 0)
        return Send(fd, std::string(1, k_failure) + "cannot enter " + run.string()), 1;
    CopyProject(setup.project, "Project");
    DropFiles files = MakeDropFiles(setup.audio);

    sn::HostOptions options;
    options.preferencesFile = run / "settings" / "preferences.json";
    sn::AppSession session(options);
    std::vector<std::wstring> messages;
    if (!session.OpenProject("Project", messages))
        return Send(fd, std::string(1, k_failure) + "cannot open the project"), 1;
    for (sn::PaneDefinition const& pane : sn::DefaultPanes())
        session.OpenPane(pane);
    std::wostream nowhere(nullptr);
    sn::ScriptRunner runner(session, nowhere);

    // False once a check failed; the failure has been reported.
    auto step = [&](std::wstring const& line)
    {
        Send(fd, Utf8::FromWide(line));
        std::wstring error;
        if (!runner.RunLine(line, error) && line.rfind(L"check", 0) == 0)
            return Send(fd, k_failure + Utf8::FromWide(error)), false;
        if (!runner.RunLine(L"check", error))
            return Send(fd, k_failure + Utf8::FromWide(error)), false;
        return true;
    };
    if (replay)
    {
        for (std::wstring const& line : *replay)
            if (!step(line))
                return 1;
        return 0;
    }
    GestureSource source(session, seed, files, "Project");
    if (!step(L"check snapshot"))
        return 1;
    sn::UndoManager& undo = session.GetHost().Undo();
    for (int i = 0; i < steps; ++i)
    {
        const bool hadHistory = undo.CanUndo() || undo.CanRedo();
        for (std::wstring const& line : source.Next())
            if (!step(line))
                return 1;
        // Loading or unloading a work unit clears the undo history: undoing everything can then
        // only go back to what is saved from here on.
        if (hadHistory && !undo.CanUndo() && !undo.CanRedo() && (!step(L"save") || !step(L"check snapshot")))
            return 1;
    }
    for (std::wstring const& line : source.Settle())
        if (!step(line))
            return 1;
    // Undoing everything gives back what was read; saving it writes the same bytes.
    while (session.GetHost().Undo().CanUndo())
        if (!step(L"host undo"))
            return 1;
    return step(L"save") && step(L"check unchanged") ? 0 : 1;
}

Outcome RunInChild(RunSetup const& setup, std::vector<std::wstring> const* replay, uint64_t seed, int steps)
{
    Outcome outcome;
    int pipeFds[2];
    if (::pipe(pipeFds) != 0)
        return outcome.failed = true, outcome.why = "cannot make a pipe", outcome;
    std::fflush(nullptr);
    const pid_t child = ::fork();
    if (child == 0)
    {
        ::close(pipeFds[0]);
        const int code = RunChild(pipeFds[1], setup, replay, seed, steps);
        ::close(pipeFds[1]);
        // A normal exit, so that the leak checker of a sanitizer build looks at what is left.
        std::exit(code);
    }
    ::close(pipeFds[1]);
    std::string pending;
    bool hung = false;
    for (;;)
    {
        pollfd wait{pipeFds[0], POLLIN, 0};
        if (::poll(&wait, 1, k_stepTimeoutMs) == 0)
        {
            hung = true;
            ::kill(child, SIGKILL);
        }
        char buffer[4096];
        const ssize_t got = ::read(pipeFds[0], buffer, sizeof buffer);
        if (got <= 0)
            break;
        pending.append(buffer, static_cast<size_t>(got));
        for (size_t end; (end = pending.find('\n')) != std::string::npos; pending.erase(0, end + 1))
        {
            const std::string line = pending.substr(0, end);
            if (!line.empty() && line[0] == k_failure)
                outcome.why = line.substr(1);
            else
                outcome.lines.push_back(Utf8::ToWide(line));
        }
    }
    ::close(pipeFds[0]);
    int status = 0;
    ::waitpid(child, &status, 0);
    if (hung)
        outcome.why = "no answer for " + std::to_string(k_stepTimeoutMs / 1000) + " s: a hang";
    else if (WIFSIGNALED(status))
        outcome.why = std::string("killed by signal ") + std::to_string(WTERMSIG(status)) + " (" +
                      strsignal(WTERMSIG(status)) + ")";
    else if (WEXITSTATUS(status) != 0 && outcome.why.empty())
        outcome.why = "exit status " + std::to_string(WEXITSTATUS(status)) + " (a sanitizer report above?)";
    outcome.failed = hung || !WIFEXITED(status) || WEXITSTATUS(status) != 0;
    return outcome;
}
} // namespace

Outcome Generate(RunSetup const& setup, uint64_t seed, int steps)
{
    return RunInChild(setup, nullptr, seed, steps);
}

Outcome Replay(RunSetup const& setup, std::vector<std::wstring> const& lines)
{
    return RunInChild(setup, &lines, 0, 0);
}

std::string Signature(std::string const& why)
{
    // Names and numbers change as lines are taken out; the shape of the complaint does not.
    std::string signature;
    bool quoted = false;
    for (char c : why)
    {
        if (c == '"')
            quoted = !quoted;
        else if (!quoted && !std::isdigit(static_cast<unsigned char>(c)))
            signature += c;
    }
    return signature.substr(0, 80);
}
} // namespace fuzz
