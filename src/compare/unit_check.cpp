// SPDX-License-Identifier: MIT
#include "compare/unit_check.h"

#include "compare/exit_bits.h"
#include "compare/result_lines.h"
#include "support/transcript.h"

#include <cstring>

const UnitTexts kValueYUnits = {"YUNITS for signal %s in comparison file is missing.\n",
                                "YUNITS for signal %s in reference file is missing.\n",
                                "\nYUNITS for signal %s is different.\n",
                                false,
                                false,
                                "\n\n"};

const UnitTexts kSweepXUnits = {"XUNITS for signal %s is missing in comparison file.\n",
                                "XUNITS for signal %s not present in reference file.\n",
                                "XUNITS for %s signal %s is different.\n",
                                true,
                                true,
                                "\n"};

const UnitTexts kFourierXUnits = {"XUNITS for signal %s is missing in comparison file.\n",
                                  "XUNITS for signal %s not present in reference file.\n",
                                  "XUNITS for signal %s is different.\n",
                                  false,
                                  true,
                                  "\n\n"};

const UnitTexts kWaveformYUnits = {"YUNITS for signal %s is missing in comparison file.\n",
                                   "YUNITS for signal %s not present in reference file.\n",
                                   "YUNITS for signal %s is different.\n",
                                   false,
                                   true,
                                   "\n\n"};

unsigned check_units(const UnitTexts &texts, int code, const char *name, const char *reference,
                     const char *comparison)
{
    const bool on_both = reference != nullptr && comparison != nullptr;
    if (on_both ? std::strcmp(reference, comparison) == 0 : reference == comparison) {
        return 0;
    }
    if (texts.below_header) {
        print_tk_header(code);
    }
    if (!on_both) {
        transcript_printf(reference != nullptr ? texts.missing_in_comparison : texts.missing_in_reference,
                          name);
        return EXIT_UNITS;
    }
    if (texts.tells_analysis) {
        transcript_printf(texts.different, into_string(static_cast<unsigned>(code)), name);
    } else {
        transcript_printf(texts.different, name);
    }
    print_both_files(reference, comparison, texts.end);
    return EXIT_UNITS;
}
