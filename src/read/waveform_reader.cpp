// SPDX-License-Identifier: MIT
#include "read/waveform_reader.h"

#include "read/analysis_traits.h"
#include "read/binary_data.h"
#include "read/binary_points.h"
#include "read/checked_number.h"
#include "read/look_ahead.h"
#include "read/name_length.h"
#include "read/signal_totals.h"
#include "read/text_points.h"
#include "read/tk_alloc.h"
#include "support/signal_scanner.h"
#include "support/slab.h"
#include "support/transcript.h"

#include <string>

int fsDataFormat = NO_DATA;
int fsFormatErr = 0;

namespace
{

constexpr double kNoMinimum = 1e30; // range fields of a signal without points
constexpr double kNoMaximum = -1e30;

// The traits of an analysis that has signals; any other ends the run.
const AnalysisTraits &signal_traits(int analysis)
{
    if (!is_analysis(analysis) || traits_of(analysis).signal_header == SignalHeader::NO_SIGNALS) {
        transcript_puts("ERROR in tk_read_wform, unknown or unexpected analysis type\n\n");
        end_run(-1);
    }
    return traits_of(analysis);
}

bool is_distortion_unit(const std::string &units)
{
    return units == "HD2" || units == "HD3" || units == "SIM2" || units == "DIM2" || units == "DIM3";
}

// The text of units. Signals in a row mostly have the same, and then share it.
char *units_text(const std::string &units)
{
    static char *last = nullptr;
    if (last == nullptr || units != last) {
        last = slab_text(units);
    }
    return last;
}

// The header of a signal is read one token ahead: the current token is the first that is not yet
// used. There is none once the header has used up its logical line: such a signal has no points. An
// element of a bus range that an earlier header left pending is a token without a text: it is no word of
// the header, and its text may be long.
class HeaderReader
{
  public:
    HeaderReader(PunchStream &stream, Wform &wform) : stream_(stream), wform_(wform)
    {
        is_element_ = tk_nxelement(element_);
        if (!is_element_) {
            token_ = tk_nxsignal(stream_);
        }
    }

    // Reads the header. True if it ends in DATA.
    bool read()
    {
        const SignalHeader header = traits_of(wform_.analysis).signal_header;
        if (header == SignalHeader::SHIFT_AND_UNITS) {
            take_time_shift();
        }
        if (take_units() && header == SignalHeader::KIND_UNITS) {
            classify();
        }
        return token_ == "DATA";
    }

    // The current token as the first x of text data.
    double first_x() const
    {
        if (!is_element_) {
            return tk_atof(token_);
        }
        int error = 0;
        const double x = tk_elementNumber(stream_, element_, error);
        return error == 0 ? x : tk_atof(tk_elementText(stream_, element_));
    }

  private:
    void next_token()
    {
        token_.clear();
        is_element_ = false;
        if (!tk_eolnflag) {
            token_ = tk_nxfield(stream_);
        }
    }

    bool take_units()
    {
        if (token_ != "YUNITS") {
            return false;
        }
        wform_.yunits = units_text(tk_nxfield(stream_));
        next_token();
        return true;
    }

    // Noise and distortion signals are known by their units.
    // Kept: ACcnt is taken back whatever the analysis was (docs/punch-format.md, "What the transcript
    // shows").
    void classify()
    {
        const std::string units = wform_.yunits;
        if (wform_.analysis == AC && units == "V/SQRT(HZ)") {
            wform_.analysis = NOISE;
            --ACcnt;
            ++NOcnt;
        } else if (is_distortion_unit(units)) {
            wform_.analysis = DISTO;
            --ACcnt;
            ++DIcnt;
        }
    }

    // The word before the value (DELAY) stands at the scanner.
    void read_shift()
    {
        tk_nxfield(stream_);
        wform_.tshift = next_number(stream_);
        next_token();
    }

    // Goes back behind the first token, over one signal token, to what may be "PWL".
    void step_to_pwl()
    {
        tk_BUFrestore(stream_);
        BusElement dropped;
        if (!tk_nxelement(dropped)) {
            tk_nxsignal(stream_);
        }
        next_token();
        if (token_ == "PWL") {
            read_shift();
        }
    }

    // A transient signal may carry the time shift of a piecewise-linear source, in several old
    // orders of words; which one it is shows only further on, so the place is marked.
    void take_time_shift()
    {
        if (tk_eolnflag) {
            return; // what follows belongs to the next logical line
        }
        tk_BUFmark(stream_);
        if (token_ == "PWL") {
            if (tk_lookAheadForDelay(stream_)) {
                tk_BUFrestore(stream_);
                read_shift();
            } else {
                step_to_pwl();
            }
        } else if (token_ == "DATA") {
            if (tk_lookAheadForFormat(stream_)) {
                tk_BUFrestore(stream_);
            } else {
                step_to_pwl();
            }
        } else if (token_ != "YUNITS") {
            if (tk_lookAheadForPwl(stream_)) {
                step_to_pwl();
            } else {
                tk_BUFrestore(stream_);
            }
        }
    }

    PunchStream &stream_;
    Wform &wform_;
    std::string token_;
    BusElement element_; // the token, if it is one
    bool is_element_ = false;
};

void note_format(int format)
{
    if (format == TEXT) {
        if (fsDataFormat == NO_DATA) {
            fsDataFormat = TEXT;
        }
    } else if (fsDataFormat < BINARY) {
        fsDataFormat = format;
    } else if (fsDataFormat != format) {
        fsFormatErr = 1;
    }
}

// Finds the line behind binary data. Anything but blanks, one byte and a line feed there means that
// the reader has lost its place: the rest of the file is left unread.
void leave_binary_data(PunchStream &stream)
{
    tk_forgetEndMark();
    int byte = 0;
    do {
        byte = stream_byte(stream);
    } while (byte == '\0' || byte == ' ');
    if (stream_byte(stream) != '\n') {
        tk_stopReading();
    } else if (!tk_eofflag) {
        tk_BUFreadLine(stream);
    }
}

} // namespace

Wform *tk_read_wform(PunchStream &stream, int analysis)
{
    Wform *wform = tk_Wform_alloc();
    wform->analysis = analysis;
    wform->xmin = wform->ymin = kNoMinimum;
    wform->xmax = wform->ymax = kNoMaximum;
    wform->offset = tk_BUFoffset;
    const std::string &name = tk_nxString(stream);
    wform->name = slab_text(name);
    note_name_length(name.size());
    ++signal_traits(analysis).totals.counter;

    HeaderReader header(stream, *wform);
    wform->format = header.read() ? take_data_format() : TEXT;
    note_format(wform->format);
    if (wform->format == TEXT) {
        read_text_points(stream, *wform, [&header] { return header.first_x(); });
    } else {
        if (!tk_eolnflag && !tk_eofflag) {
            read_binary_points(stream, *wform);
        }
        leave_binary_data(stream);
    }
    return wform;
}
