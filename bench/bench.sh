# shellcheck shell=bash
# ./k7 bench measures the pure code; ./k7 bench soak sends 100,000 strokes through the driver to the
# simulated controller. Sourced by ./k7.

bench() {
  case ${1:-} in
    soak)
      build native k7sim k7_soak
      build windows k7driver k7_slots
      start_display
      start_prefix soak
      K7_BIN_WINDOWS=$BUILD/windows/bin K7_BIN_NATIVE=$BUILD/native/bin K7_SOURCE=$ROOT \
        "$BUILD/native/bin/k7_soak"
      ;;
    '')
      build native k7_bench
      "$BUILD/native/bin/k7_bench"
      ;;
    *) die "bench takes nothing or soak" ;;
  esac
}
