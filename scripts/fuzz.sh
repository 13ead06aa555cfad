#!/usr/bin/env bash
# Builds the fuzz targets with clang (libFuzzer, ASan, UBSan) in build-fuzz/ and runs
# them on copies of their seed corpora: the DXF reader for SECONDS (default 60), the
# template readers (.tbl, .crd) for TEMPLATE_SECONDS (default 25), then the .xlsx
# reader, the .xls reader and writer, and the exchange text for EXCHANGE_SECONDS each
# (default 30). Fails when a fuzzer finds a crash, a leak, a hang or undefined
# behaviour. SEED (default 1) fixes the fuzzers' random choices, so that a run repeats
# exactly (what CI runs can be run here first); pass another seed, or 0 for a random
# one, to explore further. Further arguments name the targets to run.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds="${1:-60}"
seed="${2:-1}"
template_seconds="${TEMPLATE_SECONDS:-25}"
exchange_seconds="${EXCHANGE_SECONDS:-30}"
shift $(( $# < 2 ? $# : 2 ))
targets=("$@")
[ ${#targets[@]} -gt 0 ] || targets=(dxf_reader_fuzz template_reader_fuzz xlsx_reader_fuzz xls_reader_fuzz exchange_text_fuzz)
cxx="$(command -v clang++-14 || command -v clang++)"
cmake -S fuzz -B build-fuzz -G Ninja -DCMAKE_CXX_COMPILER="$cxx" -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build-fuzz --target "${targets[@]}" -j"$(nproc)"

run() {  # target corpus seconds max_len
  local work="build-fuzz/run-$1"
  rm -rf "$work" && mkdir -p "$work/corpus" "$work/artifacts"
  cp "fuzz/$2"/* "$work/corpus/"
  ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
    "build-fuzz/$1" "$work/corpus" -max_total_time="$3" -max_len="$4" -timeout=20 \
    -rss_limit_mb=2048 -seed="$seed" -artifact_prefix="$work/artifacts/" -print_final_stats=1
  echo "fuzz: $1: no crash in $3 s"
}

for target in "${targets[@]}"; do
  case "$target" in
    dxf_reader_fuzz) run dxf_reader_fuzz corpus "$seconds" 65536 ;;
    template_reader_fuzz) run template_reader_fuzz corpus-templates "$template_seconds" 16384 ;;
    xlsx_reader_fuzz) run xlsx_reader_fuzz corpus_xlsx "$exchange_seconds" 65536 ;;
    xls_reader_fuzz) run xls_reader_fuzz corpus_xls "$exchange_seconds" 65536 ;;
    exchange_text_fuzz) run exchange_text_fuzz corpus_text "$exchange_seconds" 16384 ;;
    *) echo "fuzz: unknown target $target" >&2; exit 2 ;;
  esac
done
