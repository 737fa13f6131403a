#!/usr/bin/env bash
# Installs the build into a fresh folder and checks what a desktop needs:
# the program, its menu entry, its AppStream record and its icons, each
# valid by the desktop's own validators.
# Also the release: one version from CMake in the program, the AppStream
# record, the changelog and the package; a free licence; Debian's copyright
# file and changelog.
# check_install.sh BUILD_DIR [package]
set -euo pipefail
build="$1"
version="$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$build/CMakeCache.txt")"
[ -n "$version" ] || { echo "no project version in $build/CMakeCache.txt"; exit 1; }
fail() { echo "$*"; exit 1; }
id=io.github.diathlasi.Refraction
prefix="$(mktemp -d)"
trap 'rm -rf "$prefix"' EXIT

cmake --install "$build" --prefix "$prefix/usr" >/dev/null
for f in bin/refraction \
         share/applications/$id.desktop \
         share/metainfo/$id.metainfo.xml \
         share/icons/hicolor/scalable/apps/$id.svg \
         share/icons/hicolor/48x48/apps/$id.png \
         share/icons/hicolor/256x256/apps/$id.png \
         share/doc/refraction/copyright \
         share/doc/refraction/changelog.gz \
         share/doc/refraction/README.md \
         share/doc/refraction/model.md \
         share/doc/refraction/help/bench.md \
         share/doc/refraction/lessons/index.md \
         share/doc/refraction/screenshots/bench.png; do
  [ -s "$prefix/usr/$f" ] || { echo "missing after install: $f"; exit 1; }
done
desktop="$prefix/usr/share/applications/$id.desktop"
metainfo="$prefix/usr/share/metainfo/$id.metainfo.xml"
doc="$prefix/usr/share/doc/refraction"
# Not even a hint: two main categories would list the program twice.
hints="$(desktop-file-validate "$desktop" 2>&1)" || fail "$hints"
[ -z "$hints" ] || fail "desktop entry: $hints"
grep -q '^Name\[el\]=' "$desktop"
appstreamcli validate --no-net "$metainfo"

# One version everywhere.
[ "$("$prefix/usr/bin/refraction" --version)" = "refraction $version" ] || fail "--version is not refraction $version"
[ "$("$prefix/usr/bin/refraction" --help | wc -l)" = 1 ] || fail "--help is not one line"
grep -q "<release version=\"$version\"" "$metainfo" || fail "AppStream has no release $version"
gzip -t "$doc/changelog.gz"
zcat "$doc/changelog.gz" | head -1 | grep -q "^refraction ($version) " || fail "changelog does not start with $version"
zcat "$doc/changelog.gz" | grep -q '^ -- .* <.*@.*>  [A-Z][a-z][a-z], ' || fail "changelog has no signed trailer"
# A free licence, named the same in the AppStream record and the copyright file.
grep -q '<project_license>GPL-3.0-or-later</project_license>' "$metainfo" || fail "AppStream licence"
head -1 "$doc/copyright" | grep -q '^Format: https://www.debian.org/doc/packaging-manuals/copyright-format/1.0/' \
  || fail "copyright file is not machine-readable"
grep -q '^License: GPL-3+$' "$doc/copyright" || fail "copyright names no licence"
if grep -rq 'localhost' "$doc/copyright" "$metainfo"; then fail "a maintainer address at localhost"; fi
# The guide's pictures are all there.
for picture in $(grep -o 'screenshots/[a-z_]*\.png' "$doc/README.md"); do
  [ -s "$doc/$picture" ] || fail "the guide shows a missing $picture"
done
# The pages link each other as they do in the help window.
for page in "$doc"/*.md "$doc"/help/*.md "$doc"/lessons/*.md; do
  for link in $(grep -o '](\.*/*[a-z_/]*\.md)' "$page" | sed 's/^](//; s/)$//'); do
    [ -s "$(dirname "$page")/$link" ] || fail "$(basename "$page") links to missing $link"
  done
done
# The installed pictures are the guide's, window for window as large as the
# ones in the source tree (not cut to a small rendering screen).
source_dir="$(sed -n 's/^CMAKE_HOME_DIRECTORY:INTERNAL=//p' "$build/CMakeCache.txt")"
for picture in "$doc"/screenshots/*.png; do
  kept="$source_dir/docs/screenshots/$(basename "$picture")"
  [ -s "$kept" ] || continue
  [ "$(file -b "$picture" | cut -d, -f2)" = "$(file -b "$kept" | cut -d, -f2)" ] \
    || fail "installed $(basename "$picture") is $(file -b "$picture" | cut -d, -f2), the guide's is $(file -b "$kept" | cut -d, -f2)"
done
# The AppStream record shows the guide's own pictures (their sizes are left
# out: the pictures are rendered anew with each build).
shown="$(grep -o '<image type="source">[^<]*</image>' "$metainfo" | grep -o 'screenshots/[a-z_]*\.png')"
[ -n "$shown" ] || fail "AppStream shows no picture"
for picture in $shown; do
  [ -s "$doc/$picture" ] || fail "AppStream shows a missing $picture"
done
echo "install layout: ok"

if [ "${2:-}" = package ]; then
  out="$prefix/package"
  mkdir -p "$out"
  (cd "$build" && cpack -G DEB -B "$out" >/dev/null)
  deb="$(ls "$out"/refraction_*.deb)"
  depends="$(dpkg-deb -f "$deb" Depends)"
  echo "Depends: $depends"
  # Worked out from the binary, not typed: the Qt libraries and the C++ runtime.
  echo "$depends" | grep -q 'libqt6widgets6' || { echo "Qt Widgets missing from the computed dependencies"; exit 1; }
  echo "$depends" | grep -q 'libstdc++6' || { echo "the C++ runtime missing from the computed dependencies"; exit 1; }
  [ "$(dpkg-deb -f "$deb" Version)" = "$version" ] || fail "package version is not $version"
  maintainer="$(dpkg-deb -f "$deb" Maintainer)"
  echo "$maintainer" | grep -q '^[^<]\+ <[^@>]\+@[^@>]\+>$' || fail "maintainer is not Name <address>: $maintainer"
  if echo "$maintainer" | grep -q localhost; then fail "maintainer at localhost"; fi
  dpkg-deb -c "$deb" > "$out/contents"
  grep -q "usr/share/doc/refraction/copyright" "$out/contents"
  grep -q "usr/share/doc/refraction/changelog.gz" "$out/contents"
  grep -q "usr/share/doc/refraction/screenshots/bench.png" "$out/contents"
  grep -q "usr/share/applications/$id.desktop" "$out/contents"
  grep -q "usr/bin/refraction" "$out/contents"
  echo "package: ok"
fi
