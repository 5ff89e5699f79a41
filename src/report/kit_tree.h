// SPDX-License-Identifier: MIT
// What the scripts of the kit leave in their output folder.
#ifndef TRESK_REPORT_KIT_TREE_H
#define TRESK_REPORT_KIT_TREE_H

#include <string>
#include <vector>

namespace report
{

struct KitPair {
    std::string path;   // below both trees, without .gz or .zst
    std::string golden; // whole paths of the files
    std::string regression;
    std::vector<std::string> options; // those of all pairs, then its own
    std::vector<std::string> own;
};

struct KitTree {
    std::string out;
    std::string golden; // the folders
    std::string regression;
    std::vector<KitPair> pairs; // in the order of the list
};

// Reads OUT/arguments and OUT/pairs. Throws WrongCall where there is no list, or one that is damaged.
KitTree read_kit_tree(const std::string &out);

} // namespace report

#endif
