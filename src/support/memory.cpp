// SPDX-License-Identifier: MIT
#include "support/memory.h"

#include "support/transcript.h"

#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>

const char *const outOfHeap = "Out of main memory (heap/data); run aborted";

namespace
{

constexpr std::size_t kMemErrorSize = 128;

[[noreturn]] void end_with_illegal_argument()
{
    transcript_printf("Error: %s; program exiting...\n", memError);
    end_run(1);
}

void check_count_and_size(const char *function, int count, int size)
{
    if (count < 0 || size < 1) {
        std::snprintf(memError, kMemErrorSize, "Illegal num/size <%d/%d> in call to %s", count, size,
                      function);
        end_with_illegal_argument();
    }
}

[[noreturn]] void end_out_of_heap()
{
    transcript_printf("Error: %s\n", outOfHeap);
    end_run(1);
}

[[noreturn]] void end_out_of_heap(const char *function, double bytes)
{
    transcript_printf("Could not %s %g MBytes of memory", function, bytes * 1e-6);
    end_out_of_heap();
}

char *new_text(const std::string &text)
{
    auto *copy = static_cast<char *>(std::malloc(text.size() + 1));
    if (copy == nullptr) {
        end_out_of_heap("f_malloc", static_cast<double>(text.size() + 1));
    }
    std::memcpy(copy, text.c_str(), text.size() + 1);
    return copy;
}

std::string join(const char *first, std::va_list rest)
{
    std::string joined;
    for (const char *text = first; text != nullptr; text = va_arg(rest, const char *)) {
        joined += text;
    }
    return joined;
}

} // namespace

char memError[kMemErrorSize];

void *f_calloc(int count, int size)
{
    check_count_and_size("calloc", count, size);
    if (count == 0) {
        return nullptr;
    }
    void *block = std::calloc(static_cast<std::size_t>(count), static_cast<std::size_t>(size));
    if (block == nullptr) {
        end_out_of_heap("f_calloc", static_cast<double>(count) * size);
    }
    return block;
}

void *f_malloc(int count, int size)
{
    check_count_and_size("malloc", count, size);
    if (count == 0) {
        return nullptr;
    }
    const std::uint32_t bytes = static_cast<std::uint32_t>(count) * static_cast<std::uint32_t>(size);
    void *block = std::malloc(bytes);
    if (block == nullptr) {
        end_out_of_heap("f_malloc", static_cast<double>(count) * size);
    }
    return block;
}

void *f_realloc(void *block, int size)
{
    if (size < 1) {
        std::snprintf(memError, kMemErrorSize, "Illegal size (%d) in call to realloc", size);
        end_with_illegal_argument();
    }
    return block == nullptr ? f_malloc(1, size) : f_realloc_large(block, static_cast<std::size_t>(size));
}

void *f_realloc_large(void *block, std::size_t size)
{
    void *resized = std::realloc(block, size);
    if (resized == nullptr) {
        end_out_of_heap("f_realloc", static_cast<double>(size));
    }
    return resized;
}

char *f_strdup(const char *text)
{
    if (text == nullptr) {
        return nullptr;
    }
    const std::size_t bytes = std::strlen(text) + 1;
    auto *copy = static_cast<char *>(std::malloc(bytes));
    if (copy == nullptr) {
        // The figure is fixed, whatever the length: log scanners know this line.
        transcript_printf("Could not f_strdup %d Bytes of memory", 8);
        end_out_of_heap();
    }
    std::memcpy(copy, text, bytes);
    return copy;
}

char *f_strndup(const char *text, int length)
{
    if (text == nullptr || length < 1) {
        return nullptr;
    }
    const auto wanted = static_cast<std::size_t>(length);
    auto *copy = static_cast<char *>(std::calloc(wanted + 1, 1));
    if (copy == nullptr) {
        end_out_of_heap("f_malloc", static_cast<double>(wanted + 1));
    }
    std::memcpy(copy, text, strnlen(text, wanted));
    return copy;
}

char *f_strcat(const char *first, ...)
{
    std::va_list rest;
    va_start(rest, first);
    char *joined = new_text(join(first, rest));
    va_end(rest);
    return joined;
}

char *f_strappend(char *owned, ...)
{
    std::va_list rest;
    va_start(rest, owned);
    char *joined = new_text(join(owned, rest));
    va_end(rest);
    std::free(owned);
    return joined;
}

char *f_remove_trailing_components(const char *path, int n)
{
    std::string left = path;
    const auto drop_slashes = [&left] {
        while (!left.empty() && left.back() == '/') {
            left.pop_back();
        }
    };
    drop_slashes();
    for (int i = 0; i < n && !left.empty(); ++i) {
        while (!left.empty() && left.back() != '/') {
            left.pop_back();
        }
        drop_slashes();
    }
    return new_text(left.empty() ? "." : left);
}

const char *f_itoa(int value)
{
    static char digits[16];
    std::snprintf(digits, sizeof digits, "%d", value);
    return digits;
}

void *operator new(std::size_t size)
{
    void *block = std::malloc(size != 0 ? size : 1);
    if (block == nullptr) {
        end_out_of_heap("f_malloc", static_cast<double>(size));
    }
    return block;
}

void *operator new(std::size_t size, const std::nothrow_t &) noexcept
{
    return std::malloc(size != 0 ? size : 1); // for those who can do without
}

void operator delete(void *block) noexcept
{
    std::free(block);
}

void operator delete(void *block, std::size_t) noexcept
{
    std::free(block);
}
