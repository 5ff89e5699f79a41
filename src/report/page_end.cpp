// SPDX-License-Identifier: MIT
#include "report/page_parts.h"
#include "report/page_words.h"
#include "report/text.h"

#include <fstream>

namespace report
{

namespace
{

constexpr std::int64_t kLongestTranscript = 1 << 20;
constexpr std::int64_t kKeptEnd = 64 << 10; // of a longer one, at the beginning and at the end

std::string read_part(std::istream &in, std::int64_t from, std::int64_t size)
{
    std::string part(static_cast<std::size_t>(size), '\0');
    in.clear();
    in.seekg(from);
    in.read(part.data(), static_cast<std::streamsize>(size));
    part.resize(static_cast<std::size_t>(in.gcount()));
    return part;
}

void write_lines(std::ostream &out, const std::string &lines)
{
    // An HTML parser drops a line feed right behind the tag.
    out << "<pre tabindex=\"0\">\n" << html_lines(lines) << "</pre>\n";
}

void write_long_transcript(std::ostream &out, std::istream &in, std::int64_t size)
{
    std::string first = read_part(in, 0, kKeptEnd);
    std::string last = read_part(in, size - kKeptEnd, kKeptEnd);
    // Whole lines, where there are any.
    const std::size_t first_end = first.rfind('\n');
    const std::size_t last_begin = last.find('\n');
    first.erase(first_end == std::string::npos ? first.size() : first_end + 1);
    last.erase(0, last_begin == std::string::npos ? 0 : last_begin + 1);
    write_lines(out, first);
    const auto shown = static_cast<std::int64_t>(first.size() + last.size());
    out << "<p class=\"aloud\">" << size - shown << " bytes are left out here; transcript.txt has all "
        << size << ".</p>\n";
    write_lines(out, last);
}

} // namespace

void write_transcript(std::ostream &out, const PageView &view)
{
    out << "<section id=\"transcript\"><h2>Transcript</h2>\n";
    std::ifstream in(view.input.transcript_path, std::ios::binary | std::ios::ate);
    const std::int64_t size = in ? static_cast<std::int64_t>(in.tellg()) : 0;
    if (size <= 0) {
        out << "<p>There is none.</p>\n";
    } else if (size > kLongestTranscript) {
        write_long_transcript(out, in, size);
    } else {
        write_lines(out, read_part(in, 0, size));
    }
    out << "</section>\n";
}

void write_origin(std::ostream &out, const PageView &view)
{
    out << "<section id=\"origin\"><h2>What made this page</h2>\n<dl class=\"facts\">\n";
    for (const Version &version : view.input.versions) {
        out << "<dt>" << html_text(version.program) << "</dt><dd>" << html_text(version.version) << "</dd>\n";
    }
    out << "<dt>comparison</dt><dd>" << number_text(view.result.seconds) << " seconds</dd>\n";
    for (const auto &[word, file] :
         {std::pair("golden", &view.result.golden), std::pair("regression", &view.result.regression)}) {
        if (!file->sha256.empty()) {
            out << "<dt>" << word << " SHA-256</dt><dd><code>" << file->sha256 << "</code></dd>\n";
        }
    }
    out << "</dl>\n</section>\n";
}

} // namespace report
