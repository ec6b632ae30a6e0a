#pragma once
// Runs part of a test in a forked child, for what must not touch the test process itself: a
// lowered file size limit (a full disk as the system reports it, EFBIG on a real write) or an
// ordinary user's rights (so that a folder without write permission stops even a test run as
// root). The child's findings come back as text: empty when everything held.

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <grp.h>
#include <signal.h>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace child
{
// Collects what failed inside the child, where gtest's own assertions would be lost.
class Findings
{
public:
    void Check(bool holds, const std::string& what)
    {
        if (!holds)
            m_text += what + "\n";
    }
    template <class A, class B> void Equal(const A& actual, const B& expected, const std::string& what)
    {
        if (!(actual == expected))
            m_text += what + ": got \"" + Text(actual) + "\", expected \"" + Text(expected) + "\"\n";
    }
    const std::string& TextSoFar() const { return m_text; }

private:
    static std::string Text(const std::string& value) { return value; }
    static std::string Text(const std::vector<std::wstring>& values)
    {
        std::string text;
        for (const std::wstring& value : values)
            text += (text.empty() ? "" : ", ") + std::string(value.begin(), value.end());
        return text;
    }
    template <class T> static std::string Text(const T& value) { return std::to_string(value); }
    std::string m_text;
};

// Runs body in a forked child and returns what it found (or how the child ended, if not normally).
inline std::string Run(const std::function<void(Findings&)>& body)
{
    int pipe[2];
    if (::pipe(pipe) != 0)
        return "cannot make a pipe";
    const pid_t pid = ::fork();
    if (pid < 0)
        return "cannot fork";
    if (pid == 0)
    {
        ::close(pipe[0]);
        Findings findings;
        body(findings);
        const std::string& text = findings.TextSoFar();
        for (size_t sent = 0; sent < text.size();)
        {
            const ssize_t n = ::write(pipe[1], text.data() + sent, text.size() - sent);
            if (n <= 0)
                break;
            sent += static_cast<size_t>(n);
        }
        ::_exit(0);
    }
    ::close(pipe[1]);
    std::string text;
    char buffer[4096];
    for (ssize_t n; (n = ::read(pipe[0], buffer, sizeof(buffer))) > 0;)
        text.append(buffer, static_cast<size_t>(n));
    ::close(pipe[0]);
    int status = 0;
    ::waitpid(pid, &status, 0);
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
        text += "the child ended abnormally (status " + std::to_string(status) + ")\n";
    return text;
}

// From now on, no file of this process may grow beyond bytes: a write past it fails with EFBIG,
// as a write to a full disk fails with ENOSPC. Raising it again (up to the hard limit) is allowed.
inline void LimitFileSize(rlim_t bytes)
{
    ::signal(SIGXFSZ, SIG_IGN);
    struct rlimit limit;
    ::getrlimit(RLIMIT_FSIZE, &limit);
    limit.rlim_cur = bytes;
    ::setrlimit(RLIMIT_FSIZE, &limit);
}

inline void LiftFileSizeLimit()
{
    struct rlimit limit;
    ::getrlimit(RLIMIT_FSIZE, &limit);
    limit.rlim_cur = limit.rlim_max;
    ::setrlimit(RLIMIT_FSIZE, &limit);
}

// In a child run as root, becomes the unprivileged "nobody" after giving it folder, so that file
// permissions apply as they do to a user. Does nothing for an ordinary user. False on failure.
inline bool BecomeOrdinaryUser(const std::filesystem::path& folder)
{
    if (::geteuid() != 0)
        return true;
    constexpr uid_t kNobody = 65534;
    namespace fs = std::filesystem;
    std::error_code ec;
    if (::chown(folder.c_str(), kNobody, kNobody) != 0)
        return false;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder, ec))
        if (::lchown(entry.path().c_str(), kNobody, kNobody) != 0)
            return false;
    return ::setgroups(0, nullptr) == 0 && ::setgid(kNobody) == 0 && ::setuid(kNobody) == 0 &&
           ::geteuid() != 0;
}
} // namespace child
