// SPDX-License-Identifier: MIT
#include "report/bless.h"

#include "driver/tk_main.h"
#include "report/blessing.h"
#include "report/pair.h"
#include "report/text.h"
#include "report/tresk_arguments.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <map>
#include <memory>

namespace report
{

namespace
{

constexpr int kRefused = 1;
constexpr std::size_t kShortestReason = 10; // characters

void check_reason(const std::string &reason)
{
    std::size_t characters = 0;
    for (const char c : reason) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < ' ' || byte == 0x7f) {
            throw WrongCall("the reason has to be one line");
        }
        characters += byte != ' ' && (byte & 0xC0U) != 0x80U ? 1U : 0U; // one for each character but blanks
    }
    if (characters < kShortestReason) {
        throw WrongCall("the reason has to have 10 characters at least");
    }
}

void add_lines(std::istream &in, std::vector<std::string> &paths)
{
    for (std::string line; std::getline(in, line);) {
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        if (!line.empty()) {
            paths.push_back(line);
        }
    }
}

std::vector<std::string> wanted_paths(const BlessOptions &options)
{
    std::vector<std::string> paths = options.paths;
    if (options.list == "-") {
        add_lines(std::cin, paths);
    } else if (!options.list.empty()) {
        std::ifstream list(options.list);
        if (!list) {
            throw WrongCall("cannot read " + terminal_line(options.list));
        }
        add_lines(list, paths);
    }
    if (paths.empty()) {
        throw WrongCall("no path is given");
    }
    std::vector<std::string> once;
    std::map<std::string, int> met;
    std::copy_if(paths.begin(), paths.end(), std::back_inserter(once),
                 [&met](const std::string &path) { return ++met[path] == 1; });
    return once;
}

// What nobody watches must not change what all is judged by.
bool is_unattended()
{
    const char *value = std::getenv("CI");
    const std::string text = value != nullptr ? value : "";
    return !text.empty() && text != "false" && text != "0";
}

class BlessRun
{
  public:
    explicit BlessRun(const BlessOptions &options)
        : options_(options), paths_(wanted_paths(options)), tree_(read_kit_tree(options.out))
    {
        for (const KitPair &pair : tree_.pairs) {
            pairs_[pair.path] = &pair;
        }
    }

    int run()
    {
        if (is_unattended()) {
            std::fprintf(stderr, "tresk-report: nothing is blessed where CI is set\n");
            return kRefused;
        }
        if (options_.yes) {
            log_ = std::make_unique<BlessingLog>(tree_.golden);
            const std::string text = log_->finish_interrupted();
            if (!text.empty()) {
                std::printf("%s\n", text.c_str());
            }
        }
        for (const std::string &path : paths_) {
            bless(path);
            if (options_.yes && refused_ > 0) { // nothing more is touched
                break;
            }
        }
        print_end();
        return refused_ > 0 ? kRefused : 0;
    }

  private:
    void bless(const std::string &path);
    void refuse(const char *what, const std::string &path, const std::exception &fault);
    void print_end() const;

    const BlessOptions &options_;
    std::vector<std::string> paths_;
    KitTree tree_;
    std::map<std::string, const KitPair *> pairs_;
    std::unique_ptr<BlessingLog> log_; // null in a dry run
    std::size_t done_ = 0;
    std::size_t refused_ = 0;
};

void BlessRun::bless(const std::string &path)
{
    try {
        const auto found = pairs_.find(path);
        if (found == pairs_.end()) {
            throw Refused("is not in the list of pairs");
        }
        Blessing blessing(tree_, *found->second, options_);
        if (log_) {
            blessing.carry_out(*log_);
        }
        ++done_;
        std::printf("%s %s (%s)\n", log_ ? "blessed" : "would bless", terminal_line(path).c_str(),
                    blessing.summary_text().c_str());
        std::fflush(stdout);
    } catch (const Refused &fault) {
        refuse("refused", path, fault);
    } catch (const std::exception &fault) {
        refuse("failed at", path, fault);
    }
}

void BlessRun::refuse(const char *what, const std::string &path, const std::exception &fault)
{
    ++refused_;
    std::fprintf(stderr, "tresk-report: %s %s: %s\n", what, terminal_line(path).c_str(), fault.what());
}

void BlessRun::print_end() const
{
    if (options_.yes) {
        std::printf("%zu blessed, %zu refused, %zu not looked at\n", done_, refused_,
                    paths_.size() - done_ - refused_);
    } else {
        std::printf("Nothing was written: %zu could be blessed with --yes, %zu refused\n", done_, refused_);
    }
    std::fflush(stdout);
}

} // namespace

int run_bless(const BlessOptions &options)
{
    prepare_process();
    try {
        check_reason(options.reason);
        return BlessRun(options).run();
    } catch (const WrongCall &wrong) {
        std::fprintf(stderr, "tresk-report: %s\n", wrong.what());
        return kWrongCall;
    } catch (const std::exception &fault) {
        std::fprintf(stderr, "tresk-report: %s\n", fault.what());
        return kRefused;
    }
}

} // namespace report
