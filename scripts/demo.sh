#!/usr/bin/env bash
# Sets up, builds and runs the demo: the sample card library, a drawing with a batch of
# process cards and a parts list card made from the bill of materials, and pictures of
# it (demo.svg, demo.png) in ./tabulon-demo, or in the folder given.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
scripts/build.sh release
./build/src/apps/tabulon/tabulon demo "${1:-tabulon-demo}"
