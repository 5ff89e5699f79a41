# SPDX-License-Identifier: MIT
# What is installed where, and the packages.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

# Components are Debian packages, and called like these.
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME tresk)
set(package_dir ${CMAKE_INSTALL_DATADIR}/cmake/Tresk)
set(harness_dir ${CMAKE_INSTALL_DATADIR}/tresk/harness)

add_executable(Tresk::tresk ALIAS tresk)
install(TARGETS tresk EXPORT TreskTargets RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(EXPORT TreskTargets NAMESPACE Tresk:: DESTINATION ${package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/TreskConfigVersion.cmake
    COMPATIBILITY AnyNewerVersion ARCH_INDEPENDENT)
install(FILES contrib/cmake/TreskConfig.cmake contrib/cmake/TreskTest.cmake
    ${PROJECT_BINARY_DIR}/TreskConfigVersion.cmake DESTINATION ${package_dir})

# Manual page and completions of a program.
function(install_pages name)
    install(FILES man/${name}.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 ${ARGN})
    install(FILES contrib/completions/${name}.bash
        DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME ${name} ${ARGN})
    install(FILES contrib/completions/_${name} DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions ${ARGN})
    install(FILES contrib/completions/${name}.fish
        DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d ${ARGN})
endfunction()

install_pages(tresk)
if(TARGET raw2punch)
    add_executable(Tresk::raw2punch ALIAS raw2punch)
    install(TARGETS raw2punch EXPORT TreskTargets RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
    install_pages(raw2punch)
endif()
if(TARGET tresk-report) # a package of its own, so its targets have a file of their own
    add_executable(Tresk::tresk-report ALIAS tresk-report)
    install(TARGETS tresk-report EXPORT TreskReportTargets RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
        COMPONENT tresk-report)
    install(EXPORT TreskReportTargets NAMESPACE Tresk:: DESTINATION ${package_dir} COMPONENT tresk-report)
    install(FILES src/report/result-1.schema.json DESTINATION ${CMAKE_INSTALL_DATADIR}/tresk COMPONENT tresk-report)
    install_pages(tresk-report COMPONENT tresk-report)
endif()
install(DIRECTORY contrib/harness/ DESTINATION ${harness_dir} USE_SOURCE_PERMISSIONS)

install(FILES README.md CHANGELOG.md LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR} OPTIONAL)
install(DIRECTORY docs samples DESTINATION ${CMAKE_INSTALL_DOCDIR})

if(NOT is_top_level)
    return()
endif()

add_custom_target(uninstall
    COMMAND ${CMAKE_COMMAND} -D MANIFEST=${PROJECT_BINARY_DIR}/install_manifest.txt
        -P ${CMAKE_CURRENT_LIST_DIR}/uninstall.cmake
    VERBATIM)

if(CMAKE_VERSION VERSION_LESS 3.19)
    return() # CPack would leave out the script below without a word
endif()

# The version is that of the transcript's banner and stays; releases differ in the revision.
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS cmake/debian/changelog)
file(STRINGS cmake/debian/changelog package_revision LIMIT_COUNT 1 REGEX "^tresk \\(${PROJECT_VERSION}-[0-9]+\\)")
string(REGEX REPLACE "^[^-]*-([0-9]+).*" "\\1" package_revision "${package_revision}")
string(TOLOWER ${CMAKE_SYSTEM_NAME} system)
set(CPACK_PACKAGE_FILE_NAME tresk-${PROJECT_VERSION}-${package_revision}-${system}-${CMAKE_SYSTEM_PROCESSOR})
set(CPACK_GENERATOR DEB TGZ)
if(TRESK_STATIC)
    string(APPEND CPACK_PACKAGE_FILE_NAME -static)
    set(CPACK_GENERATOR TGZ)
endif()
set(CPACK_PACKAGE_CONTACT "the tresk authors <tresk@tresk.invalid>")
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE ${package_revision})
set(CPACK_DEBIAN_PACKAGE_SECTION electronics)
set(CPACK_DEBIAN_PACKAGE_SOURCE tresk)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_TRESK_PACKAGE_NAME tresk)
set(CPACK_DEBIAN_TRESK_PACKAGE_SUGGESTS "cmake, ngspice, parallel, tresk-report")
# The first line is the summary.
set(CPACK_DEBIAN_TRESK_DESCRIPTION "regression comparator of analog-simulator punch files
tresk compares a punch file with a golden one, signal by signal and
within tolerances, writes a transcript of what differs, and ends with one exit
grade for a test harness. raw2punch makes punch files from the rawfiles of
SPICE simulators.")
set(CPACK_DEBIAN_TRESK-REPORT_PACKAGE_NAME tresk-report)
set(CPACK_DEBIAN_TRESK-REPORT_PACKAGE_DEPENDS "tresk (= ${PROJECT_VERSION}-${package_revision})")
set(CPACK_DEBIAN_TRESK-REPORT_DESCRIPTION "pages and data of what tresk found in punch files
tresk-report compares two punch files as tresk does, with the same transcript
and exit code, and leaves a report: one HTML page that draws what failed, worst
first, and the findings as JSON and CSV.")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/debian/package.cmake)
include(CPack)
