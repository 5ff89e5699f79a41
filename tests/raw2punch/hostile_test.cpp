// SPDX-License-Identifier: MIT
// Damaged rawfiles end with a message, and nothing is left under the name of the output.
#include "conversion.h"
#include "rawfile.h"

#include <gtest/gtest.h>

namespace
{

RawContents good_contents(RawForm form)
{
    RawContents raw;
    raw.form = form;
    raw.signals = {{"time", "time", {0, 1, 2}}, {"v(a)", "voltage", {4, 5, 6}}};
    return raw;
}

// Replaces the first occurrence of a text.
std::string edited(std::string text, const std::string &from, const std::string &to)
{
    const std::size_t place = text.find(from);
    return place == text.npos ? throw std::runtime_error("nothing to edit: " + from)
                              : text.replace(place, from.size(), to);
}

struct Damage {
    RawForm form;
    const char *from; // empty: cut off the last byte
    const char *to;
    const char *message; // part of it
};

TEST(Hostile, EndsWithAMessageAndNoFile)
{
    const Damage cases[] = {
        {RawForm::TEXT, "Title:", "Titel:", "no SPICE rawfile"},
        {RawForm::TEXT, "Title:", "\x1f\x8b", "is compressed"},
        {RawForm::TEXT, "Plotname:", "Comment:", "lacks 'Plotname:'"},
        {RawForm::TEXT, "Flags: real", "Flags", "no header line"},
        {RawForm::TEXT, "No. Points: 3\n", "", "lacks"},
        {RawForm::TEXT, "No. Points: 3", "No. Points:     ", "no number behind 'No. Points:'"},
        {RawForm::TEXT, "No. Points: 3", "No. Points: 0", "has no points"},
        {RawForm::TEXT, "No. Points: 3", "No. Points: -3", "no number behind"},
        {RawForm::TEXT, "No. Points: 3", "No. Points: 4", "the number of the point is missing"},
        {RawForm::TEXT, "No. Points: 3", "No. Points: 2", "more values than the header promises"},
        {RawForm::TEXT, "No. Points: 3", "No. Points: 4611686018427387904", "more than its values can be"},
        {RawForm::TEXT, "No. Variables: 2", "No. Variables: 3", "promises 3 variables and lists 2"},
        {RawForm::TEXT, "No. Variables: 2", "No. Variables: 4000000000", "promises 4000000000 variables"},
        {RawForm::TEXT, "No. Variables: 2", "No. Variables: 99999999999999999999", "no number behind"},
        {RawForm::TEXT, "Variables:\n", "", "no header line"},
        {RawForm::TEXT, "Values:\n", "", "has no values"},
        {RawForm::TEXT, "voltage", "voltage dims=4", "more points than its plot"},
        {RawForm::TEXT, "voltage", "voltage dims=99999999999,99999999999", "more points than its plot"},
        {RawForm::TEXT, "time\n", "time dims=1\n", "the first variable"},
        {RawForm::TEXT, "\t5\n", "", "a value is missing"},
        {RawForm::TEXT, "\t5\n", "\t5 6\n", "the numbers of the points do not go on"},
        {RawForm::TEXT, "\t5\n", "\tfive\n", "a value is no number"},
        {RawForm::TEXT, "Flags: real", "Flags: complex", "lacks its second number"},
        {RawForm::TEXT, "Flags: real", "Flags: real fastaccess", "does not exist"},
        {RawForm::DOUBLES, "No. Points: 3", "No. Points: 5", "cut off, or damaged"},
        {RawForm::DOUBLES, "No. Points: 3", "No. Points: 1", "cut off, or damaged"},
        {RawForm::DOUBLES, "No. Points: 3", "No. Points: 4611686018427387904", "cut off, or damaged"},
        {RawForm::DOUBLES, "", "", "cut off, or damaged"},
        {RawForm::DOUBLES, "Flags: real", "Flags: complex", "cut off, or damaged"},
        {RawForm::COLUMNS, "", "", "cut off, or damaged"},
    };
    for (const Damage &damage : cases) {
        SCOPED_TRACE(std::string(damage.from) + " -> " + damage.to);
        std::string bytes = rawfile(good_contents(damage.form));
        if (*damage.from == '\0') {
            bytes.pop_back();
        } else {
            bytes = edited(bytes, damage.from, damage.to);
        }
        Conversion conversion;
        const std::string message = conversion.run(bytes);
        EXPECT_NE(message.find(damage.message), message.npos) << message;
        EXPECT_FALSE(message.empty());
        EXPECT_EQ(conversion.files(), 1U); // the rawfile
    }
}

// Cut off, or with a byte changed, all over the file: a conversion, or a message and no file.
TEST(Hostile, NeverLeavesHalfAFile)
{
    for (int form = 0; form < 8; ++form) {
        RawContents raw = good_contents(static_cast<RawForm>(form));
        raw.unpadded = form < 3;
        raw.signals.push_back({"v(b)", "voltage", {1, 2}});
        const std::string good = rawfile(raw);
        for (std::size_t i = static_cast<std::size_t>(form) % 4; i < good.size(); i += 4) {
            std::string flipped = good;
            flipped[i] = static_cast<char>(flipped[i] ^ (1 << i % 8));
            for (const std::string &bytes : {good.substr(0, i), flipped}) {
                Conversion conversion;
                const bool converted = conversion.run(bytes).empty();
                ASSERT_EQ(conversion.files(), converted ? 2U : 1U) << "form " << form << ", byte " << i;
            }
        }
    }
}

} // namespace
