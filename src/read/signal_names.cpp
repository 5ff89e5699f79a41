// SPDX-License-Identifier: MIT
#include "read/signal_names.h"

#include <cctype>
#include <cstring>

namespace
{

void convert_values(Isoln *values)
{
    for (Isoln *value = values; value != nullptr; value = value->next) {
        convert_toupper(value->name);
        convert_toupper(value->yunits);
    }
}

void convert_modify(MODIFYform &modify)
{
    convert_values(modify.inop);
    convert_values(modify.intr);
    convert_values(modify.inpss);
    if (modify.indc != nullptr) {
        convert_values(modify.indc->first);
        convert_values(modify.indc->second);
    }
    // Kept: of a modify with both .FORCE lists the PSS names keep their case (docs/verdict.md, "What
    // only one file has").
    for (TPsoln *force = modify.trforce != nullptr ? modify.trforce : modify.pssforce; force != nullptr;
         force = force->next) {
        convert_values(force->isoln);
    }
    convert_values(modify.op);
    for (Wform *wform = modify.wform; wform != nullptr; wform = wform->next) {
        convert_toupper(wform->name);
        convert_toupper(wform->xunits);
        convert_toupper(wform->yunits);
    }
    for (PZform *block = modify.pzform; block != nullptr; block = block->next) {
        convert_toupper(block->iport);
        convert_toupper(block->oport);
    }
}

} // namespace

void convert_toupper(char *text)
{
    if (text == nullptr) {
        return;
    }
    for (char *c = text; *c != '\0'; ++c) {
        if (std::islower(static_cast<unsigned char>(*c)) != 0) {
            *c = static_cast<char>(*c - 32);
        }
    }
    const std::size_t length = std::strlen(text);
    if (length >= 2 && std::strcmp(text + length - 2, ".P") == 0) {
        text[length - 2] = '_';
    }
}

void convert_signal_names(PF *file)
{
    for (RERUNform *rerun = file->rerun; rerun != nullptr; rerun = rerun->next) {
        for (MODIFYform *modify = rerun->modify; modify != nullptr; modify = modify->next) {
            convert_modify(*modify);
        }
    }
}
