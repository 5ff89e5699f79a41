// SPDX-License-Identifier: MIT
#include "read/index_file.h"

#include "read/index_table.h"
#include "read/signal_totals.h"
#include "support/memory.h"
#include "support/os_layer.h"
#include "support/settings.h"
#include "support/shared_file.h"
#include "support/transcript.h"

#include <algorithm>
#include <cinttypes>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <unistd.h>
#include <utility>

std::int64_t file_end = 0;

namespace
{

constexpr int kTrailerSearch = 20;       // bytes at the end of a file that may hold the offset's mark
constexpr std::size_t kTrailerMax = 127; // bytes of the offset that are looked at

// The punch file that gets a table, locked, and where it ends without its old table. Written by
// open_punch_file and RemoveExistingIndex.
std::FILE *punch_file = nullptr;
std::int64_t punch_length = 0;

std::string side_file_name(const char *punch_name)
{
    return std::string(punch_name) + ".punindex";
}

// The offset that the trailer of an index table names, or -1 when there is no trailer. The mark
// before it is "!"; the "," is that of tables in which the trailer was an entry.
std::int64_t trailer_offset(std::FILE *stream)
{
    for (int back = 1; back <= kTrailerSearch; ++back) {
        if (fseeko(stream, -back, SEEK_END) != 0) {
            return -1;
        }
        const int byte = std::getc(stream);
        if (byte == ',' || byte == '!') {
            char digits[kTrailerMax + 1] = "";
            return std::fgets(digits, sizeof digits, stream) != nullptr ? std::strtoll(digits, nullptr, 10)
                                                                        : -1;
        }
    }
    return -1;
}

void skip_line(std::FILE *stream)
{
    int byte = 0;
    do {
        byte = std::getc(stream);
    } while (byte != EOF && byte != '\n');
}

// Whether all lines that begin between the offsets are lines of a table, or empty.
bool only_table_lines(std::FILE *stream, std::int64_t from, std::int64_t to)
{
    fseeko(stream, static_cast<off_t>(from), SEEK_SET);
    int column = 0;
    for (std::int64_t at = from; at < to; ++at) {
        const int byte = getc_unlocked(stream);
        if ((column == 0 && byte != '*' && byte != '\n') || (column == 1 && byte != '$') || byte == EOF) {
            return false;
        }
        column = byte == '\n' ? 0 : std::min(column + 1, 2);
    }
    return true;
}

// Whether a table begins at the offset and goes on to the end of the file, but for what begins where
// the trailer is looked for. Data behind an older table must not be cut off with it.
bool index_table_at(std::FILE *stream, std::int64_t offset, std::int64_t length)
{
    if (offset < 0 || fseeko(stream, static_cast<off_t>(offset), SEEK_SET) != 0) {
        return false;
    }
    skip_line(stream);
    char line[128] = "";
    return std::fgets(line, sizeof line, stream) != nullptr && std::strcmp(line, kIndexMarkerLine) == 0 &&
           only_table_lines(stream, offset, length - kTrailerSearch);
}

// Closes indx_fpt. False when anything written to it was lost.
bool close_index()
{
    const bool good = std::ferror(indx_fpt) == 0;
    return std::fclose(std::exchange(indx_fpt, nullptr)) == 0 && good;
}

// Appends the complete table in indx_fpt to the punch file and closes indx_fpt. In a single write: what
// another program appends meanwhile cannot get into the table.
bool append_table(const char *punch_name)
{
    if (std::ferror(indx_fpt) != 0 || std::fflush(indx_fpt) != 0) {
        return false;
    }
    const auto size = static_cast<std::size_t>(ftello(indx_fpt));
    auto *table = static_cast<char *>(f_realloc_large(nullptr, size));
    std::rewind(indx_fpt);
    const bool whole = std::fread(table, 1, size, indx_fpt) == size;
    const int fd = fileno(punch_file);
    const bool appended =
        close_index() && whole && still_named(fd, punch_name) && append_at(fd, punch_length, table, size);
    std::free(table);
    return appended;
}

[[noreturn]] void end_with_index_problem()
{
    transcript_puts("Problem appending index table to punch file.\n");
    end_run(1);
}

// The offset at which MIREL wants reading to begin; 0 for anything that is no offset.
std::int64_t mirel_offset()
{
    const char *text = std::getenv("MIREL_PUNCH_ADDITIONS");
    return text != nullptr ? std::max(std::strtoll(text, nullptr, 10), 0LL) : 0;
}

} // namespace

int RemoveExistingIndex(const char *, std::FILE *stream)
{
    fseeko(stream, 0, SEEK_END);
    punch_length = ftello(stream);
    std::int64_t data_end = trailer_offset(stream);
    if (!index_table_at(stream, data_end, punch_length) || !ends_at(fileno(stream), punch_length)) {
        data_end = punch_length;
    } else if (tundra_os_truncate_file(fileno(stream), data_end)) {
        punch_length = data_end;
    }
    fseeko(stream, static_cast<off_t>(data_end), SEEK_SET);
    return 1;
}

bool open_punch_file(const char *name, PunchStream &stream)
{
    punch_file = open_locked(name);
    if (punch_file == nullptr || fseeko(punch_file, 0, SEEK_END) != 0) { // nothing can be appended to a pipe
        return false;
    }
    RemoveExistingIndex(name, punch_file);
    file_end = ftello(punch_file);
    // Both descriptors move the same position, which is of no use to punch_file from here on.
    const int fd = fcntl(fileno(punch_file), F_DUPFD_CLOEXEC, 0);
    if (fd < 0 || lseek(fd, 0, SEEK_SET) < 0) {
        return false;
    }
    stream_attach(stream, fd);
    return true;
}

const char *open_index(const char *punch_name, PunchStream &stream)
{
    if (indexmirel) {
        stream_seek(stream, mirel_offset());
        const char *name = std::getenv("KORSIM3_INDEX_FILENAME");
        indx_fpt = std::fopen(name != nullptr ? name : "", "ab");
        if (indx_fpt == nullptr) {
            return name != nullptr ? name : "";
        }
        static char buffer[kMirelBuffer];
        std::setvbuf(indx_fpt, buffer, _IOFBF, sizeof buffer);
        return nullptr;
    }
    static std::string side_name;
    side_name = side_file_name(punch_name);
    indx_fpt = create_anew(side_name.c_str());
    if (indx_fpt == nullptr) {
        return side_name.c_str();
    }
    std::fputs(kIndexFirstLine, indx_fpt);
    std::fputs(kIndexMarkerLine, indx_fpt);
    return nullptr;
}

void finish_index(const char *punch_name)
{
    if (indexmirel) {
        if (!close_index()) {
            end_with_index_problem();
        }
        return;
    }
    print_signal_totals();
    std::fprintf(indx_fpt, "*$!%" PRId64 "\n\n", file_end);
    if (!append_table(punch_name)) {
        end_with_index_problem();
    }
    unlink(side_file_name(punch_name).c_str());
    std::fclose(punch_file); // lets the next run in, not before its side file is safe from this one
    if (pun_index == 1) {
        transcript_puts("  WARNING : File is empty. (index table not added)\n");
    }
}
