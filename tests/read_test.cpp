// SPDX-License-Identifier: MIT
#include "read/codes.h"
#include "read/index_file.h"
#include "read/index_table.h"
#include "read/look_ahead.h"
#include "read/point_blocks.h"
#include "read/waveform_reader.h"
#include "support/number.h"
#include "support/settings.h"
#include "support/signal_scanner.h"

#include "test_support.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <tuple>

using namespace std::string_literals;

// One way to store values, and test data stored that way.
struct Layout {
    int format;
    bool big_endian;
    std::size_t size; // of a value

    std::string stored(double value) const
    {
        const auto narrow = static_cast<float>(value);
        const void *bytes = format == BINARY ? static_cast<const void *>(&narrow) : &value;
        std::string text(static_cast<const char *>(bytes), size);
        if (big_endian) {
            std::reverse(text.begin(), text.end());
        }
        return text;
    }

    // The points (i, -i - 0.5), a byte after every tenth, and the end mark.
    std::string data(int points) const
    {
        std::string bytes;
        for (int i = 0; i < points; ++i) {
            bytes += stored(i) + stored(-i - 0.5) + (i % 10 == 9 ? "\xff" : "");
        }
        return bytes + std::string(size, '\xff');
    }
};

static constexpr Layout kLayouts[] = {
    {BINARY, true, 4}, {BINARY, false, 4}, {BINARY_DBL, true, 8}, {BINARY_DBL, false, 8}};

// Reads a signal with the data. Tells the number of points, how many points from the first on have the
// values of Layout::data, and the field that follows, "<end>" at the end of the file.
static std::tuple<int, int, std::string> read_signal(const Layout &layout, const std::string &data,
                                                     std::size_t pad = 2)
{
    reverse_bytes = layout.big_endian;
    PunchSource source(comment_line(pad) + "V1 DATA " + format_name(layout.format) + "\n" + data);
    tk_BUFinit(source.stream);
    tk_BUFreadLine(source.stream);
    const Wform *wform = tk_read_wform(source.stream, AC);
    int right = 0;
    BlockWalk walk(*wform);
    for (PointBlock block = walk.next(); block.count != 0; block = walk.next()) {
        for (std::size_t i = 0; i < block.count && block.x[i] == right && block.val[i] == -right - 0.5; ++i) {
            ++right;
        }
    }
    return {wform->numpts, right, tk_eofflag ? "<end>" : tk_nxfield(source.stream)};
}

// The missing bytes read as 0xFF: the point that is cut off counts, and the data ends with it.
TEST(BinaryData, CutAtEveryByte)
{
    for (const Layout &layout : kLayouts) {
        const int pair = 2 * static_cast<int>(layout.size);
        for (const int points : {0, 1, 9, 10, 11, 20, 25}) {
            const std::string data = layout.data(points);
            for (int cut = 0; cut <= static_cast<int>(data.size()); ++cut) {
                const int full = cut / (10 * pair + 1) * 10;
                const int rest = cut % (10 * pair + 1);
                const int begun = std::min(full + std::min((rest + pair - 1) / pair, 10), points);
                const int complete = std::min(full + rest / pair, points);
                for (const int counting : {1, 0}) { // counts the points only, then keeps them
                    pun_index = counting;
                    ASSERT_EQ(read_signal(layout, data.substr(0, static_cast<std::size_t>(cut))),
                              std::tuple(begun, counting == 1 ? 0 : complete, "<end>"))
                        << points << " " << cut;
                }
            }
        }
    }
}

TEST(BinaryData, BlocksMarksAndTails)
{
    const std::size_t block = PunchSource("").stream.capacity;
    for (const Layout &layout : kLayouts) {
        const std::string data = layout.data(11) + std::string("\0 \0x\nNEXT\n", 10);
        for (std::size_t before = 0; before <= data.size() + 20; ++before) {
            ASSERT_EQ(read_signal(layout, data, block - before), std::tuple(11, 11, "NEXT")) << before;
        }
        const std::string point = layout.stored(0) + layout.stored(-0.5);
        const std::string end(layout.size, '\xff');
        const std::string tail = end + "x\nNEXT\n";
        std::string nan = end;
        nan[layout.big_endian ? layout.size - 1 : 0] = 'x';
        EXPECT_EQ(read_signal(layout, point + nan + nan + point + tail), std::tuple(3, 1, "NEXT"));
        EXPECT_EQ(read_signal(layout, point + layout.stored(1) + tail), std::tuple(2, 1, "NEXT"));
        for (const TableRow &row : cases_of("Behind binary data")) {
            const std::string data_and_text = point + end + unescaped(row["text"]);
            EXPECT_EQ(read_signal(layout, data_and_text), std::tuple(1, 1, row["next field"])) << row.place;
        }
    }
}

// What is looked for, 'p' the second name PWL, 'd' DELAY and no PWL field, 'f' a data format: by looking
// ahead, or by plainly reading on.
static bool is_ahead(char what, PunchStream &stream, bool quick)
{
    if (quick) {
        return what == 'p'   ? tk_lookAheadForPwl(stream)
               : what == 'd' ? tk_lookAheadForDelay(stream)
                             : tk_lookAheadForFormat(stream);
    }
    const std::string name = tk_nxsignal(stream);
    return what == 'p'   ? !tk_eolnflag && tk_nxsignal(stream) == "PWL"
           : what == 'd' ? name == "DELAY" && tk_nxfield(stream) != "PWL"
                         : format_of_word(name.c_str()) != NO_DATA;
}

