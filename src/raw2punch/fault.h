// SPDX-License-Identifier: MIT
// What ends a conversion. It is thrown where it is found and reported once, by main; the output file is then
// removed on the way.
#ifndef RAW2PUNCH_FAULT_H
#define RAW2PUNCH_FAULT_H

#include <stdexcept>

class Fault : public std::runtime_error
{
  public:
    using std::runtime_error::runtime_error;
};

#endif
