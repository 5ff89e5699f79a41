// SPDX-License-Identifier: MIT
#include "report/page_parts.h"
#include "report/page_words.h"
#include "report/text.h"
#include "report/words.h"

namespace report
{

namespace
{

std::string file_name(const std::string &path)
{
    const std::size_t slash = path.find_last_of('/');
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

void write_grade(std::ostream &out, const Result &result)
{
    out << "<h1><span class=\"grade g" << result.grade << "\">" << grade_word(result.grade) << "</span> "
        << name_text(file_name(result.regression.path)) << "</h1>\n<p class=\"meaning\">"
        << grade_meaning(result.grade) << ".</p>\n";
    if (!result.died.empty()) {
        out << "<p class=\"aloud\"><b>No grade:</b> " << html_text(result.died)
            << ". What follows is what was known until then.</p>\n";
    }
}

void write_counts(std::ostream &out, const Result &result)
{
    const Counts &counts = result.counts;
    out << "<ul class=\"counts\">\n<li><b>" << counts.failing << "</b> of " << counts.pairs
        << " judged pairs fail</li>\n<li><b>" << counts.missing << "</b> missing</li>\n<li><b>"
        << counts.differences << "</b> different</li>\n";
    if (counts.unjudged != 0) {
        out << "<li><b>" << counts.unjudged << "</b> without bearing on the grade</li>\n";
    }
    out << "</ul>\n";
    if (result.truncated != 0) {
        out << "<p>Findings that are only counted, the least bad ones: <b>" << result.truncated
            << "</b>.</p>\n";
    }
}

void write_file(std::ostream &out, const char *word, const InputFile &file)
{
    out << "<dt>" << word << "</dt><dd><code>" << html_text(file.path) << "</code> <span class=\"hint\">";
    if (file.was_read) {
        out << read_result_word(file.read_result);
        if (file.format != NO_DATA) {
            out << ", " << format_word(file.format);
        }
    } else {
        out << "not read";
    }
    if (file.bytes >= 0) {
        out << ", " << file.bytes << " bytes";
    }
    out << "</span></dd>\n";
}

void write_facts(std::ostream &out, const PageView &view)
{
    const Options &options = view.result.options;
    out << "<dl class=\"facts\">\n";
    write_file(out, "golden", view.result.golden);
    write_file(out, "regression", view.result.regression);
    if (!options.mode.empty()) { // not known where the comparison died too early
        out << "<dt>tolerances</dt><dd>absolute <b>" << number_text(options.abstol) << "</b>, relative <b>"
            << number_text(options.reltol) << "</b>, mode <b>" << html_text(options.mode) << "</b>"
            << (options.desert ? ", -desert" : "") << "</dd>\n";
    }
    out << "<dt>command</dt><dd><code id=\"command\">" << html_text(shell_line(view.input.command))
        << "</code></dd>\n</dl>\n";
}

// The grade follows the first of the bits in a fixed order, which is not that of how bad they are.
void write_hidden(std::ostream &out, const Result &result)
{
    for (const BitMeaning &bit : bit_meanings()) {
        if ((result.hidden & bit.bit) != 0) {
            out << "<p class=\"aloud\"><b>The grade " << grade_word(result.grade)
                << " hides something worse:</b> " << bit.meaning << " (bit " << bit.bit << ").</p>\n";
        }
    }
    const unsigned gone = result.status & ~result.masked;
    if (gone != 0) {
        out << "<p class=\"aloud\"><b>The masks took " << gone << " out of the exit status " << result.status
            << ":</b> what these bits stand for is listed below and does not count.</p>\n";
    }
}

// Each bit that is set, with what becomes of it.
void write_status(std::ostream &out, const Result &result)
{
    out << "<p>Exit status <b>" << result.masked << "</b>";
    if (result.status != result.masked) {
        out << ", before the masks <b>" << result.status << "</b>";
    }
    if (result.status == 0) {
        out << ": nothing was found.</p>\n";
        return;
    }
    out << ":</p>\n<ul class=\"bits\">\n";
    for (const BitMeaning &bit : bit_meanings()) {
        if ((result.status & bit.bit) != 0) {
            out << "<li><b>" << bit.bit << "</b> " << bit.meaning
                << ((result.masked & bit.bit) == 0 ? " <em>(masked out)</em>" : "") << "</li>\n";
        }
    }
    out << "</ul>\n";
    write_hidden(out, result);
}

} // namespace

void write_head(std::ostream &out, const PageView &view)
{
    const Result &result = view.result;
    out << "<header>\n";
    write_grade(out, result);
    write_counts(out, result);
    write_facts(out, view);
    if (result.grade != kNoGrade) {
        write_status(out, result);
    }
    out << "</header>\n";
}

} // namespace report
