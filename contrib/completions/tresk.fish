# SPDX-License-Identifier: MIT
# fish completion of tresk.

set -l bits '1 2 4 8 16 32 64 128 256'

complete -c tresk -o a -x -d 'absolute tolerance (1e-12)'
complete -c tresk -o abstol -x -d 'absolute tolerance (1e-12)'
complete -c tresk -o r -x -d 'relative tolerance (0.01)'
complete -c tresk -o reltol -x -d 'relative tolerance (0.01)'
complete -c tresk -o Aonly -d 'fail on the absolute tolerance'
complete -c tresk -o Ronly -d 'fail on the relative tolerance'
complete -c tresk -o AorR -d 'fail on the absolute tolerance, like -Aonly'
complete -c tresk -o AandR -d 'fail when both tolerances are exceeded'
complete -c tresk -o index -d 'append an index table to a punch file'
complete -c tresk -o indexscript -d 'the same without the banner'
complete -c tresk -o indexmirel -d 'write index lines to the file that the environment names'
complete -c tresk -o indexrdinp -d 'append an index table silently'
complete -c tresk -o exitcodes -d 'explain all exit status bits and grades'
complete -c tresk -o exitcode -x -a $bits -d 'explain an exit status'
complete -c tresk -o nem -x -a $bits -d 'exit status bits to remove'
complete -c tresk -o pem -x -a $bits -d 'exit status bits to keep'
complete -c tresk -o desert -d 'relaxed comparison of two simulator generations'
complete -c tresk -o help -d 'print usage'
complete -c tresk -o d -x -a '1 2 4 8 16 32' -d 'debug switches'
