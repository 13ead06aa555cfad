#!/usr/bin/env bash
# Sets up, builds and runs the demo: the sample card library, a drawing with a batch of
# process cards and a parts list card made from the bill of materials, and pictures of
# it (demo.svg, demo.png) in ./tabulon-demo, or in the folder given.
# Only the program is built, in a build folder of its own: no tests, no benchmarks.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
launcher=(); command -v ccache >/dev/null && launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache -DCMAKE_C_COMPILER_LAUNCHER=ccache)
cmake -S . -B build-demo -G Ninja -DCMAKE_BUILD_TYPE=Release -DTABULON_TESTS=OFF -DTABULON_BENCH=OFF \
      "${launcher[@]}" >/dev/null
cmake --build build-demo --target tabulon_cli -j "$(nproc)"
./build-demo/src/apps/tabulon/tabulon demo "${1:-tabulon-demo}"
