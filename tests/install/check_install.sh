#!/usr/bin/env bash
# Installs the build into a fresh folder and checks what a desktop needs:
# the program, its menu entry, its AppStream record and its icons, each
# valid by the desktop's own validators.
# check_install.sh BUILD_DIR [package]
set -euo pipefail
build="$1"
id=io.github.diathlasi.Refraction
prefix="$(mktemp -d)"
trap 'rm -rf "$prefix"' EXIT

cmake --install "$build" --prefix "$prefix/usr" >/dev/null
for f in bin/refraction \
         share/applications/$id.desktop \
         share/metainfo/$id.metainfo.xml \
         share/icons/hicolor/scalable/apps/$id.svg \
         share/icons/hicolor/48x48/apps/$id.png \
         share/icons/hicolor/256x256/apps/$id.png; do
  [ -s "$prefix/usr/$f" ] || { echo "missing after install: $f"; exit 1; }
done
desktop-file-validate "$prefix/usr/share/applications/$id.desktop"
grep -q '^Categories=Education;Science;Physics;$' "$prefix/usr/share/applications/$id.desktop"
grep -q '^Name\[el\]=' "$prefix/usr/share/applications/$id.desktop"
appstreamcli validate --no-net "$prefix/usr/share/metainfo/$id.metainfo.xml"
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
  dpkg-deb -c "$deb" > "$out/contents"
  grep -q "usr/share/applications/$id.desktop" "$out/contents"
  grep -q "usr/bin/refraction" "$out/contents"
  echo "package: ok"
fi
