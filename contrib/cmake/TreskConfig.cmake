# SPDX-License-Identifier: MIT
# find_package(Tresk): the program as the target Tresk::tresk, and tresk_add_test(); Tresk::tresk-report where that is
# installed.
include(${CMAKE_CURRENT_LIST_DIR}/TreskTargets.cmake)
include(${CMAKE_CURRENT_LIST_DIR}/TreskReportTargets.cmake OPTIONAL)
include(${CMAKE_CURRENT_LIST_DIR}/TreskTest.cmake)
