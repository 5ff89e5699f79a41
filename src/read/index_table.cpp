// SPDX-License-Identifier: MIT
#include "read/index_table.h"

#include "read/analysis_traits.h"
#include "support/settings.h"
#include "support/slab.h"
#include "support/transcript.h"

#include <algorithm>
#include <cinttypes>
#include <cstdarg>
#include <cstring>
#include <string>

std::FILE *indx_fpt = nullptr;
char *rundate = nullptr;
char *runtime = nullptr;

const char kIndexFirstLine[] = "*$$\n";
const char kIndexMarkerLine[] = "*$$ --- BEGIN PUNCH FILE INDEX TABLE ---\n";

namespace
{

constexpr std::size_t kLineLength = 74;
constexpr char kFoldPrefix[] = "*$-";

// What the signals of a group share. The first signal opens a group, since no swept analysis has
// the code 0.
struct GroupKey {
    int analysis = 0;
    int rerun = 0;
    int modify = 0;
    double temperature = 0.0;
    int format = 0;
    std::string xunits;
    std::string xfunc;

    bool operator==(const GroupKey &other) const
    {
        return analysis == other.analysis && rerun == other.rerun && modify == other.modify &&
               temperature == other.temperature && format == other.format && xunits == other.xunits &&
               xfunc == other.xfunc;
    }
};

GroupKey group; // of the previous signal; written by print_wform_index

const char *or_empty(const char *text)
{
    return text != nullptr ? text : "";
}

const char *units_by_first_letter(char letter)
{
    switch (letter) {
    case 'C':
        return "FARADS";
    case 'I':
        return "AMPS";
    case 'J':
        return "AMP/M^2";
    case 'P':
        return "WATTS";
    case 'Q':
        return "COLOUMBS"; // Kept: spelled so in every table (docs/punch-format.md, "Index table")
    default:
        return "VOLTS";
    }
}

const char *frequency_units(const char *name)
{
    if ((name[0] == 'E' || name[0] == 'V') && name[1] == 'D') {
        return "DB";
    }
    if ((name[0] == 'E' || name[0] == 'V') && name[1] == 'P') {
        return "DEGREES";
    }
    return units_by_first_letter(name[0]);
}

const char *units_of(const Wform &wform)
{
    return or_empty(wform.yunits != nullptr ? wform.yunits : getYunits(wform.name, wform.analysis));
}

void open_group(const RERUNform &rerun, const Wform &wform, bool poles_and_zeros)
{
    std::fputs(kIndexFirstLine, indx_fpt);
    std::fprintf(indx_fpt, "*$;ANTYPE = %s, RRN# = %d, MDF# = %d, ANTEMP = %7.3f, FORMAT = %s\n",
                 analysis_name(group.analysis), group.rerun, group.modify, group.temperature,
                 format_name(group.format));
    std::fprintf(indx_fpt, "*$;RUNDATE = %s, RUNTIME = %s\n", or_empty(rundate), or_empty(runtime));
    if (wform.analysis != MR) {
        std::fprintf(indx_fpt, "*$;X_UNITS = %s, X_FUNC = %s\n", wform.xunits, wform.xfunc);
    }
    vprintIndexString(indx_fpt, "*$~%s", or_empty(rerun.title));
    if (poles_and_zeros) {
        std::fputs("*$$ FREQUENCY RESPONSE FROM POLES AND ZEROS\n", indx_fpt);
    }
}

} // namespace

int vprintIndexString(std::FILE *stream, const char *format, ...)
{
    std::va_list args;
    va_start(args, format);
    std::va_list again;
    va_copy(again, args);
    const int length = std::vsnprintf(nullptr, 0, format, args);
    std::string text(length > 0 ? static_cast<std::size_t>(length) : 0, '\0');
    std::vsnprintf(text.data(), text.size() + 1, format, again);
    va_end(again);
    va_end(args);

    std::size_t written = std::min(text.size(), kLineLength);
    std::fwrite(text.data(), 1, written, stream);
    while (written < text.size()) {
        const std::size_t piece = std::min(text.size() - written, kLineLength - std::strlen(kFoldPrefix));
        std::fprintf(stream, "\n%s", kFoldPrefix);
        std::fwrite(text.data() + written, 1, piece, stream);
        written += piece;
    }
    return std::fputc('\n', stream);
}

const char *getYunits(const char *name, int analysis)
{
    if (name == nullptr) {
        transcript_puts("getYunits: signal name is NULL!\n");
        return nullptr;
    }
    switch (is_analysis(analysis) ? traits_of(analysis).index.yunits : DefaultYUnits::UNKNOWN) {
    case DefaultYUnits::BY_TWO_LETTERS:
        return frequency_units(name);
    case DefaultYUnits::BY_LETTER:
        return units_by_first_letter(name[0]);
    case DefaultYUnits::MEASURE:
        return "MEASURE";
    case DefaultYUnits::EMPTY:
        return "";
    default:
        transcript_printf("getYunits: unknown analysis type (%d)\n", analysis);
        return "VOLTS";
    }
}

int print_wform_index(const RERUNform *rerun, const MODIFYform *modify, Wform *wform)
{
    ++pun_index;
    const bool pole_zero_response = wform->analysis == AC && std::strcmp(wform->name, "IDPZ") == 0;
    const IndexTraits &defaults = traits_of(wform->analysis).index;
    if (wform->xunits == nullptr) {
        wform->xunits = slab_text(defaults.xunits);
    }
    if (wform->xfunc == nullptr) {
        wform->xfunc = slab_text(defaults.xfunc);
    }
    GroupKey key{wform->analysis, rerun->number, modify->number, modify->temperature,
                 wform->format,   wform->xunits, wform->xfunc};
    // The phase of a pole-zero response (IPPZ) joins the group that its magnitude (IDPZ) opens.
    if (!(key == group) || pole_zero_response) {
        group = std::move(key);
        open_group(*rerun, *wform, pole_zero_response);
    }
    return vprintIndexString(indx_fpt, "*$:%s,%" PRId64 ",%d,%s", wform->name, wform->offset, wform->numpts,
                             units_of(*wform));
}

int print_mirel_entry(const Wform *wform)
{
    static std::size_t buffered = 0;
    const int size = std::fprintf(indx_fpt, "*$:%s,%" PRId64 ",%d,%s\n", wform->name, wform->offset,
                                  wform->numpts, units_of(*wform));
    buffered += size > 0 ? static_cast<std::size_t>(size) : 0;
    if (buffered > kMirelBuffer / 2) {
        std::fflush(indx_fpt);
        buffered = 0;
    }
    return size;
}
