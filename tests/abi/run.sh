#!/bin/bash
# What a host's binary relies on: the header alone, the slot numbers with Microsoft's and GNU compilers,
# and the module as built. Runs natively; needs clang++, the MinGW tools and python3.
# usage: run.sh BUILD_DIR (a windows build with bin/k7driver.dll)
set -u
if [ $# -ne 1 ] || [ ! -d "$1" ]; then
  echo "usage: $0 BUILD_DIR" >&2
  exit 2
fi
BUILD=$(cd "$1" && pwd)
HERE=$(cd "$(dirname "$0")" && pwd)
WORK=$(mktemp -d)
readonly BUILD HERE WORK INCLUDE=$HERE/../../include
trap 'rm -rf "$WORK"' EXIT
passed=0 failed=0

# check NAME COMMAND...: one line on failure, with what the command said.
check() {
  local name=$1; shift
  if "$@" >"$WORK/said" 2>&1; then
    passed=$((passed + 1))
  else
    failed=$((failed + 1))
    echo "FAILED: $name"
    sed 's/^/  /' "$WORK/said"
  fi
}

# The header is all that a host includes.
echo '#include "k7/driver.h"' >"$WORK/host.cpp"
readonly ALONE=(-fsyntax-only "-I$INCLUDE" -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
readonly MICROSOFT=(--target=x86_64-pc-windows-msvc -ffreestanding)
for standard in 17 20; do
  check "driver.h alone, g++, C++$standard" \
    g++ "${ALONE[@]}" "-std=c++$standard" "$WORK/host.cpp"
  check "driver.h alone, MinGW g++, C++$standard" \
    x86_64-w64-mingw32-g++-posix "${ALONE[@]}" "-std=c++$standard" "$WORK/host.cpp"
  check "driver.h alone, clang++, C++$standard" \
    clang++ "${ALONE[@]}" "-std=c++$standard" "$WORK/host.cpp"
  check "driver.h alone, clang++ for the Microsoft ABI, C++$standard" \
    clang++ "${MICROSOFT[@]}" "${ALONE[@]}" "-std=c++$standard" "$WORK/host.cpp"
done

# The header for C, in both languages, and against the C++ headers.
echo '#include "k7/driver_c.h"' >"$WORK/host.c"
cp "$WORK/host.c" "$WORK/c_host.cpp"
for compiler in gcc x86_64-w64-mingw32-gcc-posix clang "clang ${MICROSOFT[*]}"; do
  # shellcheck disable=SC2086
  check "driver_c.h alone, $compiler, C11" $compiler "${ALONE[@]}" -std=c11 "$WORK/host.c"
done
for compiler in g++ x86_64-w64-mingw32-g++-posix clang++ "clang++ ${MICROSOFT[*]}"; do
  # shellcheck disable=SC2086
  check "driver_c.h alone, $compiler, C++17" $compiler "${ALONE[@]}" -std=c++17 "$WORK/c_host.cpp"
done

# The slot number of every operation.
readonly OPERATIONS=$HERE/operations.txt
slots() { python3 "$HERE/slots.py" "$@"; }
check "driver_c.h can be compared with the C++ headers" \
  eval "python3 '$HERE/slots.py' c_header '$OPERATIONS' >'$WORK/c_header.cpp'"
for compiler in x86_64-w64-mingw32-g++-posix "clang++ ${MICROSOFT[*]}"; do
  # shellcheck disable=SC2086
  check "driver_c.h has each operation in its slot, with its types, $compiler" \
    $compiler -fsyntax-only -std=c++17 "-I$INCLUDE" -Wall -Wextra "$WORK/c_header.cpp"
done
check "a member pointer of each operation can be written" \
  eval "python3 '$HERE/slots.py' source '$OPERATIONS' >'$WORK/slots.cpp'"
check "slots.cpp, Microsoft layout" \
  clang++ "${MICROSOFT[@]}" -std=c++20 "-I$INCLUDE" -O1 -S -o "$WORK/microsoft.s" "$WORK/slots.cpp"
check "slots.cpp, MinGW layout" \
  x86_64-w64-mingw32-g++-posix -std=c++20 "-I$INCLUDE" -O1 -S -o "$WORK/mingw.s" "$WORK/slots.cpp"
check "126 slots in the Microsoft layout" slots microsoft "$OPERATIONS" "$WORK/microsoft.s"
check "126 slots in the MinGW layout" slots mingw "$OPERATIONS" "$WORK/mingw.s"

# The module.
readonly DLL=$BUILD/bin/k7driver.dll
check "the module's own table holds each operation in its slot" slots table "$OPERATIONS" "$DLL"
check "each operation calls the functions that do its work" \
  slots calls "$OPERATIONS" \
  "$BUILD/src/CMakeFiles/k7driver_objects.dir/module/smoothieboard.cpp.obj"
module() { python3 "$HERE/module.py" "$@"; }
check "four undecorated exports" module exports "$DLL"
check "imports only libraries of Windows" module imports "$DLL"
check "version resource" module version "$DLL" "$HERE/../../CMakeLists.txt"
check "MinGW import library names the module and its four functions" \
  module import_library "$BUILD/lib/libk7driver.dll.a"
check ".def names the four functions" module def "$HERE/../../src/module/k7driver.def"
check "linked again, the module is the same to the byte" module relink "$BUILD" "$WORK"

echo "abi: $passed passed, $failed failed"
[ "$failed" -eq 0 ]
