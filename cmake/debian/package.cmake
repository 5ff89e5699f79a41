# SPDX-License-Identifier: MIT
# Run by CPack on the staged files. Puts what Debian wants in another place or form than the install has it.
cmake_minimum_required(VERSION 3.19)
set(readable OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
set(passable ${readable} OWNER_EXECUTE GROUP_EXECUTE WORLD_EXECUTE)

# Folders have the umask of who builds, which is no business of who installs.
file(CHMOD_RECURSE ${CPACK_TEMPORARY_INSTALL_DIRECTORY} DIRECTORY_PERMISSIONS ${passable})
if(NOT CPACK_GENERATOR STREQUAL "DEB")
    return()
endif()
set(share ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr/share)
set(doc ${share}/doc/tresk)

# A private symbol of the C library ties the package to one release of Debian.
execute_process(COMMAND objdump -T ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr/bin/tresk
    OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
if(symbols MATCHES "GLIBC_PRIVATE[^\n]*")
    message(FATAL_ERROR "tresk needs a private symbol: ${CMAKE_MATCH_0}")
endif()

file(RENAME ${share}/zsh/site-functions ${share}/zsh/vendor-completions)

file(READ ${doc}/LICENSE license)
string(REGEX REPLACE "^MIT License\n\n(Copyright[^\n]*)\n\n" "" license "${license}")
set(copyright "${CMAKE_MATCH_1}")
string(REGEX REPLACE "^Copyright \\(c\\) " "Copyright: " copyright "${copyright}")
string(REGEX REPLACE "\n+$" "" license "${license}")
string(REPLACE "\n\n" "\n.\n" license "${license}")
string(REPLACE "\n" "\n " license "${license}")
file(WRITE ${doc}/copyright "Format: https://www.debian.org/doc/packaging-manuals/copyright-format/1.0/
Upstream-Name: tresk

Files: *
${copyright}
License: Expat
 ${license}
")
file(REMOVE ${doc}/LICENSE)

file(RENAME ${doc}/CHANGELOG.md ${doc}/changelog)
configure_file(${CMAKE_CURRENT_LIST_DIR}/changelog ${doc}/changelog.Debian COPYONLY)
file(WRITE ${share}/lintian/overrides/tresk "# Not uploaded to Debian, so no bug of its list is closed.
tresk: initial-upload-closes-no-bugs *
")
file(CHMOD ${doc}/copyright ${doc}/changelog.Debian ${share}/lintian/overrides/tresk PERMISSIONS ${readable})
file(CHMOD ${share}/lintian ${share}/lintian/overrides PERMISSIONS ${passable})
execute_process(COMMAND gzip -9n ${doc}/changelog ${doc}/changelog.Debian ${share}/man/man1/tresk.1
    COMMAND_ERROR_IS_FATAL ANY)
