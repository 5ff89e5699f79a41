# SPDX-License-Identifier: MIT
# bash completion of tresk-report. Works with and without the bash-completion package.

_tresk_report() {
    local word=${COMP_WORDS[COMP_CWORD]} words='' rest=''
    case $COMP_CWORD:${COMP_WORDS[1]} in
    1:*) words='pair tree tune bless history schema --version --help' ;;
    *:pair) words='--out --figures --data --findings --always --quiet --help' rest='tresk' ;;
    *:tree) words='--accept --before --history --quiet --help' rest='file' ;;
    *:tune) words='--digits --help' rest='tresk' ;;
    *:bless) words='--reason --list --yes --keep --even-nan --help' rest='file' ;;
    *:history) words='--help' rest='file' ;;
    *) words='--help' ;;
    esac
    case ${COMP_WORDS[COMP_CWORD - 1]} in
    --out | --before | --keep) rest='directory' ;;
    --list | --history) rest='file' ;;
    --figures | --data | --findings | --digits | --accept | --reason) return ;; # the user's own words
    *) [[ $word != --* ]] || rest= ;;
    esac
    case $rest in
    tresk) # its options, their values, the files
        # shellcheck source=contrib/completions/tresk.bash
        declare -F _tresk >/dev/null || . "${BASH_SOURCE[0]%/*}/tresk"
        _tresk
        ;;
    file | directory)
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -A "$rest" -- "$word")
        ;;
    *) mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word") ;;
    esac
}

complete -F _tresk_report tresk-report
