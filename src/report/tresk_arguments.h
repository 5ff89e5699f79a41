// SPDX-License-Identifier: MIT
// Which words of a command line are for tresk. Own options have two dashes, which none of tresk's can be
// taken for, since tresk finds an option by its second character.
#ifndef TRESK_REPORT_TRESK_ARGUMENTS_H
#define TRESK_REPORT_TRESK_ARGUMENTS_H

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

namespace report
{

struct WrongCall : std::runtime_error {
    using std::runtime_error::runtime_error;
};

struct TreskArguments {
    std::vector<std::string> own;     // options with two dashes and their values
    std::vector<std::string> tresk;   // all the others, in their order
    std::vector<std::string> options; // of these, all but the files
    std::string golden;
    std::string regression;
};

// Sorts the words. takes_value answers for an own option, without "=", whether the next word is its value.
// Throws WrongCall for what asks tresk for something else than a comparison, and unless there are two files;
// one is enough where it may be a tree, which is then the golden file.
TreskArguments split_arguments(const std::vector<std::string> &words,
                               const std::function<bool(const std::string &)> &takes_value,
                               bool may_be_tree = false);

} // namespace report

#endif
