#!/usr/bin/env bash
# Installs every Debian package the project needs to build, test and benchmark.
# Idempotent and non-interactive; run as root (or with sudo available).
set -euo pipefail
PKGS=(
  cmake ninja-build g++ pkg-config git
  libgtest-dev libgmock-dev libbenchmark-dev
  libfreetype-dev libfontconfig-dev fonts-wqy-microhei
  libmuparser-dev libxlsxwriter-dev libfreexl-dev libzip-dev libpugixml-dev
  nlohmann-json3-dev libcli11-dev
  qt6-base-dev
  libboost-dev xvfb
  python3 python3-ezdxf python3-openpyxl python3-xlrd
  libdxflib-dev
  clang libclang-rt-14-dev
)
SUDO=""
if [ "$(id -u)" -ne 0 ]; then SUDO="sudo"; fi
missing=()
for p in "${PKGS[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
  echo "setup: installing ${missing[*]}"
  $SUDO env DEBIAN_FRONTEND=noninteractive apt-get update -qq
  $SUDO env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}"
else
  echo "setup: all packages present"
fi
