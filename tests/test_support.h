// SPDX-License-Identifier: MIT
// What the unit tests share: the tables of unit_cases.txt, and punch files that exist in memory only.
#ifndef TRESK_TESTS_TEST_SUPPORT_H
#define TRESK_TESTS_TEST_SUPPORT_H

#include "support/punch_stream.h"

#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <limits>
#include <sstream>
#include <stdexcept>
#include <string>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

// The cases of a table: the lines whose first field is its name, without that field.
inline std::vector<std::vector<std::string>> cases_of(const std::string &table)
{
    const std::string here = __FILE__;
    std::ifstream file(here.substr(0, here.rfind('/') + 1) + "unit_cases.txt");
    std::vector<std::vector<std::string>> cases;
    for (std::string line; std::getline(file, line);) {
        std::vector<std::string> fields(1);
        for (std::size_t i = 0; i < line.size(); ++i) {
            if (line.compare(i, 3, " ; ") == 0) {
                fields.emplace_back();
                i += 2;
            } else {
                const bool escaped = line[i] == '\\';
                fields.back() +=
                    escaped ? "\n\r\t \0\xff"[std::string("nrts0e").find(line.at(++i))] : line[i];
            }
        }
        if (fields[0] == table) {
            cases.emplace_back(fields.begin() + 1, fields.end());
        }
    }
    return cases.empty() ? throw std::runtime_error("unit_cases.txt has no table " + table) : cases;
}

// The numbers of a text, separated by blanks.
inline std::vector<double> numbers(const std::string &text)
{
    std::istringstream words(text);
    std::vector<double> values;
    for (std::string word; words >> word;) {
        values.push_back(std::stod(word));
    }
    return values;
}

// The bytes of a file; none if it cannot be read.
inline std::string read_file(const std::string &path)
{
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

// A new, empty folder for the files of a test.
inline std::string make_folder()
{
    const char *place = std::getenv("TMPDIR");
    std::string folder = std::string(place != nullptr ? place : "/tmp") + "/tresk-test-XXXXXX";
    return mkdtemp(folder.data()) != nullptr ? folder : throw std::runtime_error("cannot make a folder");
}

// Runs the program in a folder, with arguments as for the shell and behind what else the shell is told
// to do. The transcript goes to the file of that name there. Returns the exit code, which is 99 after a
// sanitizer's report and 124 when the time is up.
inline int run_program(const std::string &folder, const std::string &before, const std::string &arguments)
{
    setenv("TEST_FOLDER", folder.c_str(), 1); // names that may hold what the shell would read
    setenv("TEST_PROGRAM", TRESK_PROGRAM, 1);
    const std::string command = "cd \"$TEST_FOLDER\" && unset TRESK_DEBUG && " + before +
                                " ASAN_OPTIONS=exitcode=99:detect_leaks=0 timeout 20 \"$TEST_PROGRAM\" " +
                                arguments + " 2>transcript";
    return WEXITSTATUS(std::system(command.c_str()));
}

// Text as a punch file, opened: a file in memory, or a pipe, which cannot seek.
struct PunchSource {
    PunchStream stream;
    std::string path;
    int fd = -1;

    explicit PunchSource(const std::string &text, bool as_pipe = false, off_t hole = 0)
    {
        open(text, as_pipe, hole);
    }

    ~PunchSource()
    {
        stream_close(stream);
        close(fd);
        std::free(stream.window);
    }

    // Opens another text, behind a hole. The window is used again, as for the second file of a run.
    void open(const std::string &text, bool as_pipe = false, off_t hole = 0)
    {
        stream_close(stream);
        close(fd);
        int pipe_ends[2] = {-1, -1};
        if (as_pipe && pipe2(pipe_ends, O_NONBLOCK) == 0) {
            fcntl(pipe_ends[1], F_SETPIPE_SZ, 1 << 20);
        }
        fd = as_pipe ? pipe_ends[0] : memfd_create("punch", 0);
        path = "/dev/fd/" + std::to_string(fd);
        const ssize_t written = as_pipe ? write(pipe_ends[1], text.data(), text.size())
                                        : pwrite(fd, text.data(), text.size(), hole);
        if (written != static_cast<ssize_t>(text.size()) || !stream_open(stream, path.c_str())) {
            throw std::runtime_error("cannot set up a punch source");
        }
        close(pipe_ends[1]);
    }
};

// A comment line of the given size, at least 2, line feed included.
inline std::string comment_line(std::size_t size)
{
    return "*" + std::string(size - 2, 'p') + "\n";
}

#endif
