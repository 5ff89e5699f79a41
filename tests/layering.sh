#!/bin/sh
# SPDX-License-Identifier: MIT
# Fails when an include of a source folder points upwards (support <- read <- compare <- driver <- report; raw2punch
# stands alone) or is not written from that folder, or when a comparator or the walk over reruns and modifies
# writes to the transcript itself. Usage: layering.sh <source folder>
cd "$1" || exit 2
status=0

may_include() { # <layer> <layers it may include, separated by |>
    includes=$(grep -rnE '^ *# *include *("|<(support|read|compare|driver|report|raw2punch)/)' "$1") || status=2
    ! printf '%s\n' "$includes" | grep -vE "include *\"($2)/[a-z0-9_]+\.h\"" || status=1
}

may_include support 'support'
may_include read 'support|read'
may_include compare 'support|read|compare'
may_include driver 'support|read|compare|driver'
may_include report 'support|read|compare|driver|report'
may_include raw2punch 'raw2punch'

# Findings are printed where listeners hear of them.
if grep -nE 'transcript_|printf|puts' compare/* driver/tk_rerun.* driver/tk_modify.* driver/number_index.h |
    grep -vE '^compare/([a-z_]+_lines|table_headers)\.(cpp|h):'; then
    echo 'printed elsewhere than in compare/*_lines and compare/table_headers'
    status=1
fi
exit $status
