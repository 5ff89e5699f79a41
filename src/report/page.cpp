// SPDX-License-Identifier: MIT
#include "report/page.h"

#include "report/embedded.h"
#include "report/order.h"
#include "report/page_parts.h"
#include "report/page_words.h"
#include "report/text.h"
#include "report/words.h"

#include <algorithm>
#include <array>
#include <openssl/evp.h>

namespace report
{

namespace
{

// What a policy allows a text by: its digest in base64.
std::string digest_source(std::string_view text)
{
    constexpr std::size_t kMost = EVP_MAX_MD_SIZE;
    std::array<unsigned char, kMost> digest = {};
    unsigned size = 0;
    if (EVP_Digest(text.data(), text.size(), digest.data(), &size, EVP_sha256(), nullptr) != 1) {
        return "'none'";
    }
    std::array<unsigned char, 2 *kMost> base64 = {};
    const int length = EVP_EncodeBlock(base64.data(), digest.data(), static_cast<int>(size));
    return "'sha256-" + std::string(base64.begin(), base64.begin() + length) + "'";
}

// The page's own style and script by their digests, and nothing else: no name of a file can become code, and
// nothing is ever loaded or sent.
std::string policy()
{
    return "default-src 'none'; base-uri 'none'; form-action 'none'; style-src " + digest_source(kPageStyle) +
           "; script-src " + digest_source(kPageScript);
}

std::vector<const Figure *> figures_by_finding(const Result &result, const std::vector<Figure> &figures)
{
    std::vector<const Figure *> figure_of(result.findings.size(), nullptr);
    for (const Figure &figure : figures) {
        for (const std::size_t finding : figure.findings) {
            if (figure_of[finding] == nullptr) {
                figure_of[finding] = &figure;
            }
        }
    }
    return figure_of;
}

void write_html_head(std::ostream &out, const Result &result)
{
    out << "<!doctype html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
        << R"(<meta http-equiv="Content-Security-Policy" content=")" << policy() << "\">\n"
        << "<meta name=\"referrer\" content=\"no-referrer\">\n"
        << "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n<title>"
        << grade_word(result.grade) << ' ' << name_text(result.regression.path) << "</title>\n<style>"
        << kPageStyle << "</style>\n</head>\n<body>\n";
}

// Links to the sections that there are.
void write_contents(std::ostream &out, const PageView &view)
{
    const std::vector<Entry> &findings = view.result.findings;
    const auto link_if = [&](bool (*holds)(const Entry &entry), const char *link) {
        if (std::any_of(findings.begin(), findings.end(), holds)) {
            out << link;
        }
    };
    out << "<nav aria-label=\"sections\">";
    link_if([](const Entry &entry) { return group_of(entry.finding) == FindingGroup::FAILING; },
            "<a href=\"#failing\">What fails</a> ");
    out << (view.input.figures.empty() ? "" : "<a href=\"#figures\">Figures</a> ");
    link_if([](const Entry &entry) { return is_tabled(entry.finding); }, "<a href=\"#values\">Values</a> ");
    link_if([](const Entry &entry) { return group_of(entry.finding) != FindingGroup::FAILING; },
            "<a href=\"#others\">Missing and different</a> ");
    out << "<a href=\"#transcript\">Transcript</a> <a href=\"#origin\">What made this page</a></nav>\n";
}

} // namespace

void write_page(std::ostream &out, const Result &result, const PageInput &input)
{
    const PageView view = {result, input, figures_by_finding(result, input.figures)};
    write_html_head(out, result);
    write_head(out, view);
    write_contents(out, view);
    out << "<main>\n";
    if (result.findings.empty() && result.grade == 0) {
        out << "<p class=\"nothing\">All " << result.counts.pairs
            << " judged pairs pass, nothing is missing, nothing differs.</p>\n";
    }
    write_failing(out, view);
    write_figures(out, view);
    write_values(out, view);
    write_missing_and_different(out, view);
    write_transcript(out, view);
    write_origin(out, view);
    out << "</main>\n<script>" << kPageScript << "</script>\n</body>\n</html>\n";
}

} // namespace report
