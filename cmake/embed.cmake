# SPDX-License-Identifier: MIT
# Writes the file FROM as a C++ text NAME of report/embedded.h to the file TO.
file(READ ${FROM} text)
set(mark embedded)
string(FIND "${text}" ")${mark}\"" at)
if(NOT at EQUAL -1)
    message(FATAL_ERROR "${FROM} holds the mark that ends it")
endif()
file(WRITE ${TO} "#include \"report/embedded.h\"
const std::string_view report::${NAME} = R\"${mark}(${text})${mark}\";
")
