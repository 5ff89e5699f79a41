// SPDX-License-Identifier: MIT
// The length of the longest name, which decides on the width of the name column of every result
// table.
#ifndef TRESK_READ_NAME_LENGTH_H
#define TRESK_READ_NAME_LENGTH_H

#include <cstddef>
#include <cstdint>

// Of the signal and value names of both files; carries over from the first file into the second.
inline std::uint64_t glMaxSigLen = 0;

// Called by every reader of a name. Raises glMaxSigLen.
inline void note_name_length(std::size_t length)
{
    if (length > glMaxSigLen) {
        glMaxSigLen = length;
    }
}

#endif
