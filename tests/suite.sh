# shellcheck shell=bash
# ./k7 test: the suites, the lanes that they run in, and their count. Sourced by ./k7.
PASSED=0 FAILED=0 SKIPPED=0
FAILURES=()
LANE_PREFIXES=() LANE_DISPLAYS=()
BACKGROUND=''

# count NAME EXIT_CODE LOG: adds the counts of a test program's output. A program that is no test
# program is one check; a test program that ran no test adds none.
count() {
  local name=$1 code=$2 log=$3 passed failed skipped
  passed=$(sed -nE 's/\r//; s/^\[  PASSED  \] ([0-9]+) tests?\.$/\1/p; s/^[a-z_]+: ([0-9]+) passed, .*$/\1/p' "$log" | awk '{n+=$1} END {print n+0}')
  failed=$(sed -nE 's/\r//; s/^\[  FAILED  \] ([0-9]+) tests?, listed below:$/\1/p; s/^[a-z_]+: [0-9]+ passed, ([0-9]+) failed.*$/\1/p' "$log" | awk '{n+=$1} END {print n+0}')
  skipped=$(sed -nE 's/\r//; s/^\[  SKIPPED \] ([0-9]+) tests?, listed below:$/\1/p' "$log" | awk '{n+=$1} END {print n+0}')
  if [ "$code" -ne 0 ] && [ "$failed" -eq 0 ]; then failed=1; fi
  if [ "$code" -eq 0 ] && ! grep -qaE '^\[==========\]|^[a-z_]+: [0-9]+ passed' "$log"; then passed=1; fi
  PASSED=$((PASSED + passed)) FAILED=$((FAILED + failed)) SKIPPED=$((SKIPPED + skipped))
  printf '   %-28s %5d passed, %d failed, %d skipped\n' "$name" "$passed" "$failed" "$skipped"
  if [ "$failed" -ne 0 ]; then
    FAILURES+=("$name")
    # A program that names no failed test has ended early: how, and in which test.
    grep -qaE '^\[  FAILED  \]|, [1-9][0-9]* failed' "$log" ||
      echo "      ended with code $code in: $(grep -a . "$log" | tail -1)"
    grep -aE '^\[  FAILED  \]|Failure$|^ERROR|error:|runtime error' "$log" | tail -40 | sed 's/^/      /' || true
    echo "      log: $log"
  fi
  [ "$skipped" -eq 0 ] || grep -a '^\[  SKIPPED \]' "$log" | sort -u | sed 's/^/      /'
}

# A locale with a decimal comma for the tests that must not heed it, exported as LOCPATH.
start_comma_locale() {
  export LOCPATH=$BUILD/locale
  [ -e "$LOCPATH/de_DE.UTF-8" ] && return 0
  mkdir -p "$LOCPATH"
  localedef -i de_DE -f UTF-8 "$LOCPATH/de_DE.UTF-8" || die "localedef failed"
}

