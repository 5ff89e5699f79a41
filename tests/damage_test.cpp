// SPDX-License-Identifier: MIT
// Damaged files. Whatever a killed simulation, a full disk or a half-copied tree leaves behind, the
// program ends in time with a grade or a fault of its own, and indexing changes no punch data. The
// cases stand in damage.txt.
#include "test_support.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <random>

namespace
{

using Bytes = std::string;
using Words = std::vector<Bytes>;

const Bytes kTable = "*$$\n*$$ --- BEGIN PUNCH FILE INDEX TABLE ---\n";

Bytes sample_path(const Bytes &name)
{
    return TRESK_SOURCE "/samples/" + name + "/golden.pun";
}

using Damage = Words (*)(const Bytes &file, const Words &how);

// The ways to damage a file by the arguments of a case; some yield several files.
const std::map<Bytes, Damage> kWays = {
    {"cut",
     [](const Bytes &file, const Words &how) -> Words {
         const std::size_t place = std::stoul(how[0]);
         return {file.substr(0, place), file.substr(place)};
     }},
    // Everywhere, or at the line ends there
    {"cut-each",
     [](const Bytes &file, const Words &how) {
         Words cuts;
         for (std::size_t kept = 0; (kept += std::stoul(how[0])) < file.size();) {
             kept = how.size() > 1 ? file.find('\n', kept) + 1 : kept;
             cuts.push_back(file.substr(0, kept));
         }
         return cuts;
     }},
    // Many bits, a few, and a few in the headers at the front
    {"flip",
     [](const Bytes &file, const Words &how) -> Words {
         std::mt19937 random(static_cast<unsigned>(std::stoul(how[0])));
         const auto flipped = [&](std::size_t count, std::size_t reach) {
             Bytes damaged = file;
             for (; count > 0; --count) {
                 char &byte = damaged[random() % reach];
                 byte = static_cast<char>(byte ^ (1 << random() % 8));
             }
             return damaged;
         };
         return {flipped(file.size() / 50, file.size()), flipped(9, file.size()), flipped(5, 600)};
     }},
    // At the front and wherever it hurts
    {"insert",
     [](const Bytes &file, const Words &how) {
         Words grown;
         for (const std::size_t place :
              {file.size(), file.find("RERUN"), file.find("\n+") + 1, file.find("YUNITS"), file.size() - 1}) {
             grown.push_back(Bytes(file).insert(place % file.size(), how[0]));
         }
         return grown;
     }},
    {"replace",
     [](const Bytes &file, const Words &how) -> Words {
         return {replaced(file, how[0], how[1])};
     }},
    {"grow",
     [](const Bytes &file, const Words &how) -> Words {
         Bytes grown = how[0];
         for (std::size_t i = std::stoul(how[2]); i > 0; --i) {
             grown += how[1];
         }
         grown += how.size() > 3 ? how[3] : "";
         return {Bytes(file).replace(file.find(how[0]), how[0].size(), grown)};
     }},
    {"splice",
     [](const Bytes &file, const Words &how) -> Words {
         const Bytes back = read_file(sample_path(how[0]));
         return {file.substr(0, file.size() / 3) + back.substr(back.size() / 3),
                 file.substr(0, 700) + back.substr(back.size() - 700), file + back};
     }},
    {"table",
     [](const Bytes &file, const Words &how) -> Words {
         return {file + kTable + how[0]};
     }},
};

// A grade with its result line, a table, or a fault that ends the run where it is met. Signals, time
// limit and sanitizers have exit codes of their own.
void expect_clean_end(int code, const Bytes &text)
{
    static const Bytes kGrades[] = {"PASS\n", "FAIL_I ", "FAIL_PV ", "FAIL_V ", "FAIL_PSV ", "FAIL_SV "};
    if (text.find("\n Comparison result:  ") != Bytes::npos) {
        ASSERT_LE(code, 5) << text;
        EXPECT_NE(text.find("\n Comparison result:  " + kGrades[code]), Bytes::npos) << code << text;
    } else if (code != 0 || text.find("Adding punch index table") == Bytes::npos) {
        EXPECT_EQ(code, 1) << text;
        EXPECT_NE(text.find("unknown data format ("), Bytes::npos) << text;
    }
}

// Damages a sample as a line of the case table says and runs the program on every result, with
// arguments in which $SAMPLE is the sample.
void run_case(const Bytes &line, const Bytes &arguments, const Bytes &folder)
{
    std::istringstream words(line);
    Bytes sample;
    Bytes way;
    Words how;
    words >> sample >> way;
    for (Bytes word; words >> word;) {
        how.push_back(unescaped(word));
    }
    const Bytes damaged = folder + "/damaged.pun";
    setenv("SAMPLE", sample_path(sample).c_str(), 1);
    for (const Bytes &before : kWays.at(way)(read_file(sample_path(sample)), how)) {
        std::ofstream(damaged, std::ios::binary) << before;
        const int code = run_program(folder, "", arguments);
        expect_clean_end(code, read_file(folder + "/transcript"));
        const std::size_t data = std::min(before.find(kTable), before.size());
        EXPECT_EQ(read_file(damaged).compare(0, data, before, 0, data), 0) << "punch data changed";
        if (testing::Test::HasFailure()) {
            std::ofstream(damaged, std::ios::binary) << before;
            FAIL() << line << "\nThe file is kept: " << damaged;
        }
    }
}

void run_cases(const Bytes &arguments)
{
    const Bytes folder = make_folder();
    std::ifstream cases(TRESK_SOURCE "/tests/damage.txt");
    for (Bytes line; std::getline(cases, line);) {
        if (line[0] != '#') {
            ASSERT_NO_FATAL_FAILURE(run_case(line, arguments, folder));
        }
    }
    std::filesystem::remove_all(folder);
}

TEST(DamagedFile, AsReference)
{
    run_cases(R"(damaged.pun "$SAMPLE")");
}

TEST(DamagedFile, AsComparison)
{
    run_cases(R"(-d 35 "$SAMPLE" damaged.pun)");
}

TEST(DamagedFile, Indexed)
{
    run_cases("-index damaged.pun");
}

} // namespace
