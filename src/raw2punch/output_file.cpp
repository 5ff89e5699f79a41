// SPDX-License-Identifier: MIT
#include "raw2punch/output_file.h"

#include "raw2punch/fault.h"

#include <atomic>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace
{

constexpr std::size_t kCollected = std::size_t{64} << 10;

// Path of the file under construction for the signal handler, which may not use memory that is in use
// elsewhere.
char unfinished_path[PATH_MAX];
std::atomic<bool> is_unfinished{false};

extern "C" void remove_and_end(int number)
{
    if (is_unfinished) {
        unlink(unfinished_path);
    }
    std::signal(number, SIG_DFL);
    std::raise(number);
}

[[noreturn]] void fail(const std::string &path)
{
    throw Fault("cannot write " + path + ": " + std::strerror(errno));
}

// Where a link leads, so that the link stays.
std::string resolved(const std::string &path)
{
    char *real = realpath(path.c_str(), nullptr);
    std::string result = real != nullptr ? real : path;
    std::free(real);
    return result;
}

void refuse_device(const std::string &path)
{
    struct stat status {
    };
    if (stat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode)) {
        throw Fault("cannot write " + path + ": not a regular file");
    }
}

mode_t usual_mode()
{
    const mode_t mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}

} // namespace

OutputFile::OutputFile(const std::string &path) : final_path_(resolved(path)), path_(final_path_ + ".XXXXXX")
{
    refuse_device(final_path_);
    if (path_.size() >= sizeof unfinished_path) {
        errno = ENAMETOOLONG;
        fail(path);
    }
    fd_ = mkostemp(path_.data(), O_CLOEXEC);
    if (fd_ < 0) {
        fail(path);
    }
    std::memcpy(unfinished_path, path_.c_str(), path_.size() + 1);
    is_unfinished = true;
}

OutputFile OutputFile::make_nameless(const OutputFile &beside)
{
    std::string path = beside.final_path_ + ".XXXXXX";
    OutputFile file;
    file.fd_ = mkostemp(path.data(), O_CLOEXEC);
    if (file.fd_ < 0) {
        fail(path);
    }
    unlink(path.c_str());
    file.final_path_ = beside.final_path_;
    return file;
}

OutputFile::OutputFile(OutputFile &&other) noexcept
    : final_path_(std::move(other.final_path_)), path_(std::exchange(other.path_, {})),
      fd_(std::exchange(other.fd_, -1)), pending_(std::move(other.pending_)),
      pending_offset_(other.pending_offset_)
{
}

OutputFile::~OutputFile()
{
    if (!path_.empty()) {
        unlink(path_.c_str());
        is_unfinished = false;
    }
    if (fd_ >= 0) {
        close(fd_);
    }
}

void OutputFile::write_through(std::int64_t offset, std::string_view bytes) const
{
    while (!bytes.empty()) {
        const ssize_t written = pwrite(fd_, bytes.data(), bytes.size(), offset);
        if (written < 0 && errno != EINTR) {
            fail(final_path_);
        }
        if (written > 0) {
            bytes.remove_prefix(static_cast<std::size_t>(written));
            offset += written;
        }
    }
}

void OutputFile::flush()
{
    write_through(pending_offset_, pending_);
    pending_.clear();
}

void OutputFile::write_at(std::int64_t offset, std::string_view bytes)
{
    const bool adjoins = offset == pending_offset_ + static_cast<std::int64_t>(pending_.size());
    const bool large = bytes.size() > kCollected / 2;
    if (!adjoins || large || pending_.size() + bytes.size() > kCollected) {
        flush();
        pending_offset_ = offset;
    }
    if (large) {
        write_through(offset, bytes);
        pending_offset_ += static_cast<std::int64_t>(bytes.size());
    } else {
        pending_.append(bytes);
    }
}

void OutputFile::read_at(std::int64_t offset, char *to, std::size_t count)
{
    flush();
    while (count > 0) {
        const ssize_t got = pread(fd_, to, count, offset);
        if (got == 0 || (got < 0 && errno != EINTR)) {
            throw Fault("cannot read back what was written beside " + final_path_);
        }
        if (got > 0) {
            to += got;
            offset += got;
            count -= static_cast<std::size_t>(got);
        }
    }
}

void OutputFile::commit(std::int64_t size)
{
    flush();
    if (ftruncate(fd_, size) != 0 || fchmod(fd_, usual_mode()) != 0 || close(std::exchange(fd_, -1)) != 0 ||
        std::rename(path_.c_str(), final_path_.c_str()) != 0) {
        fail(final_path_);
    }
    path_.clear();
    is_unfinished = false;
}

void remove_output_on_signals()
{
    std::signal(SIGXFSZ, SIG_IGN); // then a limit is an error like a full disk
    std::signal(SIGPIPE, SIG_IGN); // messages that nobody reads are no reason to end
    for (const int number : {SIGHUP, SIGINT, SIGQUIT, SIGTERM, SIGXCPU}) {
        struct sigaction action {
        };
        if (sigaction(number, nullptr, &action) == 0 && action.sa_handler == SIG_DFL) {
            action.sa_handler = remove_and_end;
            sigaction(number, &action, nullptr);
        }
    }
}
