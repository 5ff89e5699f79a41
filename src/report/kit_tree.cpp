// SPDX-License-Identifier: MIT
#include "report/kit_tree.h"

#include "report/text.h"
#include "report/tresk_arguments.h"

#include <fstream>
#include <sstream>

namespace report
{

namespace
{

[[noreturn]] void refuse(const std::string &out, const std::string &what)
{
    throw WrongCall(terminal_line(out) + " " + what);
}

// What stands behind "name: ".
std::string argument(std::istream &in, const std::string &name, const std::string &out)
{
    std::string line;
    const std::string head = name + ": ";
    if (!std::getline(in, line) || line.compare(0, head.size(), head) != 0) {
        refuse(out, "holds no list of pairs of the kit");
    }
    return line.substr(head.size());
}

std::vector<std::string> words_of(const std::string &text)
{
    std::istringstream in(text);
    std::vector<std::string> words;
    for (std::string word; in >> word;) {
        words.push_back(word);
    }
    return words;
}

// ".gz" of "120/1700000000.5/1700000000.5:.gz".
std::string suffix_of(const std::string &stamp)
{
    const std::size_t colon = stamp.find(':');
    return colon == std::string::npos ? "" : stamp.substr(colon + 1);
}

// Own options, those of all, stamps of both files, path; the last may hold tabs, too.
bool read_pair(const std::string &line, const KitTree &tree, KitPair &pair)
{
    std::string fields[4];
    std::size_t begin = 0;
    for (std::string &field : fields) {
        const std::size_t tab = line.find('\t', begin);
        if (tab == std::string::npos) {
            return false;
        }
        field = line.substr(begin, tab - begin);
        begin = tab + 1;
    }
    pair.path = line.substr(begin);
    pair.golden = tree.golden + '/' + pair.path + suffix_of(fields[2]);
    pair.regression = tree.regression + '/' + pair.path + suffix_of(fields[3]);
    pair.own = words_of(fields[0]);
    pair.options = words_of(fields[1]);
    pair.options.insert(pair.options.end(), pair.own.begin(), pair.own.end());
    return !pair.path.empty();
}

} // namespace

KitTree read_kit_tree(const std::string &out)
{
    KitTree tree;
    tree.out = out;
    std::ifstream arguments(out + "/arguments");
    tree.golden = argument(arguments, "golden", out);
    tree.regression = argument(arguments, "regression", out);
    std::ifstream pairs(out + "/pairs");
    for (std::string line; std::getline(pairs, line);) {
        tree.pairs.emplace_back();
        if (!read_pair(line, tree, tree.pairs.back())) {
            refuse(out, "holds a damaged list of pairs: line " + std::to_string(tree.pairs.size()));
        }
    }
    if (tree.pairs.empty()) {
        refuse(out, "holds no list of pairs");
    }
    return tree;
}

} // namespace report
