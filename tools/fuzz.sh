#!/usr/bin/env bash
# Builds the libFuzzer targets (clang, AddressSanitizer + UndefinedBehaviorSanitizer)
# and runs each for the given number of seconds (default 60), starting from
# the seed corpus in fuzz/corpus. Inputs found to be new are kept in
# build/fuzz/corpus, the seeds are never changed. A crash or a broken promise
# stops with the input saved as build/fuzz/findings/<target>/crash-*, which
# replays with: build/fuzz/<target> <file>
# FUZZ_SEED fixes the random seed (CI runs with a fixed one).
set -euo pipefail
cd "$(dirname "$0")/.."
seconds="${1:-60}"
seed="${FUZZ_SEED:-0}"
cmake --preset fuzz >/dev/null
cmake --build --preset fuzz
targets=(fuzz_measurement_file fuzz_typed_number fuzz_data_grid fuzz_pupil_table)
total=0
for target in "${targets[@]}"; do
  work="build/fuzz/corpus/$target"
  findings="build/fuzz/findings/$target"
  mkdir -p "$work" "$findings"
  log="build/fuzz/$target.log"
  extra=()
  [ "$seed" != 0 ] && extra+=("-seed=$seed")
  # A file of 200 records is about 25 kB; tables and typed texts are far
  # smaller, but longer inputs are where the size limits are tested.
  if ! UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 ASAN_OPTIONS=detect_leaks=1 \
      "build/fuzz/$target" "$work" "fuzz/corpus/$target" -max_total_time="$seconds" -max_len=32768 \
      -print_final_stats=1 -artifact_prefix="$findings/" "${extra[@]}" >"$log" 2>&1; then
    tail -n 40 "$log"
    echo "FUZZ FAILURE in $target: see $log and $findings" >&2
    exit 1
  fi
  runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log" | tail -n 1)
  echo "$target: ${runs:-0} executions in ${seconds} s"
  total=$((total + ${runs:-0}))
done
echo "fuzz: $total executions in all"
