// SPDX-License-Identifier: MIT
#include "report/tree.h"

#include "report/file_text.h"
#include "report/output_folder.h"
#include "report/pair.h"
#include "report/progress.h"
#include "report/text.h"
#include "report/tree_view.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <sys/stat.h>
#include <utility>

namespace report
{

namespace
{

constexpr std::size_t kMostFindingBytes = 4U << 20U; // of a report; some 10,000 findings
constexpr std::size_t kMostLines = 10;               // of a test case

int print_fault(const std::exception &fault, int code)
{
    std::fprintf(stderr, "tresk-report: %s\n", fault.what());
    return code;
}

// Bookkeeping of a run for its history.
RunPair history_pair(const TreePair &pair, const TreeFindings &found)
{
    RunPair kept;
    kept.path = pair.path;
    kept.grade = pair.grade;
    // A comparison that died or had nothing to compare found nothing, which does not mean that signals pass.
    kept.has_findings = pair.has_report && pair.grade < kNoGrade;
    for (const TreeFinding &finding : found.findings) {
        if (finding.is_judged) {
            kept.findings.push_back({finding.key, finding.analysis, finding.name, finding.abs, finding.rel});
        }
    }
    const std::int64_t all = pair.failing + pair.missing + pair.differences;
    kept.finding_count = found.is_cut ? all : static_cast<std::int64_t>(kept.findings.size());
    return kept;
}

// What the reports of all pairs found. kept: null where there is no history.
void read_all_findings(TreeRun &run, TreeView &view, Run *kept)
{
    TreeSignals signals;
    Progress progress("reports looked through", run.pairs.size());
    view.worst.resize(run.pairs.size());
    for (std::size_t i = 0; i < run.pairs.size(); ++i) {
        TreePair &pair = run.pairs[i];
        TreeFindings found;
        if (pair.has_report && pair.failing + pair.missing + pair.differences != 0) {
            found = read_findings(run.report_folder(pair) + '/' + kJsonFile, kMostFindingBytes);
            pair.hides = found.hides;
            view.cut_reports += found.is_cut ? 1 : 0;
            signals.add(i, found.findings);
            for (std::size_t f = 0; f < std::min(kMostLines, found.findings.size()); ++f) {
                view.worst[i].push_back(finding_line(found.findings[f]));
            }
        }
        const bool is_known = i > 0 && run.pairs[i - 1].path == pair.path; // missing in both trees
        if (kept != nullptr && !is_known) {
            kept->pairs.push_back(history_pair(pair, found));
        }
        progress.show(i);
    }
    view.signals = signals.sorted();
    view.left_out_findings = signals.left_out();
}

std::string absolute_path(const std::string &path)
{
    const std::unique_ptr<char, decltype(&std::free)> real(realpath(path.c_str(), nullptr), &std::free);
    return real ? real.get() : path;
}

// Adds the run to the history, and asks that for what is shown of it. A history that cannot be used keeps
// nobody from the page.
bool take_history(const TreeOptions &options, Run run, TreeView &view)
{
    try {
        run.out = absolute_path(options.out);
        run.began = view.run.began;
        run.arguments = view.run.options;
        History history(options.history, History::Access::WRITE);
        history.add(run);
        view.courses = history.courses();
        return true;
    } catch (const HistoryFault &fault) {
        print_fault(fault, kNotWritten);
        return false;
    }
}

void make_folder(const std::string &path)
{
    if (mkdir(path.c_str(), 0777) != 0 && errno != EEXIST) {
        throw WriteFault("cannot make " + terminal_line(path) + ": " + std::strerror(errno));
    }
}

void write_files(const TreeOptions &options, const TreeView &view)
{
    const std::string folder = options.out + "/report/";
    make_folder(folder);
    replace_file(folder + kTreeCsvFile, [&view](std::ostream &out) { write_tree_csv(out, view); });
    replace_file(folder + kJunitFile, [&view](std::ostream &out) { write_junit(out, view); });
    replace_file(folder + kTreePageFile, [&view](std::ostream &out) { write_tree_page(out, view); });
    if (!options.quiet) {
        std::printf("%s\n", terminal_line(folder + kTreePageFile).c_str());
        std::fflush(stdout);
    }
}

} // namespace

int run_tree(const TreeOptions &options)
{
    try {
        TreeRun run = read_tree(options.out);
        TreeView view = {run};
        view.accepted = options.accepted;
        Run kept;
        read_all_findings(run, view, options.history.empty() ? nullptr : &kept);
        const bool has_history = options.history.empty() || take_history(options, std::move(kept), view);
        if (!options.before.empty()) {
            view.before = options.before;
            view.changes = changes_between(read_tree(options.before), run, options.accepted);
        }
        write_files(options, view);
        return has_history ? worst_grade(run, options.accepted) : kNotWritten;
    } catch (const NoTree &fault) {
        return print_fault(fault, kWrongCall);
    } catch (const WriteFault &fault) {
        return print_fault(fault, kNotWritten);
    } catch (const std::bad_alloc &fault) {
        return print_fault(fault, kNotWritten);
    }
}

} // namespace report
