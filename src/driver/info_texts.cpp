// SPDX-License-Identifier: MIT
#include "driver/info_texts.h"

#include "support/exit_bits.h"
#include "support/transcript.h"

namespace
{

struct BitMeaning {
    int bit;
    const char *line;
};

// NaN first, since it outranks all others.
constexpr BitMeaning kBitMeanings[] = {
    {EXIT_NAN, "     One or more signals contain undefined numeric values (nan).\n"},
    {EXIT_TOLERANCE, "     One or more signals violated specified tolerances.\n"},
    {EXIT_FILE, "     Problems encountered opening or reading punch file(s).\n"},
    {EXIT_SIGNALS, "     Missing and/or additional signals found.\n"},
    {EXIT_VARIANTS, "     Missing and/or additional reruns/modifies found.\n"},
    {EXIT_ANALYSES, "     Missing and/or additional analysis types found.\n"},
    {EXIT_UNITS, "     One or more signals have different X-unit, Y-unit, or temperature values.\n"},
    {EXIT_FORMAT, "     The two punch files have different file formats.\n"},
    {EXIT_ARGUMENTS, "     Bad command line arguments were specified.\n"},
};

constexpr char kExitCodes[] =
    "\n === EXIT STATUS CODES ===\n\n"
    " There are 512 possible exit status codes in nine error categories.\n"
    " Each category is independently set using a specific bit in the exit status.\n"
    " The final exit grade from tresk is determined by which bits get set during\n"
    " the comparison:\n\n"
    "    bit 1: indicates one or more signals violated specified tolerances.\n"
    "    bit 2: indicates problems were encountered opening or reading punch file(s).\n"
    "    bit 3: indicates missing and/or additional signals found.\n"
    "    bit 4: indicates missing and/or additional reruns/modifies found.\n"
    "    bit 5: indicates missing and/or additional analysis types found.\n"
    "    bit 6: indicates X-unit, Y-unit, or temperature differences found.\n"
    "    bit 7: indicates the two punch files have different file formats.\n"
    "    bit 8: indicates bad command line arguments were specified.\n"
    "    bit 9: indicates one or more signals contain (nan) values.\n"
    "\n"
    "\nThe final exit grade that tresk returns is determined as follows:\n"
    "     Exit Grade         Bits set after exit masks applied\n"
    "    =============      ===================================\n"
    "     0 = PASS           no bits set\n"
    "     1 = FAIL_I         bit 6 and/or bit 7 set\n"
    "     2 = FAIL_PV        bit 3 set\n"
    "     3 = FAIL_V         bit 1 set\n"
    "     4 = FAIL_PSV       bit 4 and/or bit 5 set\n"
    "     5 = FAIL_SV        bit 2 and/or bit 8 and/or bit 9 set\n"
    "\n";

constexpr char kExitMaskUsage[] =
    "\n === Using Exit Masks ===\n\n"
    " -nem <val>  sets the negative exit mask to the specified value.\n"
    "             Use this to specify the error codes you do NOT want to see.\n\n"
    " -pem <val>  sets the positive exit mask to the specified value.\n"
    "             Use this to specify the error codes you DO want to see.\n\n"
    " Numerical value of exit codes:\n"
    "     1  : indicates one or more signals violated specified tolerances.\n"
    "     2  : indicates problems were encountered opening or reading punch file(s).\n"
    "     4  : indicates missing and/or additional signals found.\n"
    "     8  : indicates missing and/or additional reruns/modifies found.\n"
    "    16  : indicates missing and/or additional analysis types found.\n"
    "    32  : indicates X-unit, Y-unit, or temperature differences found.\n"
    "    64  : indicates the two punch files have different file formats.\n"
    "   128  : indicates bad command line arguments were specified.\n"
    "   256  : indicates one or more signals contain (nan) values.\n"
    "\n"
    " Examples:\n"
    "     -pem 1  : Tells tresk to ONLY show errors where common signals violated\n"
    "               specified tolerances.\n"
    "     -nem 36 : Tells tresk NOT to show errors due to missing or extra signals present,\n"
    "               or errors due to X-unit, Y-unit, or Temperature differences. (4 + 32 = 36)\n\n"
    " NOTE: The exit masks influence the final grade that tresk gives\n"
    "       when exiting.  The exit masks may not affect the categories\n"
    "       that are checked and error messages will still be reported in\n"
    "       the transcript even if they are being masked.\n"
    "\n";

constexpr char kHelpFiles[] =
    "  <filename1>          path to golden punch file to compare against.\n"
    "  <filename2>          path to regression punch file that needs to be checked.\n"
    "\nOptions:\n\n";

constexpr char kHelpOptions[] =
    "  -Aonly               Fail only if absolute tolerance is exceeded.\n"
    "  -Ronly               Fail only if relative tolerance is exceeded.\n"
    "  -AorR                Fail if either absolute or relative tolerance is exceeded.\n"
    "  -AandR               Fail only if both absolute and relative tolerance is exceeded.\n"
    "\n"
    "  -i[ndex]             Add new punch index table to specified punch file.\n"
    "\n"
    "  -exitcodes           Print possible exit code values and meanings.\n"
    "  -exitcode <val>      Print the meaning of the specified exit code.\n"
    "\n"
    "  -nem <val>           Set the negative exit mask to the specified value.\n"
    "  -pem <val>           Set the positive exit mask to the specified value.\n"
    "                       (Use -nem or -pem with no other arguments for explanation of exit masks.)\n"
    "\n"
    "  -desert              Special option for comparing korsim3 and korsim4 punch files:\n"
    "                           + Case is ignored in signal names.\n"
    "                           + Missing and/or additional signals are ignored.\n"
    "                           + X-unit and Y-unit differences are ignored.\n"
    "                           + Simulation temperature differences are ignored.\n"
    "                           + File format differences are ignored.\n"
    "\n"
    "  -help                Print this usage information.\n"
    "  -d <val>             Set internal debug flag to specified value.\n"
    "\nExit Grades:\n\n"
    "     0 = PASS          No significant differences found.\n"
    "     1 = FAIL_I        Informational.\n"
    "     2 = FAIL_PV       Possible Violation.\n"
    "     3 = FAIL_V        Violation.\n"
    "     4 = FAIL_PSV      Possible Severe Violation.\n"
    "     5 = FAIL_SV       Severe Violation.\n"
    "\n";

// Told from constants: the help does not follow the options before it.
constexpr double kDefaultAbstol = 1e-12;
constexpr double kDefaultReltol = 0.01;

} // namespace

void printHelp(const char *program_name)
{
    transcript_printf("\nUsage: %s [<options>] <filename1> <filename2>\n\n", program_name);
    transcript_puts(kHelpFiles);
    transcript_printf("  -a[bstol] <val>      Sets absolute tolerance to val.  (Default: %g)\n",
                      kDefaultAbstol);
    transcript_printf("  -r[eltol] <val>      Sets relative tolerance to val.  (Default: %g)\n",
                      kDefaultReltol);
    transcript_puts(kHelpOptions);
}

void printExitCode(int code)
{
    transcript_printf("\nInterpretation of exit status code: %d\n", code);
    for (const BitMeaning &meaning : kBitMeanings) {
        if ((code & meaning.bit) != 0) {
            transcript_puts(meaning.line);
        }
    }
    transcript_puts("\n");
}

void printExitCodes()
{
    transcript_puts(kExitCodes);
}

void printExitMaskUsage()
{
    transcript_puts(kExitMaskUsage);
}
