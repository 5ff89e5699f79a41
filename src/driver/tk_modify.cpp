// SPDX-License-Identifier: MIT
#include "driver/tk_modify.h"

#include "compare/tk_compare.h"
#include "driver/number_index.h"

namespace
{

constexpr int kNoModify = -10;

// A NaN counts as unknown here, since it is neither below nor above the mark.
bool is_unknown(double temperature)
{
    return !(temperature < kUnknownTemperature) && !(temperature > kUnknownTemperature);
}

void print_temperature(const char *label, double temperature)
{
    transcript_puts(label);
    if (is_unknown(temperature)) {
        transcript_puts("UNKNOWN\n");
    } else {
        transcript_printf("%g\n", temperature);
    }
}

unsigned compare_temperatures(double ref, double com)
{
    if (ref < com || ref > com) {
        transcript_puts("Run temperature is different\n");
        print_temperature("Reference file temperature : ", ref);
        print_temperature("Comparison file temperature: ", com);
        return EXIT_UNITS;
    }
    print_temperature("Temperature: ", ref);
    return 0;
}

unsigned compare_modifies(MODIFYform &ref, MODIFYform &com, int rerun_number)
{
    ref.matched = 1;
    com.matched = 1;
    transcript_puts("\n*************************************\n");
    transcript_printf("** COMPARING RERUN %d MODIFY %d DATA **", rerun_number, ref.number);
    transcript_puts("\n*************************************\n\n");
    const unsigned bits = compare_temperatures(ref.temperature, com.temperature);
    return bits | tk_compare_all(&ref, &com);
}

} // namespace

unsigned tk_modify(RERUNform *ref_rerun, RERUNform *com_rerun, int rerun_number)
{
    unsigned bits = 0;
    const NumberIndex<MODIFYform> partners(com_rerun->modify, kNoModify);
    for (MODIFYform *modify = ref_rerun->modify; modify != nullptr; modify = modify->next) {
        if (MODIFYform *partner = partners.find(modify->number)) {
            bits |= compare_modifies(*modify, *partner, rerun_number);
        }
    }
    bits |= report_unmatched(ref_rerun->modify, "modify", "comparison");
    return bits | report_unmatched(com_rerun->modify, "modify", "reference");
}
