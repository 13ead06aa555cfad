#!/usr/bin/env bash
# Configures and builds one flavour of the project.
#   scripts/build.sh [release|asan] [extra cmake args...]
set -euo pipefail
cd "$(dirname "$0")/.."
flavour=${1:-release}; shift || true
case "$flavour" in
  release) dir=build; args=(-DCMAKE_BUILD_TYPE=RelWithDebInfo) ;;
  asan)    dir=build-asan; args=(-DCMAKE_BUILD_TYPE=Debug -DTABULON_SANITIZE=ON -DTABULON_BENCH=OFF -DTABULON_PCH=ON) ;;
  *) echo "unknown flavour: $flavour" >&2; exit 2 ;;
esac
werror=OFF; [ "${CI:-}" = "true" ] && werror=ON
launcher=(); command -v ccache >/dev/null && launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache -DCMAKE_C_COMPILER_LAUNCHER=ccache)
cmake -S . -B "$dir" -G Ninja -DTABULON_WERROR=$werror "${args[@]}" "${launcher[@]}" "$@" >/dev/null
cmake --build "$dir" -j "$(nproc)"
