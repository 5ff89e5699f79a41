// SPDX-License-Identifier: MIT
#include "report/tune.h"

#include "driver/tk_main.h"
#include "report/pair.h"
#include "report/result.h"
#include "report/text.h"
#include "report/tresk_run.h"

#include <cstdio>

namespace report
{

int run_tune(const TuneOptions &options)
{
    prepare_process();
    int code = kNoGrade;
    try {
        code = options.arguments.regression.empty() ? tune_tree(options) : tune_pair(options);
    } catch (const WrongCall &wrong) {
        std::fprintf(stderr, "tresk-report: %s\n", wrong.what());
        return kWrongCall;
    } catch (const std::exception &fault) {
        std::fprintf(stderr, "tresk-report: %s\n", fault.what());
        return kNoGrade;
    }
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
        std::perror("tresk-report: cannot print");
        return kNoGrade;
    }
    return code;
}

} // namespace report
