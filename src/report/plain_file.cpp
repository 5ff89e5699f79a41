// SPDX-License-Identifier: MIT
#include "report/plain_file.h"

#include "report/text.h"
#include "report/tresk_run.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace report
{

namespace
{

constexpr std::size_t kPiece = 1 << 16;

[[noreturn]] void fail(const std::string &what, const std::string &path)
{
    throw std::runtime_error(what + " " + terminal_line(path) + ": " + std::strerror(errno));
}

// A descriptor that is closed at the end.
struct Descriptor {
    int fd;

    explicit Descriptor(const std::string &path) : fd(open(path.c_str(), O_RDONLY | O_CLOEXEC))
    {
        if (fd < 0) {
            fail("cannot read", path);
        }
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;
    ~Descriptor()
    {
        close(fd);
    }
};

void copy(int from, int to, const std::string &path)
{
    char piece[kPiece];
    for (;;) {
        const ssize_t got = read(from, piece, sizeof piece);
        if (got == 0) {
            return;
        }
        if (got < 0 && errno != EINTR) {
            fail("cannot read", path);
        }
        for (ssize_t done = 0; done < got;) {
            const ssize_t wrote = write(to, piece + done, static_cast<std::size_t>(got - done));
            if (wrote < 0 && errno != EINTR) {
                fail("cannot copy", path);
            }
            done += wrote > 0 ? wrote : 0;
        }
    }
}

} // namespace

std::string packing_of(const std::string &path)
{
    for (const char *packing : {".gz", ".zst"}) {
        const std::size_t size = std::strlen(packing);
        if (path.size() > size && path.compare(path.size() - size, size, packing) == 0) {
            return packing;
        }
    }
    return {};
}

void convert_file(const std::string &from, int to, const std::string &packing, Direction direction)
{
    const Descriptor file(from);
    if (packing.empty()) {
        copy(file.fd, to, from);
        return;
    }
    const char *program = packing == ".gz" ? "gzip" : "zstd";
    const pid_t child = fork();
    if (child < 0) {
        fail("cannot start a process for", from);
    }
    if (child == 0) {
        if (dup2(file.fd, STDIN_FILENO) >= 0 && dup2(to, STDOUT_FILENO) >= 0) {
            execlp(program, program, direction == Direction::PACK ? "-qc" : "-qdc",
                   static_cast<char *>(nullptr));
        }
        _exit(127);
    }
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
        throw std::runtime_error(std::string(program) + " of " + terminal_line(from) + " " +
                                 end_text(status));
    }
}

PlainFile::PlainFile(const std::string &path) : PlainFile(path, packing_of(path))
{
}

PlainFile::PlainFile(const std::string &path, const std::string &packing) : path_(path)
{
    if (packing.empty()) {
        return;
    }
    const char *folder = std::getenv("TMPDIR");
    path_ = std::string(folder != nullptr && *folder != '\0' ? folder : "/tmp") + "/tresk-report.XXXXXX";
    const int fd = mkostemp(path_.data(), O_CLOEXEC);
    if (fd < 0) {
        fail("cannot make", path_);
    }
    is_own_ = true;
    try {
        convert_file(path, fd, packing, Direction::UNPACK);
    } catch (...) {
        close(fd);
        unlink(path_.c_str());
        throw;
    }
    close(fd);
}

PlainFile::~PlainFile()
{
    if (is_own_) {
        unlink(path_.c_str());
    }
}

} // namespace report
