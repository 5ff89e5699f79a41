// SPDX-License-Identifier: MIT
#include "report/blessing_log.h"

#include "report/file_steps.h"
#include "report/text.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <stdexcept>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace report
{

namespace
{

constexpr mode_t kMode = S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP | S_IROTH;

[[noreturn]] void fail(const std::string &path)
{
    throw std::runtime_error("cannot write " + terminal_line(path) + ": " + std::strerror(errno));
}

// The last bytes of a file, so many or all.
std::string tail_of(int fd, std::size_t size)
{
    const off_t end = lseek(fd, 0, SEEK_END);
    const auto all = static_cast<std::size_t>(end > 0 ? end : 0);
    std::string tail(size < all ? size : all, '\0');
    const ssize_t got = pread(fd, tail.data(), tail.size(), static_cast<off_t>(all - tail.size()));
    return got == static_cast<ssize_t>(tail.size()) ? tail : std::string();
}

} // namespace

std::string log_field(const std::string &bytes)
{
    std::string field;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '\\') {
            field += "\\\\";
        } else if (c == '\t' || c == '\n') {
            field += c == '\t' ? "\\t" : "\\n";
        } else if (byte < ' ' || byte == 0x7f) {
            field += "\\x" + hexadecimal(std::string_view(&c, 1));
        } else {
            field += c;
        }
    }
    return field;
}

BlessingLog::BlessingLog(const std::string &golden_tree)
    : tree_(golden_tree), pending_(golden_tree + "/blessings.pending")
{
    const std::string path = tree_ + "/blessings.tsv";
    fd_ = open(path.c_str(), O_RDWR | O_APPEND | O_CREAT | O_CLOEXEC | O_NOFOLLOW, kMode);
    if (fd_ < 0) {
        fail(path);
    }
    while (flock(fd_, LOCK_EX) != 0) {
        if (errno != EINTR) {
            close(fd_);
            fail(path);
        }
    }
}

BlessingLog::~BlessingLog()
{
    close(fd_);
}

std::string BlessingLog::finish_interrupted()
{
    std::string name;
    std::string digest;
    {
        std::ifstream note(pending_);
        const bool is_whole =
            std::getline(note, name) && std::getline(note, digest) && std::getline(note, line_);
        if (!is_whole) {
            withdraw(); // there is none
            return {};
        }
    }
    const std::string golden = tree_ + '/' + name;
    unlink((golden + ".blessing").c_str());
    if (plain_digest(golden) != digest) {
        withdraw();
        return "an interrupted blessing was not done: " + terminal_line(name);
    }
    const std::string wanted = line_ + '\n';
    if (tail_of(fd_, wanted.size()) == wanted) {
        withdraw();
        return {};
    }
    record();
    return "an interrupted blessing is now on record: " + terminal_line(name);
}

void BlessingLog::announce(const std::string &name, const std::string &new_digest,
                           const std::vector<std::string> &fields)
{
    line_.clear();
    for (const std::string &field : fields) {
        line_ += line_.empty() ? "" : "\t";
        line_ += log_field(field);
    }
    const std::string note = name + '\n' + new_digest + '\n' + line_ + '\n';
    const std::string new_note = pending_ + ".new";
    make_file(new_note, kMode, [&](int fd) { write_text(fd, note, new_note); });
    put_in_place(new_note, pending_);
}

void BlessingLog::record()
{
    append(line_);
    withdraw();
}

void BlessingLog::withdraw()
{
    if (unlink(pending_.c_str()) != 0 && errno != ENOENT) {
        fail(pending_);
    }
}

void BlessingLog::append(const std::string &line)
{
    const std::string last = tail_of(fd_, 1); // of a line that a full disk has cut
    const std::string text = (last.empty() || last == "\n" ? "" : "\n") + line + '\n';
    const std::string path = tree_ + "/blessings.tsv";
    write_text(fd_, text, path);
    if (fsync(fd_) != 0) {
        fail(path);
    }
}

} // namespace report
