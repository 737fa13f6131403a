#!/usr/bin/env bash
# Installs what a fresh Debian 12 machine lacks to build, test and run the
# program. Does nothing when everything is already there.
set -euo pipefail
packages=(g++ cmake ninja-build qt6-base-dev qt6-svg-dev libgl-dev fonts-liberation fonts-dejavu-core
          libbenchmark-dev desktop-file-utils appstream dpkg-dev file clang libclang-rt-14-dev poppler-utils)
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
  echo "Installing: ${missing[*]}"
  sudo_cmd=""
  [ "$(id -u)" -eq 0 ] || sudo_cmd="sudo"
  $sudo_cmd apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $sudo_cmd apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi
