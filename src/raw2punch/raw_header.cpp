// SPDX-License-Identifier: MIT
#include "raw2punch/raw_header.h"

#include "raw2punch/fault.h"
#include "raw2punch/line_reader.h"
#include "raw2punch/text_tools.h"

#include <algorithm>
#include <array>

namespace
{

constexpr std::string_view kFirstKey = "title:";

std::int64_t required_count(std::string_view value, const char *key)
{
    std::int64_t count = 0;
    if (!to_count(value, count)) {
        throw Fault("a plot has no number behind '" + std::string(key) + "': the run was not finished?");
    }
    return count;
}

// Takes the dimensions of its own that a variable has, as in "dims=3,5".
void take_dimensions(std::string_view dimensions, RawVariable &variable)
{
    const std::int64_t most = variable.points;
    const std::vector<std::string_view> words = words_of(dimensions, ',');
    variable.points = 1;
    for (const std::string_view word : words) {
        std::int64_t size = 0;
        if (!to_count(word, size) || (size > 0 && variable.points > most / size)) {
            throw Fault("variable " + variable.name + " has more points than its plot");
        }
        variable.points *= size;
        if (words.size() > 1 && variable.rows == 0) {
            variable.rows = size;
        }
    }
}

// The words behind the index of a variable: name, type, attributes. Where tabs separate them, the name may
// hold spaces.
struct VariableWords {
    std::string_view name;
    std::vector<std::string_view> others;
};

VariableWords split_variable(std::string_view line)
{
    line = trimmed(line);
    const std::size_t index_end = std::min(line.find_first_of(" \t"), line.size());
    std::int64_t index = 0;
    if (!to_count(line.substr(0, index_end), index)) {
        throw Fault("no line of a variable: '" + std::string(line.substr(0, 60)) + "'");
    }
    line = trimmed(line.substr(index_end));
    const std::size_t name_end =
        std::min(line.find(line.find('\t') != std::string_view::npos ? '\t' : ' '), line.size());
    return {trimmed(line.substr(0, name_end)), words_of(line.substr(name_end))};
}

class HeaderReader
{
  public:
    HeaderReader(const InputFile &file, std::int64_t offset)
        : utf16_(is_utf16_at(file, offset)), lines_(file, offset, utf16_)
    {
        plot_.utf16 = utf16_;
    }

    RawPlot read()
    {
        std::string line;
        if (!lines_.next(line) || !starts_with(lower_case(line), kFirstKey)) {
            throw Fault("no SPICE rawfile: a plot does not begin with 'Title:'");
        }
        do {
            if (trimmed(line).empty()) {
                continue;
            }
            const std::size_t colon = line.find(':');
            if (colon == std::string_view::npos) {
                throw Fault("no header line: '" + line.substr(0, 60) + "'");
            }
            const std::string key = lower_case(trimmed(std::string_view(line).substr(0, colon)));
            const std::string_view value = trimmed(std::string_view(line).substr(colon + 1));
            if (key == "variables") {
                read_variables(value);
                plot_.data_offset = lines_.offset();
                return std::move(plot_);
            }
            take(key, value);
        } while (lines_.next(line));
        throw Fault("a header ends without 'Variables:'");
    }

  private:
    void take(const std::string &key, std::string_view value)
    {
        if (key == "title") {
            plot_.title = value;
        } else if (key == "date") {
            plot_.date = value;
        } else if (key == "plotname") {
            plot_.name = value;
        } else if (key == "flags") {
            take_flags(value);
        } else if (key == "no. variables") {
            variable_count_ = required_count(value, "No. Variables:");
        } else if (key == "no. points") {
            plot_.points = required_count(value, "No. Points:");
            has_points_ = true;
        } else if (key == "option" || key == "options" || key == "temperature") {
            take_temperature(key, value);
        }
    }

    void take_flags(std::string_view value)
    {
        for (const std::string_view word : words_of(value, ',')) {
            const std::string flag = lower_case(word);
            plot_.complex = plot_.complex || flag == "complex";
            plot_.fast_access = plot_.fast_access || flag == "fastaccess";
            plot_.unpadded = plot_.unpadded || flag == "unpadded";
            plot_.doubles = plot_.doubles || flag == "double";
            plot_.log_sweep = plot_.log_sweep || flag == "log";
        }
    }

