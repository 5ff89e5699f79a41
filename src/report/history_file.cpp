// SPDX-License-Identifier: MIT
#include "report/history_file.h"

#include "report/embedded.h"
#include "report/history.h"
#include "report/text.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace report
{

namespace
{

using namespace std::string_view_literals;

// What SQLite's file format has at its beginning.
constexpr std::size_t kHeadSize = 100;
constexpr std::string_view kMagic = "SQLite format 3\0"sv;
constexpr std::size_t kWriteVersionAt = 18;
constexpr std::size_t kReadVersionAt = 19;
constexpr char kWriteAhead = 2;
constexpr std::size_t kUserVersionAt = 60;
constexpr std::size_t kApplicationAt = 68;

constexpr std::uint32_t kApplication = 0x74724869; // "trHi"
constexpr std::uint32_t kVersion = 1;              // of the tables

[[noreturn]] void refuse(const std::string &path, const std::string &why)
{
    throw HistoryFault(terminal_line(path) + ": " + why);
}

[[noreturn]] void refuse_errno(const std::string &path)
{
    refuse(path, std::strerror(errno));
}

class Descriptor
{
  public:
    explicit Descriptor(int fd) : fd_(fd)
    {
    }
    ~Descriptor()
    {
        close(fd_);
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;

    int get() const
    {
        return fd_;
    }

  private:
    int fd_;
};

std::uint32_t big_endian(const std::array<char, kHeadSize> &head, std::size_t at)
{
    std::uint32_t number = 0;
    for (std::size_t i = at; i < at + 4; ++i) {
        number = number << 8 | static_cast<unsigned char>(head[i]);
    }
    return number;
}

// Refuses what is no history by its first bytes, before SQLite sees it: opening a database of somebody else
// may already change it, or the files beside it.
void check_head(const std::string &path)
{
    const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status {
    };
    std::array<char, kHeadSize> head = {};
    if (file.get() < 0 || fstat(file.get(), &status) != 0) {
        refuse_errno(path);
    }
    const bool is_read = S_ISREG(status.st_mode) && read(file.get(), head.data(), head.size()) == kHeadSize;
    if (!is_read || std::string_view(head.data(), kMagic.size()) != kMagic ||
        big_endian(head, kApplicationAt) != kApplication) {
        refuse(path, "this is no history of tresk-report");
    }
    if (big_endian(head, kUserVersionAt) != kVersion) {
        refuse(path, "this history is of version " + std::to_string(big_endian(head, kUserVersionAt)) +
                         "; this program knows version " + std::to_string(kVersion));
    }
}

void make_tables(Sqlite &database)
{
    database.run(std::string(kHistorySchema).c_str());
}

// An empty history that has its kind and its tables from its first byte on, so that no process ever sees half
// of them. It is marked as one whose changes are written ahead into a log of their own.
std::string empty_history()
{
    Sqlite database;
    make_tables(database);
    database.run(("PRAGMA application_id = " + std::to_string(kApplication)).c_str());
    database.run(("PRAGMA user_version = " + std::to_string(kVersion)).c_str());
    std::string image = database.image();
    image.at(kWriteVersionAt) = kWriteAhead;
    image.at(kReadVersionAt) = kWriteAhead;
    return image;
}

void write_whole(int fd, std::string_view bytes, const std::string &path)
{
    while (!bytes.empty()) {
        const ssize_t count = write(fd, bytes.data(), bytes.size());
        if (count < 0 && errno != EINTR) {
            refuse_errno(path);
        }
        bytes.remove_prefix(count < 0 ? 0 : static_cast<std::size_t>(count));
    }
    if (fsync(fd) != 0) {
        refuse_errno(path);
    }
}

// A file that is removed again at the end.
struct Remover {
    const std::string &path;

    ~Remover()
    {
        unlink(path.c_str());
    }
};

void sync_folder_of(const std::string &path)
{
    const std::size_t slash = path.rfind('/');
    const std::string folder = slash == std::string::npos ? "." : path.substr(0, slash + 1);
    const Descriptor descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    fsync(descriptor.get()); // not all file systems can
}

// The tables have to be those of an empty history; views and indexes of others may stand beside them.
void check_tables(Sqlite &database)
{
    Sqlite wanted;
    make_tables(wanted);
    Query tables(wanted, "SELECT type, name, sql FROM sqlite_schema WHERE sql IS NOT NULL");
    Query same(database, "SELECT count(*) FROM sqlite_schema WHERE type = ? AND name = ? AND sql = ?");
    while (tables.next()) {
        if (!same.with(tables.text(0), tables.text(1), tables.text(2)).next() || same.integer(0) != 1) {
            database.fail("this history has lost its " + tables.text(0) + " " + tables.text(1));
        }
    }
    Query triggers(database, "SELECT count(*) FROM sqlite_schema WHERE type = 'trigger'");
    if (triggers.next() && triggers.integer(0) != 0) {
        database.fail("this history has triggers, which are not of this program");
    }
}

void check_whole(Sqlite &database)
{
    Query check(database, "PRAGMA quick_check(1)");
    const std::string found = check.next() ? check.text(0) : "no answer";
    if (found != "ok") {
        database.fail("the history is damaged: " + found);
    }
}

} // namespace

void make_history(const std::string &path)
{
    const std::string image = empty_history();
    std::string beside = path + ".XXXXXX";
    const Descriptor file(mkostemp(beside.data(), O_CLOEXEC));
    if (file.get() < 0) {
        refuse_errno(path);
    }
    const Remover remover = {beside};
    const mode_t mask = umask(0);
    umask(mask);
    fchmod(file.get(), 0666U & ~mask); // as any other file of this user
    write_whole(file.get(), image, path);
    if (link(beside.c_str(), path.c_str()) != 0 &&
        errno != EEXIST) { // another process was first: all is well
        refuse_errno(path);
    }
    sync_folder_of(path);
}

std::unique_ptr<Sqlite> open_history(const std::string &path, History::Access access)
{
    check_head(path);
    auto database = std::make_unique<Sqlite>(path);
    check_tables(*database);
    if (access == History::Access::WRITE) {
        check_whole(*database);
        database->allow_writing();
    }
    database->trust();
    return database;
}

} // namespace report
