// SPDX-License-Identifier: MIT
#include "report/page_shell.h"

#include "report/page_words.h"

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

std::string policy(const PageShell &shell)
{
    return "default-src 'none'; base-uri 'none'; form-action 'none'; style-src " +
           digest_source(shell.style) + "; script-src " + digest_source(shell.script);
}

} // namespace

void begin_page(std::ostream &out, const PageShell &shell)
{
    out << "<!doctype html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
        << R"(<meta http-equiv="Content-Security-Policy" content=")" << policy(shell) << "\">\n"
        << "<meta name=\"referrer\" content=\"no-referrer\">\n"
        << "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n<title>"
        << name_text(shell.title) << "</title>\n<style>" << shell.style << "</style>\n</head>\n<body>\n";
}

void write_script(std::ostream &out, std::string_view script)
{
    out << "<script>" << script << "</script>\n";
}

void end_page(std::ostream &out)
{
    out << "</body>\n</html>\n";
}

} // namespace report
