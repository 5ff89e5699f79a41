// SPDX-License-Identifier: MIT
// Punch files that the kit keeps compressed: .gz and .zst.
#ifndef TRESK_REPORT_PLAIN_FILE_H
#define TRESK_REPORT_PLAIN_FILE_H

#include <string>

namespace report
{

// ".gz", ".zst" or nothing.
std::string packing_of(const std::string &path);

// Runs gzip or zstd, as a packing says, from a file to a descriptor, to compress it or to undo that; copies
// where the packing is empty. Throws std::runtime_error.
enum class Direction { PACK, UNPACK };
void convert_file(const std::string &from, int to, const std::string &packing, Direction direction);

// A file to be compared: itself, or what is in it in a file below TMPDIR, which is gone at the end.
class PlainFile
{
  public:
    // Throws std::runtime_error.
    explicit PlainFile(const std::string &path);
    PlainFile(const std::string &path, const std::string &packing);
    PlainFile(const PlainFile &) = delete;
    PlainFile &operator=(const PlainFile &) = delete;
    ~PlainFile();

    const std::string &path() const
    {
        return path_;
    }

  private:
    std::string path_;
    bool is_own_ = false;
};

} // namespace report

#endif
