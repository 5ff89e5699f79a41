# SPDX-License-Identifier: MIT
# fish completion of tresk-report.

set -l pair '__fish_seen_subcommand_from pair'

complete -c tresk-report -n __fish_use_subcommand -f -a pair -d 'compare two punch files and report what differs'
complete -c tresk-report -n __fish_use_subcommand -f -a tree -d 'report what comparisons of two trees found'
complete -c tresk-report -n __fish_use_subcommand -f -a tune -d 'find the smallest tolerances that pass'
complete -c tresk-report -n __fish_use_subcommand -f -a bless -d 'make regression files the golden ones'
complete -c tresk-report -n __fish_use_subcommand -f -a history -d 'print since when what fails'
complete -c tresk-report -n __fish_use_subcommand -f -a schema -d 'print the JSON schema of result.json'
complete -c tresk-report -n __fish_use_subcommand -l version -d 'print the version'
complete -c tresk-report -l help -d 'print the options'
complete -c tresk-report -n '__fish_seen_subcommand_from schema' -f

complete -c tresk-report -n $pair -l out -x -a '(__fish_complete_directories)' -d 'folder of the report'
complete -c tresk-report -n $pair -l figures -x -d 'figures in the page (50)'
complete -c tresk-report -n $pair -l data -x -d 'MiB of waveforms in the page (8)'
complete -c tresk-report -n $pair -l findings -x -d 'findings in the report (100000)'
complete -c tresk-report -n $pair -l always -d 'write a page even when all passes'
complete -c tresk-report -n $pair -l quiet -d 'print neither the transcript nor the path of the page'

set -l tree '__fish_seen_subcommand_from tree'
complete -c tresk-report -n $tree -l accept -x -d 'grades that count as passed'
complete -c tresk-report -n $tree -l before -x -a '(__fish_complete_directories)' -d 'folder of an earlier run'
complete -c tresk-report -n $tree -l history -r -d 'history that the run is added to'
complete -c tresk-report -n $tree -l quiet -d 'do not print the path of the page'

set -l tune '__fish_seen_subcommand_from tune'
complete -c tresk-report -n $tune -l digits -x -d 'digits of what is proposed (2)'

set -l bless '__fish_seen_subcommand_from bless'
complete -c tresk-report -n $bless -l reason -x -d 'why, in one line'
complete -c tresk-report -n $bless -l list -r -d 'file of paths'
complete -c tresk-report -n $bless -l yes -d 'write'
complete -c tresk-report -n $bless -l keep -x -a '(__fish_complete_directories)' -d 'folder for the old golden files'
complete -c tresk-report -n $bless -l even-nan -d 'also files with values that are no numbers'

# The rest is for tresk: what it would be offered behind the same word.
source (status dirname)/tresk.fish
complete -c tresk-report -n '__fish_seen_subcommand_from pair tune' -a '(complete -C "tresk "(string escape -- (commandline -opc)[-1])" "(commandline -ct))'
