#!/usr/bin/env bash
# Builds the Debian package of the optimised build into build/package/.
# Install it with: apt-get install ./build/package/refraction_*.deb
set -euo pipefail
cd "$(dirname "$0")/.."
tools/setup.sh
cmake --preset release >/dev/null
cmake --build --preset release --target refraction icon_pngs changelog_gz guide_screenshots
mkdir -p build/package
(cd build/release && cpack -G DEB -B "$PWD/../package")
ls build/package/*.deb
