#!/usr/bin/env bash
# Builds the fuzz targets with clang (libFuzzer, ASan, UBSan) in build-fuzz/:
# the DXF reader's, run for SECONDS (default 60), and the template readers'
# (.tbl, .crd), run for TEMPLATE_SECONDS (default 25), each on a copy of its
# seed corpus. Fails when the fuzzer finds a crash, a leak or undefined
# behaviour.
# SEED (default 1) fixes the fuzzer's random choices, so that a run repeats
# exactly (what CI runs can be run here first); pass another seed, or 0 for a
# random one, to explore further.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds="${1:-60}"
seed="${2:-1}"
template_seconds="${TEMPLATE_SECONDS:-25}"
cxx="$(command -v clang++-14 || command -v clang++)"
cmake -S fuzz -B build-fuzz -G Ninja -DCMAKE_CXX_COMPILER="$cxx" -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build-fuzz --target dxf_reader_fuzz template_reader_fuzz -j"$(nproc)"
work="build-fuzz/run"
rm -rf "$work" && mkdir -p "$work/corpus" "$work/artifacts"
cp fuzz/corpus/* "$work/corpus/"
ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
  build-fuzz/dxf_reader_fuzz "$work/corpus" -max_total_time="$seconds" -max_len=65536 -timeout=20 \
  -rss_limit_mb=2048 -seed="$seed" -artifact_prefix="$work/artifacts/" -print_final_stats=1
echo "fuzz: no crash in ${seconds} s"

rm -rf "$work" && mkdir -p "$work/corpus" "$work/artifacts"
cp fuzz/corpus-templates/* "$work/corpus/"
ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
  build-fuzz/template_reader_fuzz "$work/corpus" -max_total_time="$template_seconds" -max_len=16384 -timeout=10 \
  -rss_limit_mb=2048 -seed="$seed" -artifact_prefix="$work/artifacts/" -print_final_stats=1
echo "fuzz: template readers, no crash in ${template_seconds} s"
