#!/usr/bin/env bash
# Set up, build and start the program.
set -euo pipefail
cd "$(dirname "$0")/.."
tools/setup.sh
cmake --preset release >/dev/null
cmake --build --preset release --target refraction
exec build/release/refraction "$@"
