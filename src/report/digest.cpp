// SPDX-License-Identifier: MIT
#include "report/digest.h"

#include "report/text.h"

#include <cerrno>
#include <cstddef>
#include <fcntl.h>
#include <openssl/evp.h>
#include <sys/stat.h>
#include <unistd.h>

namespace report
{

namespace
{

constexpr std::size_t kPiece = std::size_t{256} << 10;

} // namespace

void FileDigest::FreeContext::operator()(evp_md_ctx_st *context) const
{
    EVP_MD_CTX_free(context);
}

FileDigest::FileDigest(const std::string &path)
{
    struct stat status {
    };
    // Opened only when it is known to be a file: opening a pipe may wait for ever, and changes what it holds.
    if (stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return;
    }
    fd_ = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    context_.reset(EVP_MD_CTX_new());
    if (fd_ < 0 || !context_ || EVP_DigestInit_ex(context_.get(), EVP_sha256(), nullptr) != 1) {
        finish(false);
        return;
    }
    size_ = 0;
    piece_ = std::make_unique<char[]>(kPiece);
}

FileDigest::~FileDigest()
{
    finish(false);
}

bool FileDigest::step()
{
    if (fd_ < 0) {
        return false;
    }
    const ssize_t got = read(fd_, piece_.get(), kPiece);
    if (got < 0 && errno == EINTR) {
        return true;
    }
    const bool is_taken =
        got > 0 && EVP_DigestUpdate(context_.get(), piece_.get(), static_cast<std::size_t>(got)) == 1;
    if (is_taken) {
        size_ += got;
        return true;
    }
    finish(got == 0);
    return false;
}

void FileDigest::finish(bool is_whole)
{
    unsigned char bytes[EVP_MAX_MD_SIZE];
    unsigned count = 0;
    if (is_whole && EVP_DigestFinal_ex(context_.get(), bytes, &count) == 1) {
        sha256_ = hexadecimal({reinterpret_cast<const char *>(bytes), count});
    }
    if (fd_ >= 0) {
        close(fd_);
        fd_ = -1;
    }
    piece_.reset();
}

} // namespace report
