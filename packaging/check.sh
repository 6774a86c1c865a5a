# shellcheck shell=bash
# ./k7 package --check: the package unpacked into an empty folder and used as a customer's programmer would.
# Sourced by ./k7 after packaging/package.sh has packed it.

readonly PACKAGE_TRY=$BUILD/package/try PACKAGE_ID=K7PACKAGEMACHINE

unpack_package() {
  rm -rf "$PACKAGE_TRY"; mkdir -p "$PACKAGE_TRY"
  (cd "$PACKAGE_TRY" && unzip -q "$STAGE-win64.zip" && unzip -q "$SYMBOLS.zip" && cd "k7driver-$VERSION" && sha256sum --quiet -c SHA256SUMS)
}

# The programs are stripped, and their symbols are those of the zip beside.
check_symbols() {
  local program tool=x86_64-w64-mingw32
  for program in k7driver.dll k7host.exe; do
    [ "$(stat -c %s "$UNPACKED/bin/$program")" -lt 4000000 ] || { echo "$program is not stripped"; return 1; }
    "$tool-objdump" -s -j .gnu_debuglink "$UNPACKED/bin/$program" | grep -q "${program:0:6}" || { echo "$program: no debuglink"; return 1; }
    "$tool-objdump" -h "$PACKAGE_TRY/k7driver-$VERSION-symbols/$program.debug" | grep -q debug_info || { echo "$program: no symbols"; return 1; }
  done
  python3 tests/abi/module.py exports "$UNPACKED/bin/k7driver.dll"
  python3 tests/abi/module.py imports "$UNPACKED/bin/k7driver.dll"
  python3 tests/abi/module.py version "$UNPACKED/bin/k7driver.dll" CMakeLists.txt
}

# C++ and C through find_package, by CMake, from a copy of the examples that knows nothing of this checkout.
build_by_cmake() {
  cmake -G Ninja -S "$UNPACKED/examples" -B "$PACKAGE_TRY/cmake" -DCMAKE_TOOLCHAIN_FILE="$ROOT/cmake/mingw-w64.cmake" \
    -DCMAKE_PREFIX_PATH="$UNPACKED" && cmake --build "$PACKAGE_TRY/cmake"
}

# The same with pkg-config and a compiler's command line.
build_by_pkg_config() {
  local flags out=$PACKAGE_TRY/pkg-config
  mkdir -p "$out"
  flags=$(PKG_CONFIG_LIBDIR=$UNPACKED/lib/pkgconfig pkg-config --cflags --libs k7driver) || return 1
  [ "$(PKG_CONFIG_LIBDIR=$UNPACKED/lib/pkgconfig pkg-config --modversion k7driver)" = "$VERSION" ] || return 1
  # shellcheck disable=SC2086
  x86_64-w64-mingw32-gcc-posix -std=c11 "$UNPACKED/examples/square.c" $flags -static -o "$out/square_c.exe" &&
    x86_64-w64-mingw32-g++-posix -std=c++17 "$UNPACKED/examples/square.cpp" $flags -static -o "$out/square.exe"
}

# By Microsoft's rules with clang and lld. The examples themselves need the C and C++ libraries of Visual
# Studio, which are not to be had here; this host needs none.
build_by_microsofts_rules() {
  local out=$PACKAGE_TRY/microsoft
  mkdir -p "$out"
  clang++ --target=x86_64-pc-windows-msvc -ffreestanding -std=c++17 -O1 -Wall -Wextra -Werror "-I$UNPACKED/include" \
    -c tests/package/microsoft.cpp -o "$out/host.obj" &&
    lld-link /nologo /subsystem:console /entry:Start /nodefaultlib /out:"$out/host.exe" "$out/host.obj" "$UNPACKED/lib/k7driver.lib" &&
    cp "$UNPACKED/bin/k7driver.dll" "$out/"
}

# engrave_with PROGRAM: runs it on the demonstration machine, which must report three passes of the square.
engrave_with() {
  local report=$PACKAGE_TRY/report.json code=0
  rm -f "$report"
  start_simulator --id "$PACKAGE_ID" --speed max --table 7,4.5,2 --table-home 1,1 --surface plane:1.2 --position 6,4,0.3 --report "$report"
  timeout 120 wine "$1" </dev/null || code=$?
  kill -TERM "$SIMULATOR_PID"; wait "$SIMULATOR_PID" || code=$?
  [ "$code" -eq 0 ] || { echo "exit code $code"; return 1; }
  python3 - "$report" <<'PYTHON'
import json, sys
report = json.load(open(sys.argv[1]))
if report["errors"]["total"] or abs(report["cutInches"] - 12) > 0.001 or report["spindle"]["on"]:
    sys.exit(f"cut {report['cutInches']} in: {report['errors']}")
print(f"cut {report['cutInches']:.3f} in, 0 errors")
PYTHON
}

# A second package of the same sources, in a folder with another name, has the same bytes.
pack_again() {
  local again=$PACKAGE_TRY/a-second-checkout
  mkdir -p "$again"
  git ls-files -z --cached --others --exclude-standard | tar -c --null -T - | tar -x -C "$again" || return 1
  "$again/k7" package || return 1
  cmp "$STAGE-win64.zip" "$again/build/package/k7driver-$VERSION-win64.zip" && cmp "$SYMBOLS.zip" "$again/build/package/k7driver-$VERSION-symbols.zip"
}

package_check() {
  need "${PACKAGES_PACKAGE_CHECK[@]}" "${PACKAGES_WINE[@]}"
  build native k7sim
  say "working with the package"
  UNPACKED=$PACKAGE_TRY/k7driver-$VERSION
  check unpack unpack_package
  check contents python3 tests/package/contents.py "$UNPACKED" "$VERSION"
  check symbols check_symbols
  check "find_package" build_by_cmake
  check "pkg-config" build_by_pkg_config
  check "Microsoft linker" build_by_microsofts_rules
  start_display
  start_prefix package
  local settings="$WINEPREFIX/drive_c/ProgramData/Penfold Hatch/Veltrana/Controllers"
  mkdir -p "$settings"
  cp host/demo.ini "$settings/$PACKAGE_ID.ini"
  check "engrave, C++" engrave_with "$PACKAGE_TRY/cmake/k7_square.exe"
  check "engrave, C" engrave_with "$PACKAGE_TRY/cmake/k7_square_c.exe"
  check "engrave, Microsoft" engrave_with "$PACKAGE_TRY/microsoft/host.exe"
  check "packed again" pack_again
  echo "$PASSED passed, $FAILED failed, $SKIPPED skipped"
  [ "$FAILED" -eq 0 ] || exit 1
}
