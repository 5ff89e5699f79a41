# SPDX-License-Identifier: MIT
# Run by CPack on the staged files. Puts what Debian wants in another place or form than the install has it.
function(run)
    execute_process(COMMAND ${ARGV} OUTPUT_VARIABLE output RESULT_VARIABLE result)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "${ARGV}: ${result}")
    endif()
    set(output "${output}" PARENT_SCOPE)
endfunction()

# A copyright file is the licence as Debian writes it.
function(write_copyright file)
    file(READ ${source}/LICENSE license)
    string(REGEX REPLACE "^MIT License\n\nCopyright \\(c\\) ([^\n]*)\n\n" "" license "${license}")
    set(copyright "${CMAKE_MATCH_1}")
    string(REGEX REPLACE "\n+$" "" license "${license}")
    string(REPLACE "\n\n" "\n.\n" license "${license}")
    string(REPLACE "\n" "\n " license "${license}")
    file(WRITE ${file} "Format: https://www.debian.org/doc/packaging-manuals/copyright-format/1.0/
Upstream-Name: tresk

Files: *
Copyright: ${copyright}
License: Expat
 ${license}
")
endfunction()

# The files of one package, which its folder is called after.
function(put_in_place stage)
    get_filename_component(package ${stage} NAME)
    set(share ${stage}/usr/share)
    set(doc ${share}/doc/${package})

    # A private symbol of the C library ties the package to one release of Debian.
    file(GLOB programs ${stage}/usr/bin/*)
    foreach(program IN LISTS programs)
        run(objdump -T ${program})
        if(output MATCHES "GLIBC_PRIVATE[^\n]*")
            message(FATAL_ERROR "${program} needs a private symbol: ${CMAKE_MATCH_0}")
        endif()
    endforeach()

    file(RENAME ${share}/zsh/site-functions ${share}/zsh/vendor-completions)
    file(REMOVE ${doc}/LICENSE ${doc}/CHANGELOG.md)
    write_copyright(${doc}/copyright)
    configure_file(${source}/CHANGELOG.md ${doc}/changelog COPYONLY)
    configure_file(${CMAKE_CURRENT_LIST_DIR}/changelog ${doc}/changelog.Debian COPYONLY)
    file(WRITE ${share}/lintian/overrides/${package} "# Not uploaded to Debian, so no bug of its list is closed.
${package}: initial-upload-closes-no-bugs *
")
    file(GLOB manuals ${share}/man/man1/*)
    run(gzip -9n ${doc}/changelog ${doc}/changelog.Debian ${manuals})
endfunction()

set(source ${CMAKE_CURRENT_LIST_DIR}/../..)
set(stage ${CPACK_TEMPORARY_INSTALL_DIRECTORY})

if(CPACK_GENERATOR STREQUAL "DEB")
    # Without it the package would say that it depends on nothing.
    run(dpkg-shlibdeps --version)
    file(GLOB packages ${stage}/*)
    foreach(package IN LISTS packages)
        put_in_place(${package})
    endforeach()
endif()

# The umask of who builds and the modes of the clone are no business of who installs.
run(chmod -R u=rwX,go=rX ${stage})
