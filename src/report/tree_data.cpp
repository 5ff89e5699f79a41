// SPDX-License-Identifier: MIT
#include "report/signal_courses.h"
#include "report/text.h"
#include "report/tree_columns.h"
#include "report/tree_view.h"

#include <algorithm>
#include <unordered_map>

namespace report
{

namespace
{

constexpr std::size_t kMostSignalBytes = 3U << 20U;
constexpr std::size_t kMostCourseBytes = 3U << 20U; // of pairs
constexpr std::size_t kMostGoneBytes = 200U << 10U;

enum Flag : unsigned {
    HAS_REPORT = 1,
    HAS_PAGE = 2,
    HAS_TRANSCRIPT = 4,
    LACKS_GOLDEN = 8,
    LACKS_REGRESSION = 16,
    HIDES = 32
};

unsigned flags_of(const TreePair &pair)
{
    return (pair.has_report ? HAS_REPORT : 0U) | (pair.has_page ? HAS_PAGE : 0U) |
           (pair.has_transcript ? HAS_TRANSCRIPT : 0U) | (pair.lacks == "golden" ? LACKS_GOLDEN : 0U) |
           (pair.lacks == "regression" ? LACKS_REGRESSION : 0U) | (pair.hides ? HIDES : 0U);
}

// The pairs from the worst on, column by column.
class PairColumns
{
  public:
    void add(const TreePair &pair, const PairChange &change)
    {
        const std::size_t name = pair.path.rfind('/') + 1; // 0 where there is no folder
        grade_.count(pair.grade);
        folder_.count(folders_.number_of(std::string_view(pair.path).substr(0, name)));
        name_.text(std::string_view(pair.path).substr(name));
        word_.count(words_.number_of(pair.status)).count(words_.number_of(pair.remark));
        word_.count(words_.number_of(pair.options)).count(words_.number_of(pair.golden_suffix));
        word_.count(words_.number_of(pair.regression_suffix)).count(words_.number_of(pair.analysis));
        word_.count(words_.number_of(pair.signal));
        found_.count(pair.failing).count(pair.missing).count(pair.differences);
        error_.real(pair.abs).real(pair.rel).real(pair.seconds);
        flags_.count(flags_of(pair));
        change_.count(static_cast<int>(change.change)).count(change.grade);
        if (clean_text(pair.path) != pair.path) {
            raw_.json('[' + std::to_string(count_) + ",\"" + hexadecimal(pair.path) + "\"]");
        }
        ++count_;
    }
    std::size_t count() const
    {
        return count_;
    }
    std::size_t size() const
    {
        std::size_t size = 0;
        for (const JsonColumn *column : {&grade_, &name_, &folder_, &word_, &found_, &error_, &flags_,
                                         &change_, &raw_, &folders_.words(), &words_.words()}) {
            size += column->size();
        }
        return size;
    }
    void write(std::ostream &out) const
    {
        out << R"("pairs":{"count":)" << count_ << R"(,"grade":)" << grade_.array() << R"(,"folders":)"
            << folders_.words().array() << R"(,"folder":)" << folder_.array() << R"(,"name":)"
            << name_.array() << R"(,"words":)" << words_.words().array() << R"(,"word":)" << word_.array()
            << R"(,"found":)" << found_.array() << R"(,"error":)" << error_.array() << R"(,"flags":)"
            << flags_.array() << R"(,"change":)" << change_.array() << R"(,"raw":)" << raw_.array() << '}';
    }

