// SPDX-License-Identifier: MIT
// What the unit tests share: tables of cases, and punch files that exist in memory only.
#ifndef TRESK_TESTS_TEST_SUPPORT_H
#define TRESK_TESTS_TEST_SUPPORT_H

#include "support/punch_stream.h"

#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <limits>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

using namespace std::string_literals;

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

// A text with its escapes replaced: \n, \r and \t as in C, \0 a NUL, \s a blank, \xFF a byte.
inline std::string unescaped(const std::string &text)
{
    std::string bytes;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\') {
            bytes += text[i];
        } else if (text.at(++i) == 'x') {
            bytes += static_cast<char>(std::stoi(text.substr(i + 1, 2), nullptr, 16));
            i += 2;
        } else {
            bytes += "\n\r\t \0"s.at("nrts0"s.find(text[i]));
        }
    }
    return bytes;
}

// A text with all occurrences of a part replaced.
inline std::string replaced(std::string text, const std::string &from, const std::string &to)
{
    for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size()) {
        text.replace(at, from.size(), to);
    }
    return text;
}

// A row of a Markdown table: its place, for messages, and its cells by the headings of the columns.
struct TableRow {
    std::string place;
    std::map<std::string, std::string> cells;

    const std::string &operator[](const std::string &column) const
    {
        return cells.at(column);
    }
};

// The cells of a line "| first | `second` |", without the blanks and backticks around each.
inline std::vector<std::string> cells_of(const std::string &line)
{
    std::vector<std::string> cells;
    for (std::size_t begin = 1, end = 0; (end = line.find('|', begin)) != std::string::npos;
         begin = end + 1) {
        std::string cell = line.substr(begin, end - begin);
        cell.erase(cell.find_last_not_of(' ') + 1);
        cell.erase(0, cell.find_first_not_of(' '));
        const bool code = cell.size() > 1 && cell.front() == '`' && cell.back() == '`';
        cells.push_back(code ? cell.substr(1, cell.size() - 2) : cell);
    }
    return cells;
}

// The rows of the tables of a page, or of one of its sections.
inline std::vector<TableRow> rows_of(const std::string &page, const std::string &section = "")
{
    std::ifstream file(TRESK_SOURCE "/" + page);
    bool wanted = section.empty();
    std::vector<std::string> columns;
    std::vector<TableRow> rows;
    int number = 0;
    for (std::string line; std::getline(file, line);) {
        ++number;
        wanted = line.rfind("## ", 0) == 0 ? section.empty() || line == "## " + section : wanted;
        const std::vector<std::string> cells = cells_of(line);
        if (line[0] != '|') {
            columns.clear();
        } else if (columns.empty()) {
            columns = cells;
        } else if (wanted && line[1] != '-') {
            rows.push_back({page + ":" + std::to_string(number) + ": " + cells.at(0), {}});
            for (std::size_t i = 0; i < columns.size(); ++i) {
                rows.back().cells[columns[i]] = cells.at(i);
            }
        }
    }
    return rows.empty() ? throw std::runtime_error(page + " has no table " + section) : rows;
}

inline std::vector<TableRow> cases_of(const std::string &section)
{
    return rows_of("tests/unit_cases.md", section);
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

// Runs the program in a folder, with arguments as for the shell and behind what else the shell gets
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