# check NAME COMMAND...: runs a check, its output into a log, and counts it.
check() {
  local name=$1 code=0 log=$BUILD/logs/${1// /-}.log; shift
  mkdir -p "$BUILD/logs"
  "$@" >"$log" 2>&1 || code=$?
  count "$name" "$code" "$log"
}

# The lanes that test programs run in, side by side: each a Wine prefix and a display of its own.
# Made when first asked for and kept for the next program, since to make one is hard work.
start_lanes() {  # COUNT
  local lane
  for ((lane = ${#LANE_PREFIXES[@]}; lane < $1; ++lane)); do
    start_display
    start_prefix "lane-$lane"
    LANE_DISPLAYS+=("$DISPLAY") LANE_PREFIXES+=("$WINEPREFIX")
  done
}

# sharded NAME SHARDS FILTER COMMAND...: a GoogleTest program, its tests dealt out to SHARDS processes
# that run side by side, each in a lane. They mostly wait, so that there may be more than processors.
sharded() {
  local name=$1 shards=$2 filter=$3 shard pids=(); shift 3
  mkdir -p "$BUILD/logs"
  start_lanes "$shards"  # all are up before the first test starts
  for ((shard = 0; shard < shards; ++shard)); do
    DISPLAY=${LANE_DISPLAYS[shard]} WINEPREFIX=${LANE_PREFIXES[shard]} \
      GTEST_TOTAL_SHARDS=$shards GTEST_SHARD_INDEX=$shard timeout --foreground 900 \
      "$@" --gtest_filter="$filter" >"$BUILD/logs/$name-$shard.log" 2>&1 </dev/null &
    pids+=($!)
  done
  for ((shard = 0; shard < shards; ++shard)); do
    local code=0
    wait "${pids[shard]}" || code=$?
    count "$name ($((shard + 1)) of $shards)" "$code" "$BUILD/logs/$name-$shard.log"
  done
}

# wine_suite NAME SHARDS EXE [FILTER]: the same for a Windows program.
wine_suite() {
  sharded "$1" "$2" "${4:-*}" wine "$3"
}

format_check() { sources '*.h' '*.c' '*.cpp' | xargs -0 clang-format --dry-run -Werror; }

shell_check() { sources k7 .ci/run '.githooks/*' '*.sh' | xargs -0 shellcheck -x; }

# Runs each lint, and the tests of the scripts that stand beside the lints. None needs a build.
lints() {
  local file
  check format format_check
  check shellcheck shell_check
  for file in tests/lint/*.py tests/lint/*.sh tests/ui/lint_*.py tests/examples/*_test.py; do
    case $file in
      *.py) check "$(basename "$file" .py)" python3 "$file" ;;
      *) check "$(basename "$file" .sh)" "$file" ;;
    esac
  done
}

# clang-tidy over the pure code and the native programs, by their own compile commands. CHECKS: left out
# of those of .clang-tidy.
tidy_check() {  # CHECKS
  local file files=()
  while IFS= read -r -d '' file; do
    if grep -q "\"file\": \"$ROOT/$file\"" "$BUILD/native/compile_commands.json"; then files+=("$file"); fi
  done < <(sources 'simulator/*.cpp' 'host/*.cpp' 'src/*.cpp')
  printf '%s\0' "${files[@]}" |
    xargs -0 -P "$JOBS" -n 4 clang-tidy -p "$BUILD/native" --quiet --warnings-as-errors='*' ${1:+--checks="$1"}
}

# Programs, driver, host and simulated machine together. KIND: of another driver under bin. Of the
# faults in every phase a part; ./k7 bench faults runs the rest.
end_to_end() {  # FILTER [KIND [SHARDS]]
  sharded "end-to-end${2:+-$2}" "${3:-5}" "$1-Rest/*" env K7_BIN_WINDOWS="$BUILD/windows-checked/bin${2:+/$2}" \
    K7_BIN_NATIVE="$BUILD/native/bin" K7_SOURCE="$ROOT" "$BUILD/native/bin/k7_end_to_end_tests"
}

# The tests of what reading touches, once more with a port whose idle reads end at once, or by
# themselves, as on Windows. Left out are those that show how such a read itself ends.
other_port_kinds() {
  local kind
  for kind in at_once ends_by_itself; do
    wine_suite "module-$kind" 5 "$BUILD/windows-checked/bin/k7_module_tests_$kind.exe" \
      '*-Io.*:*/Io.*:ReadAtOnce.*'
    end_to_end 'Connect.*:Discovery.*:Job.T*:Job.A*:Job.F*:Job.C*:*PulledCable*:Release.*:SerialPort.*' "$kind"
    end_to_end 'Job.OverABareSerialLine*' "$kind" 1
  done
}

cmd_end_to_end() {  # for tests/golden/update.sh
  need "${PACKAGES_BUILD[@]}" "${PACKAGES_WINE[@]}"
  build native k7sim k7_end_to_end_tests
  build windows-checked k7driver k7host k7_slots
  end_to_end "*${1:-}*"
  [ "$FAILED" -eq 0 ] || exit 1
}

# recorded NAME COMMAND...: runs a check whose log and exit code wait for count_recorded.
recorded() {
  local name=$1 code=0; shift
  mkdir -p "$BUILD/logs"
  "$@" >"$BUILD/logs/$name.log" 2>&1 || code=$?
  echo "$code" >"$BUILD/logs/$name.code"
}
count_recorded() {  # NAME...
  local name
  for name in "$@"; do
    # One that has left no code has been killed, or was never reached.
    touch "$BUILD/logs/$name.log"
    count "$name" "$(cat "$BUILD/logs/$name.code" 2>/dev/null || echo 1)" "$BUILD/logs/$name.log"
  done
}

readonly NATIVE_SUITES=(k7_pure_tests k7sim_tests k7_host_tests)
native_suites() {  # FILTER
  local suite
  build native-asan "${NATIVE_SUITES[@]}"
  start_comma_locale
  for suite in "${NATIVE_SUITES[@]}"; do
    recorded "$suite" "$BUILD/native-asan/bin/$suite" --gtest_filter="*$1*"
  done
}

# What needs the processors, while the tests under Wine mostly wait: at the lowest priority, the
# outputs and exit codes into logs.
background_checks() {
  trap - EXIT ERR
  renice -n 19 "$BASHPID" >/dev/null
  native_suites ''
  build native-fuzz
  local target
  for target in $(fuzz_targets); do
    echo "$target $(grep -qE 'reply|number|settings' <<<"$target" && echo 60 || echo 20)"
  done >"$BUILD/fuzz-plan"
  # Two at a time: the targets share nothing.
  xargs -a "$BUILD/fuzz-plan" -P "$JOBS" -n 2 "$ROOT/k7" fuzz-one || true
  # Without the path analysis, which takes most of the time; ./k7 tidy has it.
  recorded tidy tidy_check '-clang-analyzer-*'
}
# As a process group, so that all of it can be ended, or given back its share of the processors.
start_background_checks() {
  mkdir -p "$BUILD/logs"
  rm -f "$BUILD"/logs/*.code
  set -m
  background_checks >"$BUILD/logs/background.log" 2>&1 </dev/null &
  BACKGROUND=$!
  set +m
}
await_background_checks() {
  local code=0
  renice -n 0 -g "$BACKGROUND" >/dev/null 2>&1 || true  # only root may
  wait "$BACKGROUND" || code=$?
  BACKGROUND=
  [ "$code" -eq 0 ] || tail -60 "$BUILD/logs/background.log"
  # shellcheck disable=SC2046
  count_recorded "${NATIVE_SUITES[@]}" $(fuzz_targets) tidy
}

cmd_test() {
  local filter=${1:-} started=$SECONDS
  need "${PACKAGES_BUILD[@]}" "${PACKAGES_WINE[@]}" "${PACKAGES_PICTURE[@]}" "${PACKAGES_CHECK[@]}" "${PACKAGES_BROWSER[@]}"
  if [ -z "$filter" ]; then
    say "format and lint"
    lints
  fi
  build native k7sim k7_end_to_end_tests
  build windows-checked
  if [ -z "$filter" ]; then
    start_background_checks
  else
    native_suites "$filter"
    count_recorded "${NATIVE_SUITES[@]}"
  fi
  say "the simulator's page in a browser"
  check view python3 tests/simulator/view/page_test.py "$BUILD/native/bin/k7sim" "$filter"
  say "tests under Wine"
  wine_suite pure 1 "$BUILD/windows-checked/bin/k7_pure_tests.exe" "*$filter*"
  wine_suite module 5 "$BUILD/windows-checked/bin/k7_module_tests.exe" "*$filter*"
  wine_suite dialog 4 "$BUILD/windows-checked/bin/k7_dialog_tests.exe" "*$filter*"
  wine_suite host 4 "$BUILD/windows-checked/bin/k7_host_program_tests.exe" "*$filter*"
  if [ -z "$filter" ]; then
    say "binary interface"
    check abi tests/abi/run.sh "$BUILD/windows-checked"
  fi
  say "end to end"
  end_to_end "*$filter*"
  if [ -z "$filter" ]; then
    say "native tests under the sanitizers, fuzzing, clang-tidy"
    await_background_checks
    # Last, on a machine that does nothing else: to these ports a line that stops for 20 ms has ended.
    say "other kinds of ports"
    other_port_kinds
  fi
  say "done in $((SECONDS - started)) s${FAILURES[*]:+; failed: ${FAILURES[*]}}"
  echo "$PASSED passed, $FAILED failed, $SKIPPED skipped"
  [ "$FAILED" -eq 0 ] || exit 1
  [ $((PASSED)) -gt 0 ] || die "no test ran"
}
