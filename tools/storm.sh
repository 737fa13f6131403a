#!/usr/bin/env bash
# Runs the random-event storm for N events (default 100000) from a seed
# (default: a new one, printed), in the sanitizer build unless
# STORM_PRESET=release. A failure prints the seed and the event; the same
# two numbers replay it: tools/storm.sh <event+1> <seed>, with STORM_TRACE=1
# to list every event.
set -euo pipefail
cd "$(dirname "$0")/.."
events="${1:-100000}"
seed="${2:-$(date +%s)}"
preset="${STORM_PRESET:-sanitize}"
cmake --preset "$preset" >/dev/null
cmake --build --preset "$preset" --target storm
export QT_QPA_PLATFORM=offscreen
export ASAN_OPTIONS="${ASAN_OPTIONS:-detect_leaks=0:abort_on_error=1}"
export UBSAN_OPTIONS="${UBSAN_OPTIONS:-print_stacktrace=1:halt_on_error=1}"
exec "build/$preset/tests/storm/storm" "$events" "$seed"
