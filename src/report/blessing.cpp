// SPDX-License-Identifier: MIT
#include "report/blessing.h"

#include "compare/listener.h"
#include "read/tk_read.h"
#include "report/file_steps.h"
#include "report/output_folder.h"
#include "report/plain_file.h"
#include "report/text.h"
#include "report/tresk_run.h"
#include "support/exit_bits.h"

#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <fstream>
#include <memory>
#include <nlohmann/json.hpp>
#include <numeric>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace report
{

namespace
{

// Fields of summary.tsv.
enum Field : std::size_t {
    GRADE,
    STATUS,
    FAILING,
    MISSING,
    DIFFERENCES,
    ANALYSIS,
    SIGNAL,
    ABSERR,
    RELERR,
    SECONDS,
    GOLDEN_DIGEST,
    REGRESSION_DIGEST,
    kFields
};

constexpr const char *kChanged = "a file has changed since it was compared: compare again";

// What a comparison of a file with itself says about it.
class FileChecker : public Listener
{
  public:
    void started(const RunStart &start) override
    {
        tolerances_ = std::string(start.mode) + " -a " + number_text(start.abstol) + " -r " +
                      number_text(start.reltol) + (start.desert ? " -desert" : "");
    }
    void file_read(const FileRead &read) override
    {
        is_read_ = is_read_ && read.result == READ_GOOD;
        const auto results = std::accumulate(read.results.begin(), read.results.end(), std::size_t{0});
        has_results_ = has_results_ && results > 0;
    }
    void rerun_pair(const RERUNform &, const RERUNform &) override
    {
    }
    void modify_pair(int, const MODIFYform &, const MODIFYform &) override
    {
    }
    void finding(const Finding &) override
    {
    }
    void passed(const Finding &) override
    {
    }
    void ended(const RunEnd &end) override
    {
        status_ = end.status;
    }
    std::string answer() const
    {
        const nlohmann::json told = {
            {"read", is_read_}, {"results", has_results_}, {"status", status_}, {"tolerances", tolerances_}};
        return told.dump();
    }

  private:
    std::string tolerances_;
    unsigned status_ = 0;
    bool is_read_ = true;
    bool has_results_ = true;
};

std::string utc_time()
{
    const std::time_t now = std::time(nullptr);
    std::tm parts = {};
    gmtime_r(&now, &parts);
    char text[32];
    const std::size_t size = std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &parts);
    return {text, size};
}

std::string user_name()
{
    const passwd *entry = getpwuid(geteuid());
    return entry != nullptr ? entry->pw_name : std::to_string(geteuid());
}

// The file itself where the path is a link, so that the link stays one.
std::string real_path(const std::string &path)
{
    const std::unique_ptr<char, void (*)(void *)> real(realpath(path.c_str(), nullptr), std::free);
    if (!real) {
        throw Refused("cannot find " + terminal_line(path) + ": " + std::strerror(errno));
    }
    return real.get();
}

struct stat status_of(const std::string &path)
{
    struct stat status {
    };
    if (stat(path.c_str(), &status) != 0) {
        throw Refused("cannot find " + terminal_line(path) + ": " + std::strerror(errno));
    }
    return status;
}

bool is_same_file(const struct stat &a, const struct stat &b)
{
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino && a.st_size == b.st_size &&
           a.st_mtim.tv_sec == b.st_mtim.tv_sec && a.st_mtim.tv_nsec == b.st_mtim.tv_nsec;
}

} // namespace

Blessing::Blessing(const KitTree &tree, const KitPair &pair, const BlessOptions &options)
    : tree_(tree), pair_(pair), options_(options)
{
    read_summary();
    check_digests();
    const PlainFile regression(pair_.regression);
    tolerances_ = check_against(regression.path());
}

void Blessing::read_summary()
{
    std::ifstream file(tree_.out + "/report/" + pair_.path + '/' + kSummaryFile);
    std::string line;
    if (!std::getline(file, line)) {
        throw Refused("has no report: compare again with one");
    }
    std::size_t begin = 0;
    for (std::size_t tab = 0; tab != std::string::npos; begin = tab + 1) {
        tab = line.find('\t', begin);
        summary_.push_back(line.substr(begin, tab - begin));
    }
    if (summary_.size() < kFields) {
        throw Refused("has a damaged report: compare again");
    }
    if (summary_[GRADE] == "NO_GRADE") {
        throw Refused("came to no grade");
    }
}

void Blessing::check_digests() const
{
    const std::string &golden = summary_[GOLDEN_DIGEST];
    const std::string &regression = summary_[REGRESSION_DIGEST];
    if (golden.empty() || regression.empty()) {
        throw Refused("a file could not be read when it was compared");
    }
    if (plain_digest(pair_.golden) != golden || plain_digest(pair_.regression) != regression) {
        throw Refused(kChanged);
    }
    if (golden == regression) {
        throw Refused("both files are the same");
    }
}

