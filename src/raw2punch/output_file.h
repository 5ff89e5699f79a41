// SPDX-License-Identifier: MIT
// The file that a conversion makes. It is written beside its final name, which it gets when all went well.
#ifndef RAW2PUNCH_OUTPUT_FILE_H
#define RAW2PUNCH_OUTPUT_FILE_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

class OutputFile
{
  public:
    // Makes a file beside path. Throws Fault when there is something at path that is no regular file, or when
    // nothing can be written there.
    explicit OutputFile(const std::string &path);

    // A file without a name, in the same folder.
    static OutputFile make_nameless(const OutputFile &beside);

    OutputFile(OutputFile &&other) noexcept;
    OutputFile(const OutputFile &) = delete;
    OutputFile &operator=(const OutputFile &) = delete;
    ~OutputFile(); // removes the file unless it was committed

    // Writes bytes at an offset. What adjoins is collected.
    void write_at(std::int64_t offset, std::string_view bytes);

    // Reads bytes that were written.
    void read_at(std::int64_t offset, char *to, std::size_t count);

    // Cuts the file to its size and gives it its final name.
    void commit(std::int64_t size);

  private:
    OutputFile() = default;
    void flush();
    void write_through(std::int64_t offset, std::string_view bytes) const;

    std::string final_path_; // what an existing link leads to
    std::string path_;       // while it is written; empty for a file without a name
    int fd_ = -1;
    std::string pending_;
    std::int64_t pending_offset_ = 0;
};

// From here on a signal that ends the program also removes the file under construction.
void remove_output_on_signals();

#endif
