// SPDX-License-Identifier: MIT
// The texts of the information-only options.
#ifndef TRESK_DRIVER_INFO_TEXTS_H
#define TRESK_DRIVER_INFO_TEXTS_H

void printHelp(const char *program_name); // usage; program_name as invoked
void printExitCode(int code);             // what the bits of one exit status mean
void printExitCodes();                    // all bits and grades
void printExitMaskUsage();                // how to use -pem and -nem

#endif
