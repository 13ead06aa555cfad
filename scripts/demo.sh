#!/usr/bin/env bash
# Sets up, builds and runs the main job on the built-in example.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
scripts/build.sh release
./build/src/apps/tabulon/tabulon info resources/examples/process_card_page.dxf
