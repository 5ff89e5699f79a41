# SPDX-License-Identifier: MIT
# Run by CPack on the staged files: what Debian wants in another place or form than the install has it.
if(NOT CPACK_GENERATOR STREQUAL "DEB")
    return()
endif()
set(share ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr/share)
file(MAKE_DIRECTORY ${share}/zsh/vendor-completions)
file(RENAME ${share}/zsh/site-functions/_tresk ${share}/zsh/vendor-completions/_tresk)
file(REMOVE_RECURSE ${share}/zsh/site-functions)
file(RENAME ${share}/doc/tresk/LICENSE ${share}/doc/tresk/copyright)
execute_process(COMMAND gzip -9n ${share}/man/man1/tresk.1 COMMAND_ERROR_IS_FATAL ANY)
