# shellcheck shell=bash
# ./k7 demo: the sample plate, from the host's command line to the picture of what was cut.
# Sourced by ./k7, which has built everything and started a display and a Wine prefix.

readonly DEMO_ID=K7DEMONSTRATION1

# Waits for Enter; goes on at once when there is nobody to press it.
wait_for_enter() {
  printf '%s\n' "$1"
  read -r || true
}

demo() {  # [--watch]
  local view=()
  [ "${1:-}" != --watch ] || view=(--view 0)
  local out=$BUILD/demo code=0 started=$SECONDS
  mkdir -p "$out"
  rm -f "$out"/*
  # The machine's settings as the dialogs write them, lengths and speeds as single-precision bit
  # patterns: table home at 1 and 1 inch, cutter home 1 inch, depth 0.03 inch in passes of 0.01 inch,
  # fast axes, all four switches, probe once a job, a spindle.
  local settings="$WINEPREFIX/drive_c/ProgramData/Penfold Hatch/Veltrana/Controllers"
  mkdir -p "$settings"
  cp "$ROOT/host/demo.ini" "$settings/$DEMO_ID.ini"
  start_simulator --id "$DEMO_ID" --speed "${K7_DEMO_SPEED:-25}" --table 7,4.5,2 --table-home 1,1 --surface plane:1.2 \
    --position 6,4,0.3 --picture "$out/engraving.svg" --transcript "$out/transcript.txt" \
    --report "$out/report.json" "${view[@]}"
  if [ ${#view[@]} -gt 0 ]; then
    until grep -qx ready "$out/k7sim.log"; do
      kill -0 "$SIMULATOR_PID" 2>/dev/null || { cat "$out/k7sim.log" >&2; die "k7sim did not start"; }
      sleep 0.05
    done
    say "the machine is to be seen at $(sed -n 's/^view //p' "$out/k7sim.log")"
    wait_for_enter "Open it in a browser, then press Enter to start."
  fi
  say "the controllers that the host finds"
  wine "$BUILD/windows/bin/k7host.exe" list --ports </dev/null || code=$?
  say "engraving host/samples/plate.plt: home, probe, three passes"
  wine "$BUILD/windows/bin/k7host.exe" engrave "Z:$ROOT/host/samples/plate.plt" --id "$DEMO_ID" \
    --home </dev/null || code=$?
  [ ${#view[@]} -eq 0 ] || wait_for_enter "Press Enter to end the simulator."
  kill -TERM "$SIMULATOR_PID" 2>/dev/null || true  # the page may have ended it
  wait "$SIMULATOR_PID" || code=$?
  SIMULATOR_PID=
  tail -n 3 "$out/k7sim.log"  # what the machine says of it
  [ "$code" -eq 0 ] || die "the demonstration failed, exit code $code (build/demo)"
  rsvg-convert -w 2000 "$out/engraving.svg" -o "$out/engraving.png"
  say "done in $((SECONDS - started)) s: build/demo/engraving.png (picture), transcript.txt, report.json"
}
