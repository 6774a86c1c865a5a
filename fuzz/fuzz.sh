# shellcheck shell=bash
# ./k7 fuzz, ./k7 fuzz-keep, and the fuzzing that is a part of ./k7 test. Sourced by ./k7.

# Starts from what runs before have found: fuzz/corpus. ./k7 fuzz-keep adds to it.
run_fuzz() {  # TARGET SECONDS
  local found=$BUILD/fuzz/$1 kept=$ROOT/fuzz/corpus/$1
  mkdir -p "$found" "$kept"
  (cd "$found" && "$BUILD/native-fuzz/bin/$1" -max_total_time="$2" -timeout=60 -print_final_stats=1 "$found" "$kept")
}

fuzz_targets() { (cd fuzz && ls -- *_fuzz.cpp) | sed 's/\.cpp$//'; }

cmd_fuzz() {
  need "${PACKAGES_BUILD[@]}" "${PACKAGES_CHECK[@]}"
  build native-fuzz
  local target
  for target in ${1:-$(fuzz_targets)}; do
    say "fuzzing $target"
    run_fuzz "$target" "${2:-60}"
  done
}

# Keeps of the inputs that fuzzing has found as few as reach all the code that they reach together.
cmd_fuzz_keep() {
  need "${PACKAGES_BUILD[@]}" "${PACKAGES_CHECK[@]}"
  build native-fuzz
  local target kept new
  for target in ${1:-$(fuzz_targets)}; do
    kept=$ROOT/fuzz/corpus/$target new=$BUILD/fuzz/kept/$target
    rm -rf "$new"
    mkdir -p "$new" "$kept" "$BUILD/fuzz/$target"
    "$BUILD/native-fuzz/bin/$target" -merge=1 "$new" "$kept" "$BUILD/fuzz/$target" >"$BUILD/logs/$target-merge.log" 2>&1
    rm -rf "$kept"
    cp -r "$new" "$kept"
    say "$target: $(find "$kept" -type f | wc -l) inputs, $(du -sh "$kept" | cut -f1)"
  done
}

cmd_fuzz_one() {  # TARGET SECONDS: for background_checks
  recorded "$1" run_fuzz "$1" "$2"
}
