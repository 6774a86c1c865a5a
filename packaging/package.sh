# shellcheck shell=bash
# ./k7 package: what a programmer of hosts gets. Sourced by ./k7, which has built driver and host.
# Two runs give the same bytes, wherever the checkout lies: dates are that of the commit, or that which
# SOURCE_DATE_EPOCH says, files are packed in the order of their names, and no path gets into a file.

readonly PACKAGE_WORK=$BUILD/package/work

package_version() { sed -nE 's/^project\(k7driver VERSION ([0-9.]+).*/\1/p' CMakeLists.txt; }

# fill TEMPLATE FILE: the template with version and folders put in.
fill() {
  sed -e "s|@VERSION@|$VERSION|g; s|@MAJOR@|${VERSION%%.*}|g; s|@OUT@|$STAGE/docs|g" \
    "packaging/templates/$1" >"$2"
}

# Strips a program into the package; its symbols go into a file beside, which a debugger finds by name.
stage_program() {  # NAME
  local program=$STAGE/bin/$1 symbols=$SYMBOLS/$1.debug tool=x86_64-w64-mingw32
  cp "$BUILD/windows/bin/$1" "$program"
  "$tool-objcopy" --only-keep-debug "$program" "$symbols"
  "$tool-strip" --strip-all "$program"
  (cd "$SYMBOLS" && "$tool-objcopy" --add-gnu-debuglink="$1.debug" "$program")
}

stage_documents() {
  local date; date=$(date -u -d "@$SOURCE_DATE_EPOCH" +%Y-%m-%d)
  # The system's Python: the generator is a Debian package.
  /usr/bin/python3 packaging/guides.py "$VERSION" "$date" docs CHANGELOG.md "$STAGE/docs/guides" "$PACKAGE_WORK/guides.html"
  PYTHONHASHSEED=0 weasyprint -q "$PACKAGE_WORK/guides.html" "$STAGE/docs/guides.pdf"
  fill Doxyfile.in "$PACKAGE_WORK/Doxyfile"
  doxygen "$PACKAGE_WORK/Doxyfile" >"$PACKAGE_WORK/doxygen.log" 2>&1 || { cat "$PACKAGE_WORK/doxygen.log" >&2; die "doxygen failed"; }
}

# pack FOLDER ZIP: the folder as a zip without owners, with one date, in the order of the names.
pack() {
  chmod -R u=rwX,go=rX "$1"
  find "$1" -exec touch -h -d "@$SOURCE_DATE_EPOCH" {} +
  rm -f "$2"
  (cd "$(dirname "$1")" && find "$(basename "$1")" | LC_ALL=C sort | TZ=UTC zip -qX -@ "$2")
}

package() {
  VERSION=$(package_version)
  STAGE=$BUILD/package/k7driver-$VERSION SYMBOLS=$BUILD/package/k7driver-$VERSION-symbols
  SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(git log -1 --format=%ct 2>/dev/null || date -d 2000-01-01 +%s)}
  export SOURCE_DATE_EPOCH
  say "packing $VERSION"
  rm -rf "$BUILD/package"
  mkdir -p "$PACKAGE_WORK" "$SYMBOLS" "$STAGE"/{bin,include/k7,lib/cmake/k7driver,lib/pkgconfig,docs}
  stage_program k7driver.dll
  stage_program k7host.exe
  cp include/k7/*.h "$STAGE/include/k7/"
  cp -r examples "$STAGE/"
  rm -rf "$STAGE/examples/python/__pycache__"
  cp "$BUILD/windows/lib/libk7driver.dll.a" src/module/k7driver.def "$STAGE/lib/"
  llvm-dlltool -m i386:x86-64 -d src/module/k7driver.def -D k7driver.dll -l "$STAGE/lib/k7driver.lib"
  cp packaging/templates/k7driver-config.cmake "$STAGE/lib/cmake/k7driver/"
  fill k7driver-config-version.cmake.in "$STAGE/lib/cmake/k7driver/k7driver-config-version.cmake"
  fill k7driver.pc.in "$STAGE/lib/pkgconfig/k7driver.pc"
  fill README.txt.in "$STAGE/README.txt"
  cp LICENSE CHANGELOG.md "$STAGE/"
  stage_documents
  python3 packaging/bill_of_materials.py "$VERSION" "$SOURCE_DATE_EPOCH" "$BUILD/windows" "$STAGE" \
    "$STAGE/licences" "${PACKAGES_BUILD[@]}" "${PACKAGES_PACKAGE[@]}"
  (cd "$STAGE" && find . -type f -printf '%P\n' | LC_ALL=C sort | xargs -d '\n' sha256sum) >"$PACKAGE_WORK/sums"
  cp "$PACKAGE_WORK/sums" "$STAGE/SHA256SUMS"
  pack "$STAGE" "$STAGE-win64.zip"
  pack "$SYMBOLS" "$SYMBOLS.zip"
  say "package: build/package/k7driver-$VERSION-win64.zip, build/package/k7driver-$VERSION-symbols.zip"
}
