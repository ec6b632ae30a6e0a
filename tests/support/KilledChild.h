#pragma once
// Work done in a forked child that the test kills (SIGKILL) a given time after the child says it
// is about to start: how a save cut short by a crash or a power cut is reproduced.

#include <chrono>
#include <csignal>
#include <functional>
#include <sys/wait.h>
#include <unistd.h>

namespace child
{
struct KilledRun
{
    std::chrono::microseconds duration; // from the start of the work to its end or the kill
    bool ranWhole = false;               // the child ended by itself with status 0
};

// `prepare` runs first in the child (opening, editing), then `work` (the save, returning whether
// it succeeded). A negative delay lets the work run to its end.
inline KilledRun RunKilledAfter(const std::function<void()>& prepare, const std::function<bool()>& work,
                                long delayMicroseconds)
{
    int ready[2];
    if (::pipe(ready) != 0)
        return {};
    const pid_t child = ::fork();
    if (child == 0)
    {
        prepare();
        (void)!::write(ready[1], "x", 1);
        ::_exit(work() ? 0 : 1);
    }
    char byte;
    (void)!::read(ready[0], &byte, 1);
    const auto start = std::chrono::steady_clock::now();
    if (delayMicroseconds >= 0)
    {
        ::usleep(static_cast<useconds_t>(delayMicroseconds));
        ::kill(child, SIGKILL);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    ::close(ready[0]);
    ::close(ready[1]);
    return {std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - start),
            WIFEXITED(status) && WEXITSTATUS(status) == 0};
}
} // namespace child
