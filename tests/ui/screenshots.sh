#!/bin/bash
# Takes a picture of every dialog in every layout. Needs Wine, ImageMagick and a display (DISPLAY).
# usage: screenshots.sh path/to/k7_screenshots.exe output-folder [part of the names]
set -eu
exe=$1
out=$2
mkdir -p "$out"
coproc shots { exec wine "$exe" "${@:3}" 2>/dev/null; }
while read -r -u "${shots[0]}" word name x y width height; do
  height=${height%$'\r'}
  [ "$word" = READY ] || break
  # Once more after the painting has settled: two pictures in a row are the same.
  previous=
  for _ in $(seq 50); do
    import -window root -crop "${width}x${height}+${x}+${y}" +repage "$out/$name.png"
    picture=$(convert "$out/$name.png" rgb:- | md5sum)
    [ "$picture" != "$previous" ] || break
    previous=$picture
    sleep 0.2
  done
  echo "$out/$name.png"
  echo next >&"${shots[1]}"
done
