// SPDX-License-Identifier: MIT
#include "driver/tk_main.h"
#include "report/facts.h"
#include "report/json_fields.h"
#include "report/keys.h"
#include "report/order.h"
#include "report/words.h"
#include "report/writers.h"

namespace report
{

namespace
{

std::string program_json()
{
    return JsonFields()
        .add_text("name", "tresk-report")
        .add_text("version", kTreskVersion)
        .add_text("tresk", kTreskVersion)
        .object();
}

// A name or path, and its bytes where it is no clean text.
void add_name(JsonFields &fields, const char *name, const char *bytes_name, const std::string &bytes)
{
    fields.add_text(name, bytes);
    if (clean_text(bytes) != bytes) {
        fields.add_text(bytes_name, hexadecimal(bytes));
    }
}

std::string file_json(const InputFile &file)
{
    JsonFields fields;
    add_name(fields, "path", "path_hex", file.path);
    fields.add_text("state", file.was_read ? read_result_word(file.read_result) : "not read");
    if (file.was_read) {
        fields.add_text("format", format_word(file.format));
    }
    if (file.bytes >= 0) {
        fields.add_count("bytes", file.bytes);
    }
    if (!file.sha256.empty()) {
        fields.add_text("sha256", file.sha256);
    }
    return fields.object();
}

std::string options_json(const Options &options)
{
    return JsonFields()
        .add("arguments", json_list(options.arguments))
        .add_real("abstol", options.abstol)
        .add_real("reltol", options.reltol)
        .add_text("mode", options.mode)
        .add_flag("desert", options.desert)
        .add_count("pem", options.pem)
        .add_count("nem", options.nem)
        .object();
}

std::string grade_json(const Result &result)
{
    JsonFields fields;
    fields.add_count("grade", result.grade)
        .add_text("word", grade_word(result.grade))
        .add_count("status", result.status)
        .add_count("masked", result.masked)
        .add("bits", json_list(status_words(result.status)))
        .add("masked_out", json_list(status_words(result.status & ~result.masked)))
        .add("hidden", json_list(status_words(result.hidden)));
    if (!result.died.empty()) {
        fields.add_text("died", result.died);
    }
    return fields.object();
}

std::string counts_json(const Counts &counts)
{
    return JsonFields()
        .add_count("pairs", counts.pairs)
        .add_count("failing", counts.failing)
        .add_count("missing", counts.missing)
        .add_count("differences", counts.differences)
        .add_count("unjudged", counts.unjudged)
        .object();
}

std::string place_json(const Place &place)
{
    JsonFields fields;
    if (place.rerun) {
        fields.add_count("rerun", *place.rerun);
    }
    if (place.modify) {
        fields.add_count("modify", *place.modify);
    }
    if (place.force_time) {
        fields.add_real("time", *place.force_time);
    }
    return fields.object();
}

std::string root_json(const TRI *root)
{
    return root == nullptr ? "null" : '[' + json_number(root->mag) + ',' + json_number(root->phase) + ']';
}

// Null for a side that has no text at all.
std::string side_text_json(const std::string &text, bool is_lacking)
{
    return is_lacking ? "null" : json_text(text);
}

void add_pair_facts(JsonFields &fields, const Finding &finding)
{
    fields.add_text("verdict", finding.met_nan ? "nan" : "fails")
        .add_text("marker", finding.marker)
        .add_real("abs", finding.judged.abserr)
        .add_real("rel", finding.judged.relerr);
    if (finding.kind == FindingKind::SWEEP) {
        fields.add("points", JsonFields()
                                 .add_count("failing", finding.fails)
                                 .add_count("compared", finding.compared)
                                 .object());
    }
    if (finding.kind == FindingKind::AREA) {
        fields.add_count("intervals", finding.areas.count).add_real("interval", finding.areas.dx);
    }
    if (const auto x = worst_at(finding)) {
        fields.add_real("worst_at", *x);
    }
    if (finding.position > 0) {
        fields.add_count("position", finding.position);
    }
    if (finding.kind == FindingKind::ROOT) {
        fields.add("roots", '[' + root_json(finding.roots.ref) + ',' + root_json(finding.roots.cmp) + ']')
            .add_flag("half_planes_differ", finding.half_planes_differ);
    }
}

void add_other_facts(JsonFields &fields, const Finding &finding)
{
    const bool is_missing = group_of(finding) == FindingGroup::MISSING;
    fields.add_text(is_missing ? "lacks" : "differs", subject_word(finding.kind));
    if (finding.side != Side::NEITHER) {
        fields.add_text("in", side_word(finding.side));
    }
    if (finding.missing_points != 0) {
        fields.add_count("missing_points", finding.missing_points);
    }
    if (has_texts(finding)) {
        fields.add("texts", '[' + side_text_json(finding.ref_text, finding.side == Side::REFERENCE) + ',' +
                                side_text_json(finding.cmp_text, finding.side == Side::COMPARISON) + ']');
    }
    if (finding.kind == FindingKind::NEGATIVE_ERROR) {
        fields.add_real("abs", finding.judged.abserr);
    }
}

std::string finding_json(const Entry &entry)
{
    const Finding &finding = entry.finding;
    JsonFields fields;
    fields.add_text("kind", kind_word(finding.kind))
        .add_text("key", entry.key)
        .add("place", place_json(finding.place));
    if (is_analysis(finding.analysis)) {
        fields.add_text("analysis", analysis_word(finding.analysis));
    }
    if (!finding.name.empty()) {
        add_name(fields, "name", "name_hex", finding.name);
    }
    const std::string units = units_of(finding);
    if (!units.empty()) {
        fields.add_text("units", units);
    }
    if (finding.kind <= FindingKind::ROOT) {
        add_pair_facts(fields, finding);
    } else {
        add_other_facts(fields, finding);
    }
    if (has_values(finding)) {
        fields.add_real("golden", finding.ref_value).add_real("regression", finding.cmp_value);
    }
    return fields.add_flag("judged", finding.is_judged).object();
}

} // namespace

void write_result_json(std::ostream &out, const Result &result)
{
    const std::string head = JsonFields()
                                 .add_text("schema", "tresk-result/1")
                                 .add("program", program_json())
                                 .add("golden", file_json(result.golden))
                                 .add("regression", file_json(result.regression))
                                 .add("options", options_json(result.options))
                                 .add("result", grade_json(result))
                                 .add("counts", counts_json(result.counts))
                                 .add_count("truncated", result.truncated)
                                 .object();
    out << head.substr(0, head.size() - 1) << ",\n\"findings\":[";
    const char *separator = "\n";
    for (const Entry &entry : result.findings) {
        out << separator << finding_json(entry);
        separator = ",\n";
    }
    out << "]}\n";
}

} // namespace report
