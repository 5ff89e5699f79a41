// SPDX-License-Identifier: MIT
// SHA-256 of a file, a piece at a time.
#ifndef TRESK_REPORT_DIGEST_H
#define TRESK_REPORT_DIGEST_H

#include <cstdint>
#include <memory>
#include <string>

struct evp_md_ctx_st;

namespace report
{

class FileDigest
{
  public:
    // Of a path that is no regular file nothing is read: what comes out of a pipe is for the comparison.
    explicit FileDigest(const std::string &path);
    FileDigest(const FileDigest &) = delete;
    FileDigest &operator=(const FileDigest &) = delete;
    ~FileDigest();

    // Takes in the next piece. False when there is nothing more to do.
    bool step();

    // When all is done: in lower-case hexadecimal, empty where the file could not be read whole.
    const std::string &sha256() const
    {
        return sha256_;
    }

    // Bytes taken in; -1 of what is no regular file.
    std::int64_t size() const
    {
        return size_;
    }

  private:
    struct FreeContext {
        void operator()(evp_md_ctx_st *context) const;
    };
    void finish(bool is_whole);

    int fd_ = -1;
    std::int64_t size_ = -1;
    std::unique_ptr<evp_md_ctx_st, FreeContext> context_;
    std::unique_ptr<char[]> piece_;
    std::string sha256_;
};

} // namespace report

#endif
