# SPDX-License-Identifier: MIT
# find_package(Tresk): the program as the target Tresk::tresk, and tresk_add_test().
include(${CMAKE_CURRENT_LIST_DIR}/TreskTargets.cmake)
include(${CMAKE_CURRENT_LIST_DIR}/TreskTest.cmake)
