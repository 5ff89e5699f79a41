// SPDX-License-Identifier: MIT
#include "driver/tk_main.h"

int main(int argc, char **argv)
{
    tk_main(argc, argv);
}
