# k7_version: a target whose users include "k7_version.h" for K7_VERSION, a text of three numbers. The
# number stands in the project line of CMakeLists.txt alone: the module's version resource, the
# package and this header take it from there, and tests/lint/version.py sees to the changelog.
configure_file(${CMAKE_CURRENT_LIST_DIR}/k7_version.h.in ${CMAKE_BINARY_DIR}/generated/k7_version.h @ONLY)
add_library(k7_version INTERFACE)
target_include_directories(k7_version INTERFACE ${CMAKE_BINARY_DIR}/generated)
