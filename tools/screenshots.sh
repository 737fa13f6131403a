#!/usr/bin/env bash
# Renders every screen to PNG, offscreen, at 100 % into OUT and at 200 %
# into OUT/2x, with the program as built in BUILD_DIR.
# tools/screenshots.sh [BUILD_DIR] [OUT]   (defaults: build/release, docs/screenshots)
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
build="${1:-$root/build/release}"
out="${2:-$root/docs/screenshots}"
program="$build/tools/screenshots/screenshots"
cmake --build "$build" --target screenshots >/dev/null
mkdir -p "$out/2x"
# The program keeps every window on its screen: the pictures' fixed sizes
# need a screen larger than they are, also at 200 %.
screen="$(mktemp)"
trap 'rm -f "$screen"' EXIT
echo '{"screens": [{"name": "shots", "x": 0, "y": 0, "width": 2600, "height": 2000}]}' >"$screen"
export QT_QPA_PLATFORM="offscreen:configfile=$screen" ASAN_OPTIONS="${ASAN_OPTIONS:-detect_leaks=0}"
# The offscreen platform's notes on what it cannot do are not news.
QT_SCALE_FACTOR=1 "$program" "$out" 2> >(grep -v 'does not support' >&2)
QT_SCALE_FACTOR=2 "$program" "$out/2x" 2> >(grep -v 'does not support' >&2)
ls "$out"/*.png | wc -l | xargs echo "screenshots written (each also at 200 %):"