  private:
    std::size_t count_ = 0;
    JsonWords folders_;
    JsonWords words_;
    JsonColumn grade_;
    JsonColumn folder_;
    JsonColumn name_;
    JsonColumn word_;  // seven a pair: status, remark, options, both suffixes, analysis, signal
    JsonColumn found_; // three a pair: failing, missing, different
    JsonColumn error_; // three a pair: abs, rel, seconds
    JsonColumn flags_;
    JsonColumn change_; // two a pair: Change, the grade before
    JsonColumn raw_;    // paths that are no clean text, in hexadecimal, by the number of the row
};

// What the errors of a pair or signal were in the recent runs: their product, 0 where it passed, "failed"
// where no error above 0 was judged, null where nothing is known.
std::string moments(const Course &course)
{
    JsonColumn column;
    for (const Moment &moment : course.recent) {
        const double product = moment.abs_err.value_or(0.0) * moment.rel_err.value_or(0.0);
        if (moment.standing == Standing::PASSED) {
            column.count(0);
        } else if (moment.standing != Standing::FAILED) {
            column.json("null");
        } else if (product == 0.0) {
            column.text("failed");
        } else {
            column.real(product);
        }
    }
    return column.array();
}

// [row, first bad run, last good run, flaps, errors] of what the history knows to have failed.
std::string course_row(std::size_t number, const Course &course)
{
    const auto run = [](const std::optional<RunMark> &mark) {
        return mark ? run_time_text(*mark) : std::string();
    };
    JsonColumn row;
    row.count(static_cast<std::int64_t>(number)).text(run(course.first_bad)).text(run(course.last_good));
    return row.count(course.flaps).json(moments(course)).array();
}

// The signals, column by column, with the numbers of the pairs that the page has.
void write_signals(std::ostream &out, const TreeView &view, std::size_t pairs)
{
    JsonWords words;
    JsonColumn word;
    JsonColumn count;
    JsonColumn rows;
    JsonColumn error;
    JsonColumn courses;
    const auto known = courses_of_signals(view.courses);
    std::size_t shown = 0;
    for (const TreeSignal &signal : view.signals) {
        if (words.words().size() + word.size() + rows.size() + error.size() + courses.size() >
            kMostSignalBytes) {
            break;
        }
        word.count(words.number_of(signal.analysis)).count(words.number_of(signal.name));
        word.count(words.number_of(signal.what)).count(signal.is_judged ? 1 : 0);
        count.count(static_cast<std::int64_t>(signal.pairs.size()));
        JsonColumn numbers;
        std::size_t last = 0;
        for (const std::size_t pair : signal.pairs) {
            if (pair < pairs) {
                numbers.count(static_cast<std::int64_t>(pair - last)); // small numbers
                last = pair;
            }
        }
        rows.json(numbers.array());
        error.real(signal.abs)
            .real(signal.rel)
            .count(signal.worst < pairs ? static_cast<int>(signal.worst) : -1);
        const auto course = known.find(signal_id(signal.analysis, signal.name, signal.what));
        if (course != known.end()) {
            courses.json(course_row(shown, course->second));
        }
        ++shown;
    }
    out << R"("signals":{"count":)" << shown << R"(,"leftOut":)" << view.signals.size() - shown
        << R"(,"words":)" << words.words().array() << R"(,"word":)" << word.array() << R"(,"pairs":)"
        << count.array() << R"(,"rows":)" << rows.array() << R"(,"error":)" << error.array()
        << R"(,"courses":)" << courses.array() << '}';
}

// The courses of pairs that the history knows to have failed.
void write_courses(std::ostream &out, const TreeView &view, std::size_t pairs)
{
    std::unordered_map<std::string_view, const PairCourse *> known;
    for (const PairCourse &course : view.courses.pairs) {
        known.emplace(course.path, &course);
    }
    JsonColumn courses;
    std::size_t left_out = 0;
    for (std::size_t i = 0; i < pairs && !known.empty(); ++i) {
        const auto found = known.find(view.run.pairs[i].path);
        if (found == known.end()) {
            continue;
        }
        if (courses.size() < kMostCourseBytes) {
            courses.json(course_row(i, found->second->course));
        } else {
            ++left_out;
        }
    }
    JsonColumn runs;
    for (const RunMark &run : view.courses.runs) {
        runs.text(run_time_text(run));
    }
    out << R"("runs":)" << runs.array() << R"(,"flapping":)" << kFlapping << R"(,"courses":)"
        << courses.array() << R"(,"coursesLeftOut":)" << left_out;
}

void write_gone(std::ostream &out, const TreeView &view)
{
    constexpr std::size_t kMost = 1000;
    JsonColumn gone;
    for (std::size_t i = 0; i < std::min(kMost, view.changes.gone.size()) && gone.size() < kMostGoneBytes;
         ++i) {
        const TreePair &pair = view.changes.gone[i];
        gone.json(JsonColumn().count(pair.grade).text(pair.path).array());
    }
    out << R"("gone":)" << gone.array() << R"(,"goneCount":)" << view.changes.gone.size();
}

} // namespace

std::size_t write_tree_data(std::ostream &out, const TreeView &view, std::size_t max_bytes)
{
    PairColumns columns;
    const std::vector<TreePair> &pairs = view.run.pairs;
    for (std::size_t i = 0; i < pairs.size() && columns.size() < max_bytes; ++i) {
        columns.add(pairs[i], i < view.changes.pairs.size() ? view.changes.pairs[i] : PairChange());
    }
    JsonColumn texts;
    texts.text(view.run.out).text(view.run.golden).text(view.run.regression).text(view.run.options);
    out << R"({"texts":)" << texts.array() << R"(,"accepted":)" << view.accepted << R"(,"hasBefore":)"
        << (view.before.empty() ? "false" : "true") << ',';
    columns.write(out);
    out << ',';
    write_signals(out, view, columns.count());
    out << ',';
    write_courses(out, view, columns.count());
    out << ',';
    write_gone(out, view);
    out << '}';
    return columns.count();
}

} // namespace report
