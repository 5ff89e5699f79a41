// SPDX-License-Identifier: MIT
// Runs a command as a whole process, its output dropped, and prints the wall time in seconds, its
// largest resident set in KiB and its exit status. A program of its own because the kernel counts the
// resident set of the starter too, which must be small for that.
#include <chrono>
#include <cstdio>
#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

int main(int argc, char **argv)
{
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);

    const auto start = std::chrono::steady_clock::now();
    pid_t child = 0;
    if (argc < 2 || posix_spawnp(&child, argv[1], &actions, nullptr, argv + 1, environ) != 0) {
        std::fputs("usage: timed_run COMMAND...\n", stderr);
        return 2;
    }
    int status = 0;
    rusage usage{};
    wait4(child, &status, 0, &usage);
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;

    std::printf("%.6f %ld %d\n", elapsed.count(), usage.ru_maxrss,
                WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status));
}
