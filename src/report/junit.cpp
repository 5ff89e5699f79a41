// SPDX-License-Identifier: MIT
#include "report/page_words.h"
#include "report/text.h"
#include "report/tree_view.h"

#include <array>
#include <charconv>
#include <map>
#include <pugixml.hpp>
#include <unordered_map>

namespace report
{

namespace
{

// Servers refuse results of 30 MB or 250,000 elements.
constexpr std::size_t kMostBytes = 19000000;
constexpr std::size_t kMostElements = 195000;

constexpr const char *kTop = "tree";           // the class of a pair outside all folders
constexpr const char *kUnnamed = "(left out)"; // the suite of what has no other one

// What there is room for.
class Room
{
  public:
    // Whether so much fits in, which then is taken.
    bool take(std::size_t elements, std::size_t bytes)
    {
        if (elements > elements_ || bytes > bytes_) {
            return false;
        }
        elements_ -= elements;
        bytes_ -= bytes;
        return true;
    }

  private:
    std::size_t elements_ = kMostElements;
    std::size_t bytes_ = kMostBytes;
};

std::size_t escaped_size(const std::string &text)
{
    std::size_t size = text.size();
    for (const char c : text) {
        size += c == '&' || c == '<' || c == '>' || c == '"' ? 5 : 0;
    }
    return size;
}

std::string seconds_text(double seconds)
{
    std::array<char, 400> room;
    const auto end =
        std::to_chars(room.data(), room.data() + room.size(), seconds, std::chars_format::fixed, 3);
    return {room.data(), end.ptr};
}

// A test case: a pair.
struct Case {
    std::string class_name; // the folders, joined by dots
    std::string name;
    std::string message; // what is wrong; empty of what passes
    std::string findings;
    std::string out;
    std::string_view type;
    std::optional<double> seconds;
    bool is_error = false; // rather than a failure: nothing was judged, or it cannot be worse

    // About what it takes in the file.
    std::size_t bytes() const
    {
        constexpr std::size_t kTags = 220;
        return kTags + escaped_size(class_name) + escaped_size(name) + escaped_size(message) +
               escaped_size(findings) + escaped_size(out);
    }
    std::size_t elements() const
    {
        return 1U + (message.empty() ? 0U : 1U) + (out.empty() ? 0U : 1U);
    }
};

std::string message_of(const TreePair &pair)
{
    std::string message;
    const auto add = [&message](const std::string &text) {
        message += (message.empty() ? "" : ", ") + text;
    };
    const std::int64_t found = pair.failing + pair.missing + pair.differences;
    if (found != 0) {
        add(std::to_string(found) + (found == 1 ? " finding" : " findings"));
    }
    if (pair.abs && pair.rel) {
        add("worst " + pair.signal + ' ' + pair.analysis + " abs " + four_digits(*pair.abs) + " rel " +
            four_digits(*pair.rel));
    }
    if (!pair.remark.empty()) {
        add(pair.remark);
    }
    return clean_text(message.empty() ? std::string(tree_grade_word(pair.grade)) : message);
}

// The path without its last part, with dots for slashes.
std::string class_of(const std::string &path)
{
    const std::size_t slash = path.rfind('/');
    std::string folders = slash == std::string::npos ? kTop : path.substr(0, slash);
    for (char &c : folders) {
        c = c == '/' ? '.' : c;
    }
    return clean_text(folders);
}

std::string suite_of(const std::string &path)
{
    const std::size_t slash = path.find('/');
    return slash == std::string::npos ? kTop : path.substr(0, slash);
}

Case case_of(const TreeView &view, std::size_t number)
{
    const TreePair &pair = view.run.pairs[number];
    const bool is_accepted =
        pair.grade == 0 || (view.accepted >> static_cast<unsigned>(pair.grade) & 1U) != 0;
    Case made;
    made.class_name = class_of(pair.path);
    made.name = clean_text(pair.path.substr(pair.path.rfind('/') + 1));
    made.seconds = pair.seconds;
    if (!is_accepted) {
        made.type = tree_grade_word(pair.grade);
        made.is_error = pair.grade >= 5;
        made.message = message_of(pair);
        for (const std::string &line : view.worst[number]) {
            made.findings += clean_text(line) + '\n';
        }
    }
    if (pair.has_page) {
        made.out = "[[ATTACHMENT|" + clean_text(view.run.report_folder(pair)) + "/report.html]]";
    }
    return made;
}

struct Suite {
    std::map<std::string, Case> cases; // by path
    std::int64_t passed_out = 0;       // what is left out, of those that pass and of the others
    std::int64_t others_out = 0;
};

// The worst pairs that there is room for, by their first folders.
std::map<std::string, Suite> choose_cases(const TreeView &view)
{
    std::map<std::string, Suite> suites;
    std::unordered_map<std::string, int> names; // and how many there are
    Room room;
    for (std::size_t i = 0; i < view.run.pairs.size(); ++i) {
        const std::string &path = view.run.pairs[i].path;
        const std::string suite = suite_of(path);
        Case made = case_of(view, i);
        constexpr std::size_t kSuiteBytes = 500;
        const bool is_new = suites.count(suite) == 0;
        if (!room.take(made.elements() + (is_new ? 2 : 0),
                       made.bytes() + (is_new ? kSuiteBytes + escaped_size(suite) : 0))) {
            Suite &named = suites[is_new ? kUnnamed : suite];
            ++(made.message.empty() ? named.passed_out : named.others_out);
            continue;
        }
        // Of two cases of the same name servers drop one: folders may hold dots, and bytes become clean text.
        const std::string plain = made.name;
        int &same = names[made.class_name + '\n' + plain];
        for (++same; same > 1 && names.count(made.class_name + '\n' + made.name) != 0; ++same) {
            made.name = plain + " (" + std::to_string(same) + ")";
        }
        names.emplace(made.class_name + '\n' + made.name, 1);
        suites[suite].cases.emplace(path, std::move(made));
    }
    return suites;
}

void add_case(pugi::xml_node suite, const Case &made)
{
    pugi::xml_node node = suite.append_child("testcase");
    node.append_attribute("classname") = made.class_name.c_str();
    node.append_attribute("name") = made.name.c_str();
    if (made.seconds) {
        node.append_attribute("time") = seconds_text(*made.seconds).c_str();
    }
    if (!made.message.empty()) {
        pugi::xml_node wrong = node.append_child(made.is_error ? "error" : "failure");
        wrong.append_attribute("type") = std::string(made.type).c_str();
        wrong.append_attribute("message") = made.message.c_str();
        wrong.text().set(made.findings.c_str());
    }
    if (!made.out.empty()) {
        node.append_child("system-out").text().set(made.out.c_str());
    }
}

struct Totals {
    std::size_t tests = 0;
    std::size_t failures = 0;
    std::size_t errors = 0;
    double seconds = 0.0;

