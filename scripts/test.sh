#!/usr/bin/env bash
# Sets up, builds and runs every test; with --asan also under AddressSanitizer
# and UndefinedBehaviorSanitizer, with --fuzz also the DXF reader fuzz target.
set -euo pipefail
cd "$(dirname "$0")/.."
asan=0; fuzz=0
for a in "$@"; do
  case "$a" in --asan) asan=1 ;; --fuzz) fuzz=1 ;; --all) asan=1; fuzz=1 ;; esac
done
scripts/setup.sh
scripts/build.sh release
(cd build && ctest --output-on-failure -j "$(nproc)")
if [ $asan = 1 ]; then
  scripts/build.sh asan
  (cd build-asan && ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
     LSAN_OPTIONS=suppressions="$PWD/../scripts/lsan.supp" \
     ctest --output-on-failure -j "$(nproc)")
fi
if [ $fuzz = 1 ] && [ -x scripts/fuzz.sh ]; then
  TEMPLATE_SECONDS=20 EXCHANGE_SECONDS=20 scripts/fuzz.sh 45
fi
