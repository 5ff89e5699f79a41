// SPDX-License-Identifier: MIT
#include "compare/events.h"

Listener *listener = nullptr;

namespace
{

Place place;

template <typename Record> void count_records(const Record *list, std::size_t &count)
{
    for (; list != nullptr; list = list->next) {
        ++count;
    }
}

void count_results(const MODIFYform &modify, std::array<std::size_t, kAnalysisCount> &results)
{
    count_records(modify.op, results[OP]);
    count_records(modify.inop, results[INOP]);
    count_records(modify.intr, results[INTR]);
    count_records(modify.inpss, results[INPSS]);
    if (modify.indc != nullptr) {
        count_records(modify.indc->first, results[INDC1]);
        count_records(modify.indc->second, results[INDC2]);
    }
    count_records(modify.trforce, results[TR_FORCE]);
    count_records(modify.pssforce, results[PSS_FORCE]);
    count_records(modify.pzform, results[PZ]);
    for (const Wform *signal = modify.wform; signal != nullptr; signal = signal->next) {
        ++results[static_cast<std::size_t>(signal->analysis)];
    }
}

} // namespace

void note_start(const RunStart &start)
{
    if (listening()) {
        listener->started(start);
    }
}

void note_file_read(const PF &file, Side side, int result)
{
    if (!listening()) {
        return;
    }
    FileRead read;
    read.file = &file;
    read.side = side;
    read.result = result;
    for (const RERUNform *rerun = file.rerun; rerun != nullptr; rerun = rerun->next) {
        for (const MODIFYform *modify = rerun->modify; modify != nullptr; modify = modify->next) {
            count_results(*modify, read.results);
        }
    }
    listener->file_read(read);
}

void note_end(const RunEnd &end)
{
    if (listening()) {
        listener->ended(end);
    }
}

void note_rerun_pair(const RERUNform &ref, const RERUNform &cmp)
{
    if (listening()) {
        place = {ref.number, {}, {}};
        listener->rerun_pair(ref, cmp);
    }
}

void note_modify_pair(int rerun, const MODIFYform &ref, const MODIFYform &cmp)
{
    if (listening()) {
        place = {rerun, ref.number, {}};
        listener->modify_pair(rerun, ref, cmp);
    }
}

void leave_modifies()
{
    place.modify.reset();
}

void leave_reruns()
{
    place = {};
}

void set_force_place(std::optional<double> time)
{
    place.force_time = time;
}

Finding finding_here(FindingKind kind, int analysis, const char *name, unsigned bits)
{
    Finding finding;
    finding.kind = kind;
    finding.analysis = analysis;
    finding.place = place;
    finding.name = name;
    finding.bits = bits;
    return finding;
}

void pass_on(const Finding &finding)
{
    if (!listening()) {
        return;
    }
    if (finding.is_judged && finding.bits == 0) {
        listener->passed(finding);
    } else {
        listener->finding(finding);
    }
}