    void add(const Case &made)
    {
        ++tests;
        failures += !made.message.empty() && !made.is_error ? 1 : 0;
        errors += made.is_error ? 1 : 0;
        seconds += made.seconds.value_or(0.0);
    }
    void put(pugi::xml_node node) const
    {
        node.append_attribute("tests") = std::to_string(tests).c_str();
        node.append_attribute("failures") = std::to_string(failures).c_str();
        node.append_attribute("errors") = std::to_string(errors).c_str();
        node.append_attribute("time") = seconds_text(seconds).c_str();
    }
};

void add_suite(pugi::xml_node root, const std::string &name, const Suite &suite)
{
    pugi::xml_node node = root.append_child("testsuite");
    node.append_attribute("name") = clean_text(name).c_str();
    Totals totals;
    for (const auto &[path, made] : suite.cases) {
        totals.add(made);
    }
    totals.put(node);
    for (const auto &[path, made] : suite.cases) {
        add_case(node, made);
    }
    if (suite.passed_out + suite.others_out != 0) {
        const std::string text = "Left out for their number: " + std::to_string(suite.passed_out) +
                                 " pairs that pass, " + std::to_string(suite.others_out) +
                                 " that do not. All are in tree.csv.";
        node.append_child("system-out").text().set(text.c_str());
    }
}

} // namespace

void write_junit(std::ostream &out, const TreeView &view)
{
    const std::map<std::string, Suite> suites = choose_cases(view);
    pugi::xml_document document;
    pugi::xml_node declaration = document.append_child(pugi::node_declaration);
    declaration.append_attribute("version") = "1.0";
    declaration.append_attribute("encoding") = "UTF-8";
    pugi::xml_node root = document.append_child("testsuites");
    root.append_attribute("name") = "tresk";
    Totals totals;
    for (const auto &[name, suite] : suites) {
        for (const auto &[path, made] : suite.cases) {
            totals.add(made);
        }
    }
    totals.put(root);
    for (const auto &[name, suite] : suites) {
        add_suite(root, name, suite);
    }
    document.save(out, "", pugi::format_indent, pugi::encoding_utf8);
}

} // namespace report
