// SPDX-License-Identifier: MIT
// What a listener gets must be what the transcript says, on all pairs of files of the golden cases.
#include "compare/analysis_table.h"
#include "listening.h"
#include "support/transcript.h"
#include "test_support.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <gtest/gtest.h>

namespace
{

namespace fs = std::filesystem;

// Holds every event against the transcript so far and against what it says itself. Writes a line to the
// file "heard" for each contradiction, and one at the end.
class CheckingListener : public Listener
{
  public:
    explicit CheckingListener(const std::string &folder) : heard_(folder + "/heard")
    {
    }
    void file_read(const FileRead &read) override
    {
        expect(read.file->name != nullptr &&
                   read.side == (files_++ == 0 ? Side::REFERENCE : Side::COMPARISON),
               "file");
    }
    void rerun_pair(const RERUNform &ref, const RERUNform &) override
    {
        place_ = {ref.number, {}, {}};
        new_text();
    }
    void modify_pair(int rerun, const MODIFYform &ref, const MODIFYform &) override
    {
        place_ = {rerun, ref.number, {}};
        new_text();
    }
    void finding(const Finding &finding) override
    {
        const std::string text = new_text();
        bits_ |= finding.bits | (finding.met_nan ? 256U : 0U);
        expect(!text.empty(), "nothing printed");
        if (finding.kind < FindingKind::DATA_FORMAT) {
            expect_words(finding, text);
        }
        if (finding.kind <= FindingKind::ROOT) {
            ++results_;
            expect(text.find(columns_of(finding)) != std::string::npos, text);
            check_place(finding);
            check_extras(finding);
        }
        remarks_ += finding.is_judged || finding.kind == FindingKind::TITLE ? 0 : 1;
        warnings_ += text.find("Warning : ") != std::string::npos ? 1 : 0;
    }
    void passed(const Finding &finding) override
    {
        expect(new_text().empty() || finding.fails + static_cast<int>(finding.bits) == 0, "passed");
        expect(finding.marker.empty() && !finding.met_nan && finding.judged.verdict == PASSES, "passed");
        check_place(finding);
        check_extras(finding);
    }
    void ended(const RunEnd &end) override
    {
        transcript_flush();
        expect(end.status == bits_ || files_ < 2, "status");
        const std::string all = read_file("transcript");
        const auto count = [&all](const std::string &text) {
            int times = 0;
            for (std::size_t at = 0; (at = all.find(text, at)) != std::string::npos; ++at) {
                ++times;
            }
            return times;
        };
        expect(count("]  <") + count("]  \n") == results_, "result lines");
        expect(count("Warning : ") == warnings_, "warnings");
        expect(count("ERROR1.") + count("ERROR2.") + count("ABS macro.") + count("No INDC ") == remarks_,
               "remarks");
        heard_ << "end " << end.grade << std::endl;
    }

  private:
    // What was printed since the last event.
    std::string new_text()
    {
        transcript_flush();
        const std::string all = read_file("transcript");
        const std::string text = all.substr(printed_);
        printed_ = all.size();
        return text;
    }
    void expect_words(const Finding &finding, const std::string &text)
    {
        std::vector<std::string> words{finding.name, finding.ref_text, finding.cmp_text};
        if (finding.side != Side::NEITHER) {
            words = {finding.name, finding.side == Side::REFERENCE ? "eference" : "omparison"};
        }
        for (const std::string &word : words) {
            expect(text.find(word) != std::string::npos, word + " in " + text);
        }
    }
    // The last columns of a result line.
    static std::string columns_of(const Finding &finding)
    {
        char text[64];
        std::snprintf(text, sizeof text, "[%9.3e] ", finding.judged.relerr * finding.judged.abserr);
        return text + finding.marker + "\n";
    }
    void check_place(const Finding &finding)
    {
        expect(finding.place.rerun == place_.rerun && finding.place.modify == place_.modify, "place");
    }
    void check_extras(const Finding &finding)
    {
        if (finding.kind == FindingKind::AREA) {
            check_areas(finding);
        } else if (finding.kind == FindingKind::SWEEP) {
            check_sweep(finding);
        }
    }
    void check_areas(const Finding &finding)
    {
        double sum = 0.0;
        double largest = 0.0;
        const auto difference = [&finding](int i) {
            return std::fabs(finding.areas.cmp[i] - finding.areas.ref[i]);
        };
        for (int i = 0; i < finding.areas.count; ++i) {
            sum += difference(i);
            largest = std::max(largest, difference(i));
        }
        const int worst = finding.worst.index;
        expect((worst >= 0) == (sum != 0.0), "whether there is a worst interval");
        expect(finding.met_nan || sum == finding.judged.abserr, "sum of areas");
        expect(finding.met_nan || worst < 0 || difference(worst) == largest, "worst interval");
    }
    void check_sweep(const Finding &finding)
    {
        int fails = 0;
        int index = 0;
        double max_abs = 0.0;
        bool met_nan = false;
        bool met_worst = false;
        const auto visit = [&](const PT &ref, const PT &, const Judged &judged) {
            if (judged.verdict != PASSES) {
                ++fails;
                met_nan = met_nan || judged.verdict == NOT_A_NUMBER;
                max_abs = std::max(max_abs, judged.abserr);
                met_worst = met_worst || (index == finding.worst.index && ref.x == finding.worst.x);
            }
            ++index;
        };
        analysis_row(finding.analysis).walk(*finding.signals.ref, *finding.signals.cmp, visit);
        expect(fails == finding.fails && index == finding.compared && met_nan == finding.met_nan, "walk");
        expect(max_abs == finding.judged.abserr && met_worst == (fails > 0), "worst point");
    }
    void expect(bool holds, const std::string &what)
    {
        if (!holds) {
            heard_ << "wrong: " << what << "\n";
        }
    }

    std::ofstream heard_;
    Place place_;
    unsigned bits_ = 0;
    int files_ = 0;
    int results_ = 0;
    int warnings_ = 0;
    int remarks_ = 0;
    std::size_t printed_ = 0;
};

void compare_pair(const std::string &folder, const fs::path &ref, const fs::path &cmp, bool absolutely)
{
    CheckingListener heard(folder);
    const int code = run_listening(heard, folder, {ref, cmp, absolutely ? "-Aonly" : "-Ronly"});
    const std::string end = read_file(folder + "/transcript").find("unknown data format") == std::string::npos
                                ? "end " + std::to_string(code) + "\n"
                                : ""; // the fault that ends a run
    EXPECT_EQ(read_file(folder + "/heard"), end) << ref << " " << cmp;
}

TEST(Listener, HearsWhatTheTranscriptSays)
{
    const std::string folder = make_folder();
    int pairs = 0;
    for (const auto &one : fs::recursive_directory_iterator(TRESK_SOURCE "/tests/golden")) {
        if (one.path().extension() == ".pun") {
            for (const auto &other : fs::directory_iterator(one.path().parent_path())) {
                if (other.path().extension() == ".pun") {
                    compare_pair(folder, one, other, ++pairs % 2 == 0);
                }
            }
        }
    }
    EXPECT_GT(pairs, 300);
    fs::remove_all(folder);
}

} // namespace