    // "Temperature: 85" and "Option: temp = 85".
    void take_temperature(const std::string &key, std::string_view value)
    {
        std::vector<std::string_view> words = words_of(value, '=');
        if (key == "temperature") {
            words.insert(words.begin(), "temp");
        }
        for (std::size_t i = 0; i + 1 < words.size(); ++i) {
            double degrees = 0.0;
            if (lower_case(words[i]) == "temp" && to_number(words[i + 1], degrees)) {
                plot_.temperature = degrees;
            }
        }
    }

    // Reads the list of variables and the line behind it. Old writers put the first variable on the line of
    // the keyword itself.
    void read_variables(std::string_view behind_keyword)
    {
        if (plot_.name.empty() || !has_points_ || variable_count_ <= 0) {
            throw Fault("a header lacks 'Plotname:', 'No. Variables:' or 'No. Points:'");
        }
        std::string line(behind_keyword);
        if (!line.empty()) {
            add_variable(line);
        }
        while (lines_.next(line)) {
            const std::string word = lower_case(trimmed(line));
            if (word == "binary:" || word == "values:") {
                plot_.text = word == "values:";
                check_variables();
                return;
            }
            if (!word.empty()) {
                add_variable(line);
            }
        }
        throw Fault("plot '" + plot_.name + "' has no values");
    }

    void add_variable(std::string_view line)
    {
        const VariableWords words = split_variable(line);
        RawVariable variable;
        variable.name = words.name;
        variable.type = words.others.empty() ? "notype" : lower_case(words.others[0]);
        variable.points = plot_.points;
        for (const std::string_view attribute : words.others) {
            const std::string_view value =
                attribute.substr(std::min(attribute.find('=') + 1, attribute.size()));
            if (starts_with(attribute, "dims=")) {
                take_dimensions(value, variable);
            } else if (attribute == "grid=2" || attribute == "grid=3") {
                plot_.log_sweep = true; // both axes logarithmic, or this one
            }
        }
        plot_.variables.push_back(std::move(variable));
    }

    void check_variables() const
    {
        const auto listed = static_cast<std::int64_t>(plot_.variables.size());
        if (listed != variable_count_) {
            throw Fault("plot '" + plot_.name + "' promises " + std::to_string(variable_count_) +
                        " variables and lists " + std::to_string(listed));
        }
    }

    bool utf16_;
    LineReader lines_;
    RawPlot plot_;
    std::int64_t variable_count_ = 0;
    bool has_points_ = false;
};

std::string widened(std::string_view text)
{
    std::string wide;
    for (const char c : text) {
        wide += c;
        wide += '\0';
    }
    return wide;
}

} // namespace

RawPlot read_raw_header(const InputFile &file, std::int64_t offset)
{
    return HeaderReader(file, offset).read();
}

std::int64_t skip_white_space(const InputFile &file, std::int64_t offset, bool utf16)
{
    std::array<char, 4096> bytes;
    while (offset < file.size()) {
        const std::size_t held = file.read_some(offset, bytes.data(), bytes.size());
        for (std::size_t i = 0; i < held; ++i) {
            const bool blank = is_blank(bytes[i]) || bytes[i] == '\n' || (utf16 && bytes[i] == '\0');
            if (!blank) {
                return offset + static_cast<std::int64_t>(i);
            }
        }
        if (held == 0) {
            break;
        }
        offset += static_cast<std::int64_t>(held);
    }
    return file.size();
}

bool is_header_at(const InputFile &file, std::int64_t offset)
{
    char start[2 * kFirstKey.size()];
    const std::string_view held(start, file.read_some(offset, start, sizeof start));
    return starts_with(lower_case(held), kFirstKey) || starts_with(lower_case(held), widened(kFirstKey));
}

std::int64_t find_header(const InputFile &file, std::int64_t offset, bool utf16)
{
    const std::string feed = utf16 ? widened("\n") : "\n";
    const std::string key = utf16 ? widened(kFirstKey) : std::string(kFirstKey);
    std::vector<char> bytes(std::size_t{64} << 10);
    while (offset < file.size()) {
        const std::size_t held = file.read_some(offset, bytes.data(), bytes.size());
        const std::string_view window(bytes.data(), held);
        for (std::size_t i = window.find(feed); i != std::string_view::npos; i = window.find(feed, i + 1)) {
            const std::size_t next = i + feed.size();
            const std::int64_t behind = offset + static_cast<std::int64_t>(next);
            const bool is_cut_off = next + key.size() > held;
            if (is_cut_off ? is_header_at(file, behind)
                           : lower_case(window.substr(next, key.size())) == key) {
                return behind;
            }
        }
        if (held < bytes.size()) {
            break;
        }
        offset += static_cast<std::int64_t>(held - feed.size() + 1);
    }
    return file.size();
}
