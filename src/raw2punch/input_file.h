// SPDX-License-Identifier: MIT
// A file that is read at any place.
#ifndef RAW2PUNCH_INPUT_FILE_H
#define RAW2PUNCH_INPUT_FILE_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <sys/types.h>

class InputFile
{
  public:
    // Throws Fault when the file cannot be opened, is not a regular file or is compressed.
    explicit InputFile(const std::string &path);
    InputFile(const InputFile &) = delete;
    InputFile &operator=(const InputFile &) = delete;
    ~InputFile();

    const std::string &path() const
    {
        return path_;
    }

    // Length in bytes when it was opened. What a header promises is held against it.
    std::int64_t size() const
    {
        return size_;
    }

    // Reads count bytes at offset, or those up to the end of the file. Returns their number.
    std::size_t read_some(std::int64_t offset, char *to, std::size_t count) const;

    // Reads count bytes at offset. Throws Fault when the file has become shorter than it was.
    void read(std::int64_t offset, char *to, std::size_t count) const;

  private:
    std::string path_;
    int fd_;
    std::int64_t size_ = 0;
};

// Whether both paths lead to one existing file.
bool is_same_file(const std::string &path, const std::string &other);

#endif