// A golden file has to match what it was made of. Returns the tolerances of the comparison.
std::string Blessing::check_against(const std::string &golden) const
{
    const PlainFile regression(pair_.regression);
    std::vector<std::string> arguments = pair_.options;
    arguments.insert(arguments.begin(), {golden, regression.path()});
    FileChecker checker;
    nlohmann::json told;
    try {
        told = nlohmann::json::parse(run_apart(arguments, checker, [&checker] { return checker.answer(); }));
    } catch (const NoGrade &fault) {
        throw Refused(std::string("cannot be compared with itself: ") + fault.what());
    }
    if (!told.at("read").get<bool>()) {
        throw Refused("the regression file cannot be read whole");
    }
    if (!told.at("results").get<bool>()) {
        throw Refused("the regression file holds no results");
    }
    const auto status = told.at("status").get<unsigned>();
    if ((status & EXIT_NAN) != 0 && !options_.even_nan) {
        throw Refused("a value is not a number or infinite, and would never match itself (--even-nan)");
    }
    const unsigned accepted = (status & EXIT_NAN) != 0 ? EXIT_NAN | EXIT_TOLERANCE : 0U;
    if ((status & ~accepted) != 0) {
        throw Refused("the regression file does not match itself");
    }
    return told.at("tolerances").get<std::string>();
}

std::string Blessing::summary_text() const
{
    std::string text = summary_[GRADE] + ", " + summary_[FAILING] + " failing, " + summary_[MISSING] +
                       " missing, " + summary_[DIFFERENCES] + " different";
    if (!summary_[SIGNAL].empty()) {
        text += ", worst " + terminal_line(summary_[ANALYSIS] + ' ' + summary_[SIGNAL]);
    }
    return text;
}

// The golden file keeps its packing whatever that of the regression file is.
void Blessing::make_new(const std::string &path) const
{
    const std::string packing = packing_of(pair_.golden);
    const auto fill = [&](int fd) {
        if (packing == packing_of(pair_.regression)) {
            convert_file(pair_.regression, fd, "", Direction::PACK);
        } else {
            const PlainFile regression(pair_.regression);
            convert_file(regression.path(), fd, packing, Direction::PACK);
        }
    };
    make_file(path, status_of(pair_.golden).st_mode & 07777U, fill);
}

void Blessing::keep_old() const
{
    if (options_.keep.empty()) {
        return;
    }
    const std::string kept = options_.keep + '/' + pair_.path + packing_of(pair_.golden);
    make_folders_of(kept);
    const std::string folder = real_path(folder_of(kept)) + '/';
    if (folder.compare(0, tree_.golden.size() + 1, tree_.golden + '/') == 0) {
        throw Refused("the folder of --keep lies in the golden tree");
    }
    if (access(kept.c_str(), F_OK) == 0) {
        if (plain_digest(kept) == summary_[GOLDEN_DIGEST]) {
            return; // of a blessing that was interrupted
        }
        throw Refused("an older file stands at " + terminal_line(kept));
    }
    const std::string new_name = kept + ".blessing";
    make_file(new_name, status_of(pair_.golden).st_mode & 07777U,
              [&](int fd) { convert_file(pair_.golden, fd, "", Direction::PACK); });
    put_in_place(new_name, kept);
}

std::vector<std::string> Blessing::record_fields() const
{
    std::vector<std::string> fields = {utc_time(), user_name(), pair_.path};
    fields.insert(fields.end(), summary_.begin(), summary_.begin() + SECONDS);
    fields.insert(fields.end(),
                  {tolerances_, summary_[GOLDEN_DIGEST], summary_[REGRESSION_DIGEST], options_.reason});
    return fields;
}

void Blessing::carry_out(BlessingLog &log)
{
    const std::string golden = real_path(pair_.golden);
    const std::string new_golden = golden + ".blessing";
    const struct stat before = status_of(golden);
    if (plain_digest(golden) != summary_[GOLDEN_DIGEST]) {
        throw Refused(kChanged);
    }
    make_new(new_golden);
    bool is_announced = false;
    try {
        const PlainFile made(new_golden, packing_of(pair_.golden));
        if (plain_digest(made.path()) != summary_[REGRESSION_DIGEST]) {
            throw Refused(kChanged);
        }
        check_against(made.path());
        keep_old();
        log.announce(pair_.golden.substr(tree_.golden.size() + 1), summary_[REGRESSION_DIGEST],
                     record_fields());
        is_announced = true;
        if (!is_same_file(before, status_of(golden))) {
            throw Refused(kChanged);
        }
        put_in_place(new_golden, golden);
    } catch (...) {
        unlink(new_golden.c_str());
        if (is_announced && plain_digest(golden) != summary_[REGRESSION_DIGEST]) {
            log.withdraw();
        }
        throw;
    }
    try {
        log.record();
    } catch (const std::runtime_error &fault) {
        throw std::runtime_error(std::string("is blessed, but not on record before the next blessing: ") +
                                 fault.what());
    }
}

} // namespace report
