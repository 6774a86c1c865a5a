#!/bin/bash
# Configures the build on machines that lack a part: without GoogleTest or CLI11 there is less to build,
# but the driver is always there. Configures for Linux, for MinGW and for a compiler with Visual
# Studio's command line; builds nothing.
set -uo pipefail
ROOT=$(cd "$(dirname "$0")/../.." && pwd)
WORK=$(mktemp -d)
readonly ROOT WORK
trap 'rm -rf "$WORK"' EXIT
unset CMAKE_CXX_COMPILER_LAUNCHER CMAKE_C_COMPILER_LAUNCHER  # nothing is compiled that could be kept
passed=0 failed=0

verdict() {  # NAME CODE
  if [ "$2" -eq 0 ]; then
    passed=$((passed + 1))
  else
    failed=$((failed + 1))
    echo "FAILED: $1"
  fi
}

# configure NAME ARGUMENTS...: what follows looks at the build folder of this name.
configure() {
  name=$1; shift
  cmake -S "$ROOT" -B "$WORK/$name" -G Ninja -DCMAKE_BUILD_TYPE=Release "$@" >"$WORK/$name.log" 2>&1
  local code=$?
  verdict "$name: configuration" $code
  [ $code -eq 0 ] || tail -20 "$WORK/$name.log"
  ninja -C "$WORK/$name" -t targets all >"$WORK/$name.targets" 2>/dev/null
}

says() { grep -qF -- "$1" "$WORK/$name.log"; verdict "$name: says '$1'" $?; }
makes() { grep -q "^$1: " "$WORK/$name.targets"; verdict "$name: makes $1" $?; }
makes_no() { ! grep -q "^$1: " "$WORK/$name.targets"; verdict "$name: makes no $1" $?; }

# Clang takes Visual Studio's command line when it is called clang-cl. The linker and the resource
# compiler are never run. The librarian is: CMake probes the compiler by making a library, which may
# be empty.
mkdir "$WORK/tools"
ln -s "$(readlink -f "$(command -v clang)")" "$WORK/tools/clang-cl"
cat >"$WORK/tools/lib" <<'SCRIPT'
#!/bin/sh
for word; do case $word in /out:*) touch "${word#/out:}" ;; esac; done
SCRIPT
chmod +x "$WORK/tools/lib"
for tool in link mt rc; do ln -s /bin/true "$WORK/tools/$tool"; done
cat >"$WORK/visual-studio.cmake" <<CMAKE
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR AMD64)
foreach(language C CXX)
  set(CMAKE_\${language}_COMPILER $WORK/tools/clang-cl)
  set(CMAKE_\${language}_COMPILER_TARGET x86_64-pc-windows-msvc)
  set(CMAKE_\${language}_COMPILER_WORKS ON)
endforeach()
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
set(CMAKE_AR $WORK/tools/lib)
set(CMAKE_LINKER $WORK/tools/link)
set(CMAKE_MT $WORK/tools/mt)
set(CMAKE_RC_COMPILER $WORK/tools/rc)
CMAKE
readonly NO_TEST=-DK7_GOOGLETEST_DIR=/nonexistent NO_CLI11=-DK7_CLI11_DIR=/nonexistent
readonly MINGW=-DCMAKE_TOOLCHAIN_FILE=$ROOT/cmake/mingw-w64.cmake
readonly STUDIO=-DCMAKE_TOOLCHAIN_FILE=$WORK/visual-studio.cmake

configure native-bare $NO_TEST $NO_CLI11
says "No k7host, no k7sim: no CLI/CLI.hpp in /nonexistent"
says "No tests: no GoogleTest in /nonexistent"
makes k7core
makes_no k7sim
makes_no k7_pure_tests

configure native-without-cli11 $NO_CLI11
says "No tests: they need k7sim, which needs CLI11"
makes_no k7sim

configure mingw-bare "$MINGW" $NO_TEST $NO_CLI11
says "No k7host, no k7sim: no CLI/CLI.hpp in /nonexistent"
makes bin/k7driver.dll
makes lib/libk7driver.dll.a
makes_no k7host
makes_no k7_module_tests

ln -s /usr/include/CLI "$WORK/CLI"
configure mingw-without-tests "$MINGW" $NO_TEST "-DK7_CLI11_DIR=$WORK"
makes bin/k7host.exe
makes_no k7_module_tests

configure visual-studio-bare "$STUDIO" $NO_TEST $NO_CLI11
says "MSVC-like command-line"
makes bin/k7driver.dll
makes lib/k7driver.lib
makes_no k7host

configure visual-studio-full "$STUDIO" -Wno-dev
makes lib/k7driver.lib
makes bin/k7host.exe
makes bin/k7_module_tests.exe
commands=$(ninja -C "$WORK/$name" -t commands all | grep -F -- ' -TP ')
[ "$(grep -c . <<<"$commands")" = "$(grep -c -- ' -MT ' <<<"$commands")" ]
verdict "$name: all that is compiled has the static C runtime" $?

configure options-off "$MINGW" -DK7_TESTS=OFF -DK7_HOST=OFF
makes bin/k7driver.dll
makes_no k7host
makes_no k7_module_tests

echo "configure_test: $passed passed, $failed failed"
[ "$failed" -eq 0 ]
