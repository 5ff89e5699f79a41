// SPDX-License-Identifier: MIT
#include "report/output_folder.h"

#include "report/text.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <fstream>
#include <memory>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace report
{

namespace
{

// In the order in which they get their names.
constexpr const char *kFiles[] = {kTranscriptFile, kJsonFile, kCsvFile, kPageFile, kSummaryFile};

[[noreturn]] void fail(const std::string &path)
{
    const int error = errno;
    throw WriteFault("cannot write " + terminal_line(path) + ": " + std::strerror(error != 0 ? error : EIO));
}

bool exists(const std::string &path)
{
    struct stat status {
    };
    return lstat(path.c_str(), &status) == 0;
}

bool is_folder(const std::string &path)
{
    struct stat status {
    };
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool is_empty_folder(const std::string &path)
{
    struct CloseFolder {
        void operator()(DIR *folder) const
        {
            closedir(folder);
        }
    };
    const std::unique_ptr<DIR, CloseFolder> folder(opendir(path.c_str()));
    if (!folder) {
        fail(path);
    }
    while (const dirent *entry = readdir(folder.get())) {
        if (std::strcmp(entry->d_name, ".") != 0 && std::strcmp(entry->d_name, "..") != 0) {
            return false;
        }
    }
    return true;
}

void remove_file(const std::string &path)
{
    if (unlink(path.c_str()) != 0 && errno != ENOENT) {
        fail(path);
    }
}

} // namespace

OutputFolder::OutputFolder(std::string path) : path_(std::move(path))
{
    make();
    lock();
    try {
        refuse_strangers();
        mark();
    } catch (...) {
        close(fd_);
        throw;
    }
}

OutputFolder::~OutputFolder()
{
    close(fd_);
}

std::string OutputFolder::path_of(const std::string &name) const
{
    return path_ + '/' + name;
}

std::string OutputFolder::new_path_of(const std::string &name) const
{
    return path_of(name) + ".new";
}

void OutputFolder::make()
{
    for (std::size_t slash = path_.find('/', 1); slash != std::string::npos;
         slash = path_.find('/', slash + 1)) {
        make_one(path_.substr(0, slash));
    }
    make_one(path_);
}

void OutputFolder::make_one(const std::string &path)
{
    if (is_folder(path)) {
        return;
    }
    if (exists(path)) {
        throw FolderRefused(terminal_line(path) + " is in the way: not a folder");
    }
    errno = 0;
    if (mkdir(path.c_str(), 0777) == 0) {
        is_made_ = true;
    } else if (errno != EEXIST || !is_folder(path)) { // another process may have been quicker
        fail(path);
    }
}

void OutputFolder::lock()
{
    fd_ = open(path_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd_ < 0) {
        fail(path_);
    }
    // A file system without locks is no reason to write no report.
    while (flock(fd_, LOCK_EX) != 0 && errno == EINTR) {
    }
}

void OutputFolder::refuse_strangers() const
{
    if (!exists(path_of(kSummaryFile)) && !exists(new_path_of(kSummaryFile)) && !is_empty_folder(path_)) {
        throw FolderRefused(terminal_line(path_) + " is in the way: it holds no report");
    }
}

// An older summary must not pass for that of this run, whatever happens from here on. Renaming it needs no
// room on a full disk.
void OutputFolder::mark() const
{
    const std::string marked = new_path_of(kSummaryFile);
    if (std::rename(path_of(kSummaryFile).c_str(), marked.c_str()) == 0) {
        return;
    }
    const int fd = open(marked.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0666);
    if (fd < 0) {
        fail(marked);
    }
    close(fd);
}

int OutputFolder::create(const std::string &name) const
{
    const std::string path = new_path_of(name);
    remove_file(path);
    const int fd = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (fd < 0) {
        fail(path);
    }
    return fd;
}

void OutputFolder::write(const std::string &name, const std::function<void(std::ostream &)> &content) const
{
    const std::string path = new_path_of(name);
    remove_file(path);
    errno = 0;
    std::ofstream out(path, std::ios::binary);
    if (out) {
        content(out);
        out.close();
    }
    if (!out) {
        fail(path);
    }
}

void OutputFolder::commit() const
{
    for (const char *name : kFiles) {
        const std::string from = new_path_of(name);
        if (!exists(from)) {
            remove_file(path_of(name));
        } else if (std::rename(from.c_str(), path_of(name).c_str()) != 0) {
            fail(path_of(name));
        }
    }
}

void OutputFolder::abandon() const
{
    for (const char *name : kFiles) {
        unlink(path_of(name).c_str());
        if (is_made_ || std::strcmp(name, kSummaryFile) != 0) { // the mark stays in a folder that stays
            unlink(new_path_of(name).c_str());
        }
    }
    if (is_made_) {
        rmdir(path_.c_str());
    }
}

} // namespace report
