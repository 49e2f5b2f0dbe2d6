#!/usr/bin/env bash
# Makes docs/pictures/song-change.gif: timecode starts the next song, on the live screen (left) and on
# the stage (right). It takes the release build's gallery, and ImageMagick.
set -euo pipefail

cd "$(dirname "$0")/../.."
frames=$(mktemp -d)
trap 'rm -rf "$frames"' EXIT
QT_QPA_PLATFORM=offscreen QT_QUICK_BACKEND=software build/release/bin/gallery "$frames" film
for second in {0..9}; do
    convert "$frames/live-$second.png" "$frames/stage-$second.png" +append -resize 1200x +repage \
        "$frames/both-$second.png"
done
convert -delay 100 -loop 0 "$frames"/both-?.png -layers optimize docs/pictures/song-change.gif
