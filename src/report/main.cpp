// SPDX-License-Identifier: MIT
#include "report/embedded.h"
#include "report/history_table.h"
#include "report/options.h"

#include <cstdio>

namespace
{

int print_schema()
{
    const std::string_view schema = report::kResultSchema;
    const bool is_printed =
        std::fwrite(schema.data(), 1, schema.size(), stdout) == schema.size() && std::fflush(stdout) == 0;
    if (!is_printed) {
        std::perror("tresk-report: cannot print the schema");
    }
    return is_printed ? 0 : report::kNotWritten;
}

} // namespace

int main(int argc, char **argv)
{
    const report::CommandLine line = report::read_command_line(argc, argv);
    switch (line.command) {
    case report::Command::PAIR:
        return report::run_pair(line.pair);
    case report::Command::TUNE:
        return report::run_tune(line.tune);
    case report::Command::BLESS:
        return report::run_bless(line.bless);
    case report::Command::SCHEMA:
        return print_schema();
    case report::Command::TREE:
        return report::run_tree(line.tree);
    case report::Command::HISTORY:
        return report::print_history(line.history);
    default:
        return line.exit_code;
    }
}
