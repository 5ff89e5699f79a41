# SPDX-License-Identifier: MIT
# bash completion of tresk-report. Works with and without the bash-completion package.

_tresk_report() {
    local word=${COMP_WORDS[COMP_CWORD]} words=
    case $COMP_CWORD:${COMP_WORDS[1]} in
    1:*) words='pair tree tune bless history schema --version --help' ;;
    *:bless)
        [[ ${COMP_WORDS[COMP_CWORD - 1]} != --reason ]] || return # the user's own words
        if [[ $word != --* ]]; then
            compopt -o filenames 2>/dev/null
            mapfile -t COMPREPLY < <(compgen -f -- "$word")
            return
        fi
        words='--reason --list --yes --keep --even-nan --help'
        ;;
    *:tree)
        [[ ${COMP_WORDS[COMP_CWORD - 1]} != --accept ]] || return
        if [[ $word != --* ]]; then
            compopt -o filenames 2>/dev/null
            mapfile -t COMPREPLY < <(compgen -f -- "$word")
            return
        fi
        words='--accept --before --history --quiet --help'
        ;;
    *:pair | *:tune)
        case ${COMP_WORDS[COMP_CWORD - 1]} in
        --out)
            compopt -o filenames 2>/dev/null
            mapfile -t COMPREPLY < <(compgen -d -- "$word")
            return
            ;;
        --figures | --data | --findings | --digits) return ;; # a number of the user's own
        esac
        if [[ $word != --* ]]; then # for tresk: its options, their values, the files
            # shellcheck source=contrib/completions/tresk.bash
            declare -F _tresk >/dev/null || . "${BASH_SOURCE[0]%/*}/tresk"
            _tresk
            return
        fi
        words='--out --figures --data --findings --always --quiet --help'
        [[ ${COMP_WORDS[1]} = pair ]] || words='--digits --help'
        ;;
    *:history)
        if [[ $word != --* ]]; then
            compopt -o filenames 2>/dev/null
            mapfile -t COMPREPLY < <(compgen -f -- "$word")
            return
        fi
        words='--help'
        ;;
    *) words='--help' ;;
    esac
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
}

complete -F _tresk_report tresk-report
