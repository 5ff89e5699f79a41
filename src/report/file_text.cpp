// SPDX-License-Identifier: MIT
#include "report/file_text.h"

#include "report/output_folder.h"
#include "report/text.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <sys/stat.h>
#include <unistd.h>

namespace report
{

namespace
{

std::string read_all(int fd, std::size_t size)
{
    std::string text(size, '\0');
    std::size_t held = 0;
    while (held < size) {
        const ssize_t got = read(fd, text.data() + held, size - held);
        if (got == 0 || (got < 0 && errno != EINTR)) {
            break;
        }
        held += got > 0 ? static_cast<std::size_t>(got) : 0;
    }
    text.resize(held);
    return text;
}

} // namespace

std::optional<std::string> read_text(const std::string &path, std::size_t most)
{
    const int fd = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK); // a pipe must not hold us up
    if (fd < 0) {
        return std::nullopt;
    }
    struct stat status {
    };
    std::optional<std::string> text;
    if (fstat(fd, &status) == 0 && S_ISREG(status.st_mode)) {
        text = read_all(fd, std::min(most, static_cast<std::size_t>(status.st_size)));
    }
    close(fd);
    return text;
}

std::vector<std::string_view> lines_of(std::string_view text)
{
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        lines.push_back(take_field(text, '\n'));
    }
    return lines;
}

std::string_view take_field(std::string_view &text, char separator)
{
    const std::size_t end = text.find(separator);
    const std::string_view field = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return field;
}

std::optional<double> read_number(std::string_view text)
{
    double value = 0.0;
    const char *end = text.data() + text.size();
    const auto [behind, error] = std::from_chars(text.data(), end, value);
    return error == std::errc() && behind == end ? std::optional<double>(value) : std::nullopt;
}

void replace_file(const std::string &path, const std::function<void(std::ostream &)> &content)
{
    const std::string beside = path + ".new";
    errno = 0;
    std::ofstream out(beside, std::ios::binary);
    if (out) {
        content(out);
        out.close();
    }
    if (!out || std::rename(beside.c_str(), path.c_str()) != 0) {
        const int error = errno;
        unlink(beside.c_str());
        throw WriteFault("cannot write " + terminal_line(path) + ": " +
                         std::strerror(error != 0 ? error : EIO));
    }
}

} // namespace report
