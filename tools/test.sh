#!/usr/bin/env bash
# Set up, build and run every test: once in the optimised build and once
# under AddressSanitizer and UndefinedBehaviorSanitizer.
set -euo pipefail
cd "$(dirname "$0")/.."
tools/setup.sh
export QT_QPA_PLATFORM=offscreen
for preset in release sanitize; do
  echo "== $preset build"
  cmake --preset "$preset" >/dev/null
  cmake --build --preset "$preset"
  echo "== $preset tests"
  ctest --preset "$preset"
done
# Every reader of outside input under libFuzzer, a few seconds each from a
# fixed seed.
echo "== fuzz"
FUZZ_SEED=1 tools/fuzz.sh 5
