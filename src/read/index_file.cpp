// SPDX-License-Identifier: MIT
#include "read/index_file.h"

#include "read/index_table.h"
#include "read/read_state.h"
#include "read/signal_totals.h"
#include "support/os_layer.h"
#include "support/settings.h"
#include "support/transcript.h"

#include <algorithm>
#include <cerrno>
#include <cinttypes>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <string>
#include <unistd.h>
#include <utility>

namespace
{

constexpr int kTrailerSearch = 20;       // bytes at the end of a file that may hold the offset's mark
constexpr std::size_t kTrailerMax = 127; // bytes of the offset that are looked at

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

bool index_table_at(std::FILE *stream, std::int64_t offset)
{
    if (offset < 0 || fseeko(stream, static_cast<off_t>(offset), SEEK_SET) != 0) {
        return false;
    }
    skip_line(stream);
    char line[128] = "";
    return std::fgets(line, sizeof line, stream) != nullptr && std::strcmp(line, kIndexMarkerLine) == 0;
}

// Appends the side file to the punch file. On failure the punch file is cut back to its old length.
bool append_file(const std::string &side_name, const char *punch_name)
{
    std::FILE *from = std::fopen(side_name.c_str(), "rb");
    std::FILE *to = std::fopen(punch_name, "ab");
    bool good = from != nullptr && to != nullptr && fseeko(to, 0, SEEK_END) == 0;
    const std::int64_t old_length = good ? ftello(to) : -1;
    static char block[64 * 1024];
    std::size_t got = 0;
    while (good && (got = std::fread(block, 1, sizeof block, from)) > 0) {
        good = std::fwrite(block, 1, got, to) == got;
    }
    good = good && std::ferror(from) == 0;
    if (from != nullptr) {
        std::fclose(from);
    }
    if (to != nullptr) {
        good = std::fclose(to) == 0 && good;
    }
    if (!good && old_length >= 0) {
        tundra_os_truncate_file(punch_name, old_length);
    }
    return good;
}

// Closes indx_fpt. False when anything written to it was lost.
bool close_index()
{
    const bool good = std::ferror(indx_fpt) == 0;
    return std::fclose(std::exchange(indx_fpt, nullptr)) == 0 && good;
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

int RemoveExistingIndex(const char *name, std::FILE *stream)
{
    const std::int64_t offset = trailer_offset(stream);
    if (index_table_at(stream, offset)) {
        fseeko(stream, static_cast<off_t>(offset), SEEK_SET);
        tundra_os_truncate_file(name, offset);
    } else {
        fseeko(stream, 0, SEEK_END);
    }
    return 1;
}

bool prepare_punch_file(const char *name)
{
    std::FILE *stream = std::fopen(name, "rb+");
    if (stream == nullptr) {
        return false;
    }
    if (fseeko(stream, 0, SEEK_END) != 0) { // a pipe: nothing can be appended to it
        const int reason = errno;
        std::fclose(stream);
        errno = reason;
        return false;
    }
    RemoveExistingIndex(name, stream);
    file_end = ftello(stream);
    std::fclose(stream);
    return true;
}

const char *open_index(const char *punch_name, PunchStream &stream)
{
    if (indexmirel) {
        stream_seek(stream, mirel_offset());
        const char *name = std::getenv("KORSIM3_INDEX_FILENAME");
        indx_fpt = std::fopen(name != nullptr ? name : "", "ab");
        return indx_fpt == nullptr ? (name != nullptr ? name : "") : nullptr;
    }
    static std::string side_name;
    side_name = side_file_name(punch_name);
    indx_fpt = std::fopen(side_name.c_str(), "wb");
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
    const std::string side_name = side_file_name(punch_name);
    if (!close_index() || !append_file(side_name, punch_name)) {
        end_with_index_problem();
    }
    unlink(side_name.c_str());
    if (pun_index == 1) {
        transcript_puts("  WARNING : File is empty. (index table not added)\n");
    }
}
