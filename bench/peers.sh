# shellcheck shell=bash
# ./k7 bench peers: senders that nobody here wrote stream a G-code file to the simulated controller.
# Sourced by bench.sh.

readonly CNCJS_VERSION=1.11.5

bench_peers() {
  need printcore
  command -v npm >/dev/null || need nodejs npm
  build native k7sim
  local folder=$BUILD/peers
  mkdir -p "$folder"
  if [ "$(cat "$folder/installed" 2>/dev/null)" != "$CNCJS_VERSION" ]; then
    say "installing cncjs $CNCJS_VERSION from the npm registry into build/peers"
    echo '{"private": true}' >"$folder/package.json"
    (cd "$folder" && npm install --no-audit --no-fund "cncjs@$CNCJS_VERSION") >"$folder/install.log" 2>&1 ||
      { tail -5 "$folder/install.log" >&2; die "could not install cncjs ($folder/install.log)"; }
    echo "$CNCJS_VERSION" >"$folder/installed"
  fi
  say "streaming 2,000 lines"
  node "$ROOT/bench/peers.js" "$BUILD/native/bin/k7sim" "$folder"
}