// From each field of a text on: the answer, and what is left of a bus range as text and as number.
static std::string look_ahead(PunchSource &source, const std::string &text, std::mt19937 random, bool quick)
{
    source.open(text);
    tk_BUFinit(source.stream);
    std::string answers;
    for (int limit = 200; limit > 0 && !tk_eofflag; --limit) {
        const char what = random() % 3 == 0 && !tk_splitting_bus ? "df"[random() % 2] : 'p';
        tk_BUFmark(source.stream);
        answers += is_ahead(what, source.stream, quick) ? "1" : "0";
        tk_BUFrestore(source.stream);
        BusElement element;
        if (random() % 2 == 0 && tk_splitting_bus) {
            const std::string left = quick && tk_nxelement(element) ? tk_elementText(source.stream, element)
                                                                    : tk_nxsignal(source.stream);
            int error = 0;
            const double number =
                quick ? tk_elementNumber(source.stream, element, error) : convert_number(left.c_str(), error);
            answers += left + std::to_string(number) + std::to_string(error) + (tk_eolnflag ? "|" : "");
        }
        tk_nxfield(source.stream);
    }
    return answers;
}

TEST(LookAhead, SeesWhatReadingOnGives)
{
    const std::vector<std::string> pieces = {
        "A ", "B",    " PWL ", "PWM", "(",  "(",   "[", ")", "]", ":",      "0:2", "12", " ",      "\n",
        "\n", "\n+ ", "\n* ",  "&",   "& ", "&\n", "=", ",", "#", "DELAY ", "PW",  "L",  "BINARY", "\0"s};
    std::mt19937 random(20261121);
    PunchSource source("");
    for (int round = 0; round < 8000; ++round) {
        std::string soup;
        for (std::size_t length = random() % 60; length > 0; --length) {
            soup += pieces[random() % pieces.size()];
        }
        const std::mt19937 choices(random());
        ASSERT_EQ(look_ahead(source, soup, choices, true), look_ahead(source, soup, choices, false)) << soup;
    }
}

// However names and what separates them run on over the lines of other signals.
TEST(LookAhead, ReadsNoLineOverAndOver)
{
    constexpr std::size_t kSignals = 3000;
    for (const std::string unit :
         {"V 1 A(\n", "V 1 2 [\n", "V PWL A(\n", "1& V 1 A(\n", "x& 1 #y&\n", "(& 1 x (&\n",
          "V,1& PWL DELAY (a&\n", "& PWL DELAY (P&\n", "(& PWL DELAY (&\n", " PWL A[0:1],&V"}) {
        for (const char *tail : {":", "0:1)\n,", "0:9)"}) {
            std::string text = "* c\nV";
            for (std::size_t i = 0; i < kSignals; ++i) {
                text += unit;
            }
            PunchSource source(text + "\n" + tail + "\nz\n");
            tk_BUFinit(source.stream);
            tk_BUFreadLine(source.stream);
            const std::size_t before = tk_linesread;
            while (!tk_eofflag) {
                tk_read_wform(source.stream, TR);
            }
            EXPECT_LT(tk_linesread - before, 10 * kSignals) << unit << tail;
        }
    }
}

TEST(IndexTable, FoldsAt74Characters)
{
    for (const std::size_t size : {0U, 74U, 75U, 145U, 146U, 5000U}) {
        const std::string text = std::string(size / 2, 'x') + std::string(size - size / 2, 'y');
        std::string expected = text;
        for (std::size_t at = 74; at < expected.size(); at += 75) {
            expected.insert(at, "\n*$-");
        }
        char written[6000] = "";
        std::FILE *stream = fmemopen(written, sizeof written, "w");
        vprintIndexString(stream, "%s", text.c_str());
        std::fclose(stream);
        EXPECT_EQ(written, expected + "\n");
    }
}

// Where the punch data ends: the place in the file and its size, which must agree.
static std::int64_t data_end(const PunchSource &source)
{
    std::FILE *file = std::fopen(source.path.c_str(), "rb+");
    RemoveExistingIndex(source.path.c_str(), file);
    const std::int64_t place = ftello(file);
    fseeko(file, 0, SEEK_END);
    const std::int64_t size = ftello(file);
    std::fclose(file);
    return size == place ? place : -1;
}

static const std::string kTable = "*$$\n*$$ --- BEGIN PUNCH FILE INDEX TABLE ---\n*$:V1,4,1,VOLTS\n";

TEST(IndexFile, OldTableIsFoundByItsTrailer)
{
    for (const TableRow &row : cases_of("Index trailer")) {
        std::string text = "* a\nV1 1 2\n" + unescaped(row["behind the data"]);
        const std::size_t table = text.find("<table>");
        table == std::string::npos ? text : text.replace(table, 7, kTable);
        const std::size_t wanted = row["found"] == "yes" ? 11 : text.size();
        EXPECT_EQ(data_end(PunchSource(text)), static_cast<std::int64_t>(wanted)) << row.place;
    }
    EXPECT_EQ(data_end(PunchSource(kTable + "*$!0\n\n")), 0);
    PunchSource large("V1 0 1\n" + kTable + "*$!5368709127\n\n", false, 5368709120);
    EXPECT_EQ(data_end(large), 5368709127);
    stream_seek(large.stream, 5368709120);
    tk_BUFinit(large.stream);
    EXPECT_EQ(tk_read_wform(large.stream, TR)->offset, 5368709120);
}
