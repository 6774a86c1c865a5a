# How everything of ours is compiled: target k7_options. The test framework, too.
add_library(k7_options INTERFACE)
target_include_directories(k7_options INTERFACE ${CMAKE_SOURCE_DIR}/include ${CMAKE_SOURCE_DIR}/src)
if(MSVC)
  # A warning is no reason for a build to fail there: its list differs from version to version.
  target_compile_options(k7_options INTERFACE /W4 /utf-8 /permissive- /fp:precise)
else()
  # The controller's numbers come from single-precision arithmetic in the order written.
  target_compile_options(
    k7_options INTERFACE -Wall -Wextra -Wshadow -Wconversion -Werror -ffp-contract=off
                         -ffile-prefix-map=${CMAKE_SOURCE_DIR}=.
                         -ffile-prefix-map=${CMAKE_BINARY_DIR}=./build)
endif()
if(WIN32)
  target_compile_definitions(
    k7_options INTERFACE UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN _WIN32_WINNT=0x0A00
                         WINVER=0x0A00)
  if(NOT MSVC)
    target_link_options(k7_options INTERFACE -static -Wl,--no-insert-timestamp)
  endif()
endif()

# k7_checks: what the driver's own code is compiled with beside that in checked builds. The tests are
# not: they are the larger part and would take the longer to build.
add_library(k7_checks INTERFACE)
if(K7_CHECKED AND NOT MSVC)
  target_compile_options(
    k7_checks INTERFACE -g1 -fsanitize=undefined -fsanitize-undefined-trap-on-error
                        -fstack-protector-strong)
  target_link_options(k7_options INTERFACE -fstack-protector-strong)
  target_compile_definitions(k7_options INTERFACE _GLIBCXX_ASSERTIONS K7_CHECKED)
endif()
# Builds that are only tested: what stands beside the driver is compiled quickly, not to run quickly.
set(K7_QUICK_BUILD)
if(NOT MSVC AND K7_SANITIZE)
  set(K7_QUICK_BUILD -O0 -g1)
elseif(NOT MSVC AND K7_CHECKED)
  set(K7_QUICK_BUILD -O0 -g0)
endif()
if(K7_SANITIZE)
  add_compile_options(-g1 -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_compile_definitions(_GLIBCXX_ASSERTIONS)
  add_link_options(-fsanitize=address,undefined)
endif()
if(K7_FUZZ)
  add_compile_options(-O1 -g1 -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all)
  add_link_options(-fsanitize=address,undefined)
endif()

# Gives a program that opens dialogs the manifest of today's applications.
function(k7_add_manifest target)
  target_sources(${target} PRIVATE ${CMAKE_SOURCE_DIR}/cmake/desktop.rc)
  set_source_files_properties(${CMAKE_SOURCE_DIR}/cmake/desktop.rc PROPERTIES OBJECT_DEPENDS
                              ${CMAKE_SOURCE_DIR}/cmake/desktop.manifest)
  if(MSVC)
    target_link_options(${target} PRIVATE /MANIFEST:NO)  # it has this one
  endif()
endfunction()

# Natively the tests stand on the simulated controller.
set(K7_GOOGLETEST_DIR /usr/src/googletest CACHE PATH "Sources of GoogleTest (package googletest)")
set(K7_BUILD_TESTS OFF)
if(K7_TESTS AND NOT K7_FUZZ)
  if(NOT EXISTS ${K7_GOOGLETEST_DIR}/CMakeLists.txt)
    message(STATUS "No tests: no GoogleTest in ${K7_GOOGLETEST_DIR} (K7_GOOGLETEST_DIR)")
  elseif(NOT WIN32 AND NOT K7_CLI11_FOUND)
    message(STATUS "No tests: they need k7sim, which needs CLI11")
  else()
    set(K7_BUILD_TESTS ON)
    set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
    set(gtest_disable_pthreads OFF CACHE BOOL "" FORCE)
    add_subdirectory(${K7_GOOGLETEST_DIR} ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
    if(NOT MSVC)
      foreach(library gtest gtest_main gmock gmock_main)
        target_compile_options(${library} PRIVATE -O0 -g0)
      endforeach()
    endif()
  endif()
endif()
