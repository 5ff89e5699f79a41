// SPDX-License-Identifier: MIT
#ifndef TRESK_TESTS_LISTENING_H
#define TRESK_TESTS_LISTENING_H

#include "compare/listener.h"
#include "driver/tk_main.h"

#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

// Runs tresk in a folder with a listener, in a child of the test, since the state of a run is that of its
// process: what the listener is to keep has to go into a file, and the test must not have changed any of
// that state before, as other tests of the same process do. The transcript goes to the file of that
// name. Returns the exit code, or -1 after a signal.
inline int run_listening(Listener &heard, const std::string &folder, std::vector<std::string> arguments)
{
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        const int transcript = open((folder + "/transcript").c_str(), O_RDWR | O_CREAT | O_TRUNC, 0666);
        dup2(transcript, STDERR_FILENO);
        unsetenv("TRESK_DEBUG");
        arguments.insert(arguments.begin(), "tresk");
        std::vector<char *> argv;
        for (std::string &argument : arguments) {
            argv.push_back(argument.data());
        }
        listener = &heard;
        if (chdir(folder.c_str()) == 0) {
            tk_main(static_cast<int>(argv.size()), argv.data());
        }
        _exit(99);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

#endif
