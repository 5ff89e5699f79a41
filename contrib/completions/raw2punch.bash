# SPDX-License-Identifier: MIT
# bash completion of raw2punch. Works with and without the bash-completion package.

_raw2punch() {
    local word=${COMP_WORDS[COMP_CWORD]} words=
    case ${COMP_WORDS[COMP_CWORD - 1]} in
    -t | --temperature | --title | --rerun | --modify | --plot) ;; # the user's own
    -f | --format) words='text binary binary_dbl' ;;
    -c | --complex) words='db phase magnitude real imaginary' ;;
    --bits) words='64 32 mixed' ;;
    *)
        if [[ $word == -* ]]; then
            words='--format --complex --log --temperature --title --rerun --modify --plot --bits --big-endian
                --allow-left-out --version --help'
        else
            compopt -o filenames 2>/dev/null
            mapfile -t COMPREPLY < <(compgen -f -- "$word")
            return
        fi
        ;;
    esac
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
}

complete -F _raw2punch raw2punch
