# SPDX-License-Identifier: MIT
# Writes the files FROM, one behind the other, as a C++ text NAME of report/embedded.h to the file TO.
set(text)
foreach(file IN LISTS FROM)
    file(READ ${file} part)
    string(APPEND text "${part}")
endforeach()
set(mark embedded)
string(FIND "${text}" ")${mark}\"" at)
if(NOT at EQUAL -1)
    message(FATAL_ERROR "${FROM} holds the mark that ends it")
endif()
file(WRITE ${TO} "#include \"report/embedded.h\"
const std::string_view report::${NAME} = R\"${mark}(${text})${mark}\";
")
