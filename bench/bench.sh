# shellcheck shell=bash
# ./k7 bench measures the pure code; ./k7 bench wire the way of a line from the host to the machine;
# ./k7 bench soak sends 100,000 strokes through the driver to the simulated controller, or connects
# 1,000 times; ./k7 bench faults tries every fault in every phase; ./k7 bench peers has senders that
# nobody here wrote stream a file to the simulated controller. Sourced by ./k7.
. "$ROOT/bench/peers.sh"

# wire [LINES]: lines a second of the driver, beside a bare sender and printcore.
bench_wire() {
  need "${PACKAGES_BENCH_WIRE[@]}"
  build native k7_responder
  build windows k7driver k7_bare_sender k7_driver_sender
  start_display
  start_prefix bench-wire
  say "measuring"
  K7_BIN_WINDOWS=$BUILD/windows/bin K7_BIN_NATIVE=$BUILD/native/bin K7_BUILD=$BUILD \
    /usr/bin/python3 "$ROOT/bench/wire.py" "$@"
  say "figures: build/bench/wire.json, picture: build/bench/wire.svg"
}

# soak [STROKES], soak connects [CONNECTS]
bench_soak() {
  local filter='*EveryLine*'
  if [ "${1:-}" = connects ]; then
    filter='*Connects*'
    shift
    export K7_SOAK_CONNECTS=${1:-1000}
  fi
  build native k7sim k7_soak
  build windows k7driver k7_slots
  start_display
  start_prefix soak
  K7_BIN_WINDOWS=$BUILD/windows/bin K7_BIN_NATIVE=$BUILD/native/bin K7_SOURCE=$ROOT \
    K7_SOAK_STROKES=${1:-100000} "$BUILD/native/bin/k7_soak" --gtest_filter="$filter"
}

# faults: every fault in every phase, against the table of docs/reliability.md; then printcore.
bench_faults() {
  need "${PACKAGES_BENCH_WIRE[@]}"
  build native k7sim k7_end_to_end_tests
  build windows-checked k7driver k7_slots
  say "every fault in every phase"
  sharded faults 6 '*FaultMatrix*' env K7_BIN_WINDOWS="$BUILD/windows-checked/bin" \
    K7_BIN_NATIVE="$BUILD/native/bin" K7_SOURCE="$ROOT" "$BUILD/native/bin/k7_end_to_end_tests"
  say "printcore, with the same simulated machine"
  check printcore /usr/bin/python3 "$ROOT/bench/printcore_faults.py" "$BUILD/native/bin/k7sim"
  cat "$BUILD/logs/printcore.log"
  [ "$FAILED" -eq 0 ] || exit 1
}

bench() {
  local what=${1:-}
  [ $# -eq 0 ] || shift
  local count=${1:-1}
  [ "$what $count" != 'soak connects' ] || count=${2:-1}
  [[ $count =~ ^[1-9][0-9]*$ ]] || die "bench $what: a number above 0, or nothing"
  case $what in
    wire | soak | faults | peers) "bench_$what" "$@" ;;
    '')
      build native k7_bench
      "$BUILD/native/bin/k7_bench"
      ;;
    *) die "bench takes nothing, wire [LINES], soak [STROKES], soak connects [CONNECTS], faults or peers" ;;
  esac
}
