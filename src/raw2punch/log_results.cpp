// SPDX-License-Identifier: MIT
#include "raw2punch/log_results.h"

#include "raw2punch/line_reader.h"
#include "raw2punch/text_tools.h"

#include <algorithm>
#include <unordered_map>

namespace
{

using Words = std::vector<std::string_view>;

bool is_name(std::string_view text)
{
    const auto in_name = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || is_digit(c) || c == '_' || c == '.';
    };
    return !text.empty() && !is_digit(text[0]) && std::all_of(text.begin(), text.end(), in_name);
}

// What begins a line of a log that a measurement might look like.
bool is_remark(std::string_view word)
{
    constexpr std::string_view kRemarks[] = {"note", "warning", "error", "fatal", "circuit"};
    return std::find(std::begin(kRemarks), std::end(kRemarks), lower_case(word)) != std::end(kRemarks);
}

// Whether a word may follow the value of a measurement: nothing does, or where it was found.
bool may_follow_value(std::string_view word)
{
    constexpr std::string_view kPlaces[] = {"", "at", "from", "to", "targ", "trig", "when", "with"};
    const std::string lower = lower_case(word.substr(0, word.find('=')));
    return std::find(std::begin(kPlaces), std::end(kPlaces), lower) != std::end(kPlaces);
}

class LogReader
{
  public:
    explicit LogReader(Report &report) : report_(report)
    {
    }

    LogResults read(const std::string &path)
    {
        const InputFile file(path);
        LineReader lines(file, 0, is_utf16_at(file, 0));
        for (std::string line; lines.next(line);) {
            take(trimmed(line));
        }
        end_spectrum();
        return std::move(results_);
    }

  private:
    void take(std::string_view line)
    {
        const Words words = words_of(line);
        const bool in_table = take_harmonic(words) || take_step(words);
        if (in_table || words.empty() || take_start_of_table(line, words) || take_temperature(words) ||
            take_failure(words)) {
            return;
        }
        take_measure(line);
    }

    LogRun &run_of(std::size_t number) // from 0
    {
        if (results_.runs.size() <= number) {
            results_.runs.resize(number + 1);
        }
        return results_.runs[number];
    }

    bool take_start_of_table(std::string_view line, const Words &words)
    {
        constexpr std::string_view kFourier = "Fourier analysis for ";
        if (starts_with(line, kFourier) && line.back() == ':') {
            end_spectrum();
            spectrum_.name = trimmed(line.substr(kFourier.size(), line.size() - kFourier.size() - 1));
            return true;
        }
        if (words.size() == 2 && words[0] == "Measurement:" && is_name(words[1])) {
            stepped_measure_ = words[1];
            return true;
        }
        return false;
    }

    // A row of a Fourier table: number, frequency, magnitude, phase and two more.
    bool take_harmonic(const Words &words)
    {
        std::int64_t number = 0;
        Harmonic row;
        if (spectrum_.name.empty()) {
            return false;
        }
        if (words.size() >= 4 && to_count(words[0], number) && to_number(words[1], row.frequency) &&
            to_number(words[2], row.magnitude) && to_number(words[3], row.degrees)) {
            spectrum_.harmonics.push_back(row);
            return true;
        }
        if (words.empty() && !spectrum_.harmonics.empty()) {
            end_spectrum();
        }
        return false;
    }

    void end_spectrum()
    {
        if (!spectrum_.harmonics.empty()) {
            run_of(spectra_of_[spectrum_.name]++).spectra.push_back(std::move(spectrum_));
        }
        spectrum_ = {};
    }

    // A row of the table of a stepped measurement: number of the step, value, where it was found.
    bool take_step(const Words &words)
    {
        std::int64_t step = 0;
        double value = 0.0;
        if (stepped_measure_.empty()) {
            return false;
        }
        if (words.size() >= 2 && to_count(words[0], step)) {
            const std::size_t number = values_of_[stepped_measure_]++;
            if (to_number(words[1], value)) {
                run_of(number).measures.push_back({stepped_measure_, value});
            } else {
                report_failure(stepped_measure_, number, words[1]);
            }
            return true;
        }
        if (words.empty() || lower_case(words[0]) != "step") {
            stepped_measure_.clear();
        }
        return !words.empty() && !stepped_measure_.empty();
    }

    // "Doing analysis at TEMP = 27.000000 and TNOM = 27.000000"
    bool take_temperature(const Words &words)
    {
        double degrees = 0.0;
        if (words.size() < 6 || words[0] != "Doing" || words[3] != "TEMP" || !to_number(words[5], degrees)) {
            return false;
        }
        results_.temperatures.push_back(degrees);
        return true;
    }

    // "meas tran tpd when v(out)=5 failed!" and "Measurement "tpd" FAIL'ed"
    bool take_failure(const Words &words)
    {
        const std::string last = lower_case(words.back());
        const std::string first = lower_case(words[0]);
        std::string_view name;
        if ((first == "meas" || first == ".meas" || first == ".measure") && words.size() > 3 &&
            last == "failed!") {
            name = words[2];
        } else if (first == "measurement" && words.size() == 3 && starts_with(last, "fail") &&
                   words[1].size() > 2) {
            name = words[1].substr(1, words[1].size() - 2);
        } else {
            return false;
        }
        fail(std::string(name));
        return true;
    }

    void fail(const std::string &name, std::string_view value = "")
    {
        report_failure(name, values_of_[name]++, value);
    }

    // value is what stands in the place of a number.
    void report_failure(const std::string &name, std::size_t run, std::string_view value)
    {
        const bool is_failure = value.empty() || starts_with(lower_case(value), "fail");
        report_.left_out("measurement " + name + " has no " + (is_failure ? "value" : "number") + " in run " +
                         std::to_string(run + 1) + (is_failure ? "" : ": " + std::string(value)));
    }

    // "name = value ..." or "name: expression=value ..."
    void take_measure(std::string_view line)
    {
        const std::size_t equals = line.find('=');
        if (equals == std::string_view::npos) {
            return;
        }
        const std::size_t colon = line.substr(0, equals).find(':');
        const std::string_view name = trimmed(line.substr(0, std::min(equals, colon)));
        const Words words = words_of(line.substr(equals + 1));
        const bool has_expression = colon != std::string_view::npos;
        if (!is_name(name) || is_remark(name) || words.empty() ||
            !may_follow_value(words.size() > 1 ? words[1] : "") ||
            (has_expression && words_of(line.substr(colon + 1, equals - colon - 1)).size() != 1)) {
            return;
        }
        double value = 0.0;
        if (to_number(words[0], value)) {
            const std::string key(name);
            run_of(values_of_[key]++).measures.push_back({key, value});
        } else if (has_expression || lower_case(words[0]) == "failed") {
            fail(std::string(name), words[0]);
        }
    }

    Report &report_;
    LogResults results_;
    std::unordered_map<std::string, std::size_t> values_of_; // how many a measurement has had, failures too
    std::unordered_map<std::string, std::size_t> spectra_of_;
    Spectrum spectrum_;           // the one whose table is being read, without a name outside tables
    std::string stepped_measure_; // the one whose table is being read
};

} // namespace

LogResults read_log(const std::string &path, Report &report)
{
    return LogReader(report).read(path);
}
