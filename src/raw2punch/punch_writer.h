// SPDX-License-Identifier: MIT
// Writes a punch file from its start to its end.
#ifndef RAW2PUNCH_PUNCH_WRITER_H
#define RAW2PUNCH_PUNCH_WRITER_H

#include "raw2punch/output_file.h"
#include "raw2punch/plot_kind.h"
#include "raw2punch/point_format.h"

#include <string>
#include <string_view>

// Where results belong in the punch file.
struct Variant {
    int rerun = 1;
    int modify = 0;
    double temperature = 27.0; // degrees Celsius
    std::string title;         // of the rerun
};

class PunchWriter
{
  public:
    PunchWriter(OutputFile &file, PunchFormat format) : file_(file), format_(format)
    {
    }

    PunchFormat format() const
    {
        return format_;
    }

    OutputFile &file()
    {
        return file_;
    }

    // File offset of what comes next.
    std::int64_t position() const
    {
        return position_;
    }

    // Goes on behind bytes that others write.
    void move_to(std::int64_t position)
    {
        position_ = position;
    }

    // Goes back to a block that began when writer was copied, to write another one instead.
    void go_back(const PunchWriter &writer)
    {
        position_ = writer.position_;
        titled_rerun_ = writer.titled_rerun_;
    }

    void write(std::string_view text)
    {
        file_.write_at(position_, text);
        position_ += static_cast<std::int64_t>(text.size());
    }

    // Opens a block of results. date is that of date_words(). The title goes with the first block of a rerun.
    void write_header(Analysis analysis, const Variant &variant, const std::string &date);

    // "* XUNITS = SECONDS" and "* X_FUNCTION = LOG"; no units if empty.
    void write_sweep(const std::string &units, bool logarithmic);

    // One value of an operating point.
    void write_solution(const std::string &name, const std::string &unit, double value);

    // A value without a sweep, for the run of that number.
    void write_measure(const std::string &name, int run, double value);

  private:
    OutputFile &file_;
    PunchFormat format_;
    std::int64_t position_ = 0;
    int titled_rerun_ = -1;
};

// The line that names a waveform, with the word of a binary format.
std::string waveform_line(const std::string &name, const std::string &unit, PunchFormat format);

#endif
