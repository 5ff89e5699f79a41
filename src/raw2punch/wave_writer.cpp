// SPDX-License-Identifier: MIT
#include "raw2punch/wave_writer.h"

#include "raw2punch/wave_text.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstring>

namespace
{

constexpr std::size_t kAllBuffers = std::size_t{32} << 20;
constexpr std::size_t kLargestBuffer = std::size_t{256} << 10;
constexpr std::size_t kSmallestBuffer = 64; // holds a point

// The bytes of one waveform. The points of all of them come in turns, those of each in order.
struct Stream {
    std::int64_t start = 0; // file offset of its line
    std::int64_t next = 0;  // of the first byte in its buffer
    std::size_t held = 0;   // bytes in its buffer
    std::int64_t points = 0;
    std::int64_t written = 0; // points
};

class WaveWriter
{
  public:
    // Lays out the waveforms in file from start on: with their lines and ends if complete, otherwise the
    // points alone.
    WaveWriter(OutputFile &file, PunchFormat format, const Run &run, std::int64_t start, bool complete)
        : file_(file), format_(format), run_(run), complete_(complete)
    {
        end_ = start;
        for (const Signal &signal : run.signals) {
            streams_.push_back(lay_out(signal));
        }
        const auto longest = static_cast<std::size_t>(point_offset(format, run.range.count));
        buffer_size_ = std::clamp(kAllBuffers / std::max<std::size_t>(streams_.size(), 1), kSmallestBuffer,
                                  std::clamp(longest + kSmallestBuffer, kSmallestBuffer, kLargestBuffer));
        buffers_.resize(buffer_size_ * streams_.size());
    }

    const std::vector<Stream> &streams() const
    {
        return streams_;
    }

    std::int64_t end() const
    {
        return end_;
    }

    // Reads all values of the run and writes them. False when the sweep starts anew within it.
    bool write()
    {
        const std::unique_ptr<DataSource> source = open_data(run_.file, run_.plot, run_.place, run_.range);
        const bool absolute = has_marked_times(run_.plot, run_.place, run_.analysis);
        SweepWatch watch(run_.analysis);
        for (Block block; source->next(block);) {
            load_sweep(block, absolute, xs_);
            note_overflow(xs_.data(), block.points);
            for (const double x : xs_) {
                if (watch.starts_run(x)) {
                    return false;
                }
            }
            write_block(block);
        }
        finish();
        return true;
    }

    // How many values did not fit into the format.
    std::uint64_t overflows() const
    {
        return overflows_;
    }

  private:
    Stream lay_out(const Signal &signal)
    {
        Stream stream;
        stream.start = stream.next = end_;
        if (signal.single) {
            return stream;
        }
        const std::int64_t held = run_.plot.variables[signal.variable].points - run_.range.first;
        stream.points = std::clamp<std::int64_t>(held, 0, run_.range.count);
        if (complete_ && stream.points > 0) {
            stream.next += static_cast<std::int64_t>(line_of(signal).size());
            end_ = stream.next + static_cast<std::int64_t>(end_of_points(format_).size());
        }
        end_ += point_offset(format_, stream.points);
        return stream;
    }

    std::string line_of(const Signal &signal) const
    {
        return waveform_line(signal.name, signal.unit, format_);
    }

    void note_overflow(const double *values, std::size_t count)
    {
        if (format_ == PunchFormat::BINARY) {
            overflows_ += static_cast<std::uint64_t>(std::count_if(values, values + count, [](double value) {
                return std::isfinite(value) && std::isinf(static_cast<float>(value));
            }));
        }
    }

    void write_block(const Block &block)
    {
        std::size_t signal = 0;
        for (const ColumnView &column : block.columns) {
            while (signal < streams_.size() && run_.signals[signal].variable < column.variable) {
                ++signal;
            }
            for (; signal < streams_.size() && run_.signals[signal].variable == column.variable; ++signal) {
                const std::int64_t left = streams_[signal].points - streams_[signal].written;
                const auto points = static_cast<std::size_t>(
                    std::min<std::int64_t>(left, static_cast<std::int64_t>(block.points)));
                if (points > 0) {
                    const double *ys = evaluator_.evaluate(column, run_.signals[signal].function, points);
                    note_overflow(ys, points);
                    append(signal, ys, points);
                }
            }
        }
    }

    void append(std::size_t signal, const double *ys, std::size_t points)
    {
        Stream &stream = streams_[signal];
        const std::size_t point_size = 2 * value_size(format_);
        for (std::size_t done = 0; done < points;) {
            // Groups of ten take a byte more, for which the room of a tenth of a point is enough.
            std::size_t fitting = (buffer_size_ - stream.held) * 10 / (point_size * 10 + 2);
            if (fitting <= 1) {
                flush(signal);
                fitting = std::max<std::size_t>(buffer_size_ * 10 / (point_size * 10 + 2), 1);
            }
            const std::size_t count = std::min(points - done, fitting);
            char *to = buffer_of(signal) + stream.held;
            const char *behind = put_points(format_, xs_.data() + done, ys + done, count, stream.written, to);
            stream.held += static_cast<std::size_t>(behind - to);
            stream.written += static_cast<std::int64_t>(count);
            done += count;
        }
    }

    char *buffer_of(std::size_t signal)
    {
        return buffers_.data() + signal * buffer_size_;
    }

    void flush(std::size_t signal)
    {
        Stream &stream = streams_[signal];
        file_.write_at(stream.next, {buffer_of(signal), stream.held});
        stream.next += static_cast<std::int64_t>(stream.held);
        stream.held = 0;
    }

    // What is left in the buffers, in the order of the file.
    void finish()
    {
        for (std::size_t i = 0; i < streams_.size(); ++i) {
            if (streams_[i].points == 0) {
                continue;
            }
            if (complete_) {
                file_.write_at(streams_[i].start, line_of(run_.signals[i]));
            }
            flush(i);
            if (complete_) {
                file_.write_at(streams_[i].next, end_of_points(format_));
            }
        }
    }

    OutputFile &file_;
    PunchFormat format_;
    const Run &run_;
    bool complete_;
    std::int64_t end_ = 0;
    std::vector<Stream> streams_;
    std::size_t buffer_size_ = 0;
    std::vector<char> buffers_;
    std::vector<double> xs_;
    Evaluator evaluator_;
    std::uint64_t overflows_ = 0;
};

// The text of a waveform has no size that could be known beforehand: its points are put in order in a file of
// their own first.
bool write_text(PunchWriter &writer, const Run &run)
{
    OutputFile points = OutputFile::make_nameless(writer.file());
    WaveWriter waves(points, PunchFormat::BINARY_DBL, run, 0, false);
    if (!waves.write()) {
        return false;
    }
    PointTexts texts(points, writer);
    for (std::size_t i = 0; i < run.signals.size(); ++i) {
        const Stream &stream = waves.streams()[i];
        if (stream.points > 0) {
            writer.write(waveform_line(run.signals[i].name, run.signals[i].unit, PunchFormat::TEXT));
            texts.write(stream.start, stream.points);
        }
    }
    return true;
}

} // namespace

bool write_waveforms(PunchWriter &writer, const Run &run, Report &report)
{
    if (writer.format() == PunchFormat::TEXT) {
        return write_text(writer, run);
    }
    WaveWriter waves(writer.file(), writer.format(), run, writer.position(), true);
    if (!waves.write()) {
        return false;
    }
    if (waves.overflows() > 0) {
        report.note("plot '" + run.plot.name + "': " + std::to_string(waves.overflows()) +
                    " values are infinite as 32-bit numbers");
    }
    writer.move_to(waves.end());
    return true;
}
