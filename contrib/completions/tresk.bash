# SPDX-License-Identifier: MIT
# bash completion of tresk. Works with and without the bash-completion package.

_tresk() {
    local word=${COMP_WORDS[COMP_CWORD]} words=
    case ${COMP_WORDS[COMP_CWORD - 1]} in
    -a | -abstol | -r | -reltol) ;; # a number of the user's own
    -d) words='1 2 4 8 16 32' ;;
    -exitcode | -nem | -pem) words='1 2 4 8 16 32 64 128 256' ;;
    *)
        if [[ $word == -* ]]; then
            words='-a -abstol -r -reltol -Aonly -Ronly -AorR -AandR
                -index -indexscript -indexmirel -indexrdinp
                -exitcodes -exitcode -nem -pem -desert -help -d'
        else
            compopt -o filenames 2>/dev/null
            mapfile -t COMPREPLY < <(compgen -f -- "$word")
            return
        fi
        ;;
    esac
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
}

complete -F _tresk tresk
