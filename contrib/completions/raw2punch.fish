# SPDX-License-Identifier: MIT
# fish completion of raw2punch.

complete -c raw2punch -s f -l format -x -a 'text binary binary_dbl' -d 'format of waveforms'
complete -c raw2punch -s c -l complex -x -a 'db phase magnitude real imaginary' -d 'signals made of complex values'
complete -c raw2punch -s l -l log -r -d 'log of the run'
complete -c raw2punch -s t -l temperature -x -d 'temperature of all runs, or of each in turn'
complete -c raw2punch -l title -x -d 'title instead of that of the rawfile'
complete -c raw2punch -l rerun -x -d 'number of the first rerun'
complete -c raw2punch -l modify -x -d 'number of the first modify of a rerun'
complete -c raw2punch -l plot -x -d 'what becomes of plots'
complete -c raw2punch -l bits -x -a '64 32 mixed' -d 'bits of binary values'
complete -c raw2punch -l big-endian -d 'binary values have their most significant byte first'
complete -c raw2punch -l allow-left-out -d 'exit code 0 also when something has no place'
complete -c raw2punch -l version -d 'print the version'
complete -c raw2punch -s h -l help -d 'print the options'
