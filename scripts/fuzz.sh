#!/usr/bin/env bash
# Builds the libFuzzer targets with clang in build-fuzz/ and runs each for SECONDS (default 30),
# starting from its seed corpus in fuzz/corpus/<target>/. New inputs go to
# build-fuzz/corpus/<target>/ (the committed seeds stay as they are); a crash, a sanitizer
# report, a broken property or a slow input stops the run with the input saved in
# build-fuzz/artifacts/.
#   scripts/fuzz.sh [SECONDS] [target...]
set -euo pipefail
cd "$(dirname "$0")/.."
seconds="${1:-30}"
shift || true
targets=("$@")
[ "${#targets[@]}" -gt 0 ] || targets=(fuzz_evaluator fuzz_prepare fuzz_formula_text fuzz_range fuzz_symbolic fuzz_drawing)

./scripts/setup-debian.sh --dev
CC=clang CXX=clang++ cmake -S . -B build-fuzz -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DCURVIX_FUZZ=ON -DCURVIX_BUILD_TESTS=OFF -DCURVIX_BUILD_BENCH=OFF >/dev/null
if ! grep -q '^CURVIX_HAVE_LIBFUZZER:INTERNAL=1$' build-fuzz/CMakeCache.txt; then
  echo "fuzz.sh: clang links no libFuzzer target in build-fuzz/ (clang, libclang-rt-14-dev)" >&2
  exit 1
fi
cmake --build build-fuzz --target "${targets[@]}"

export ASAN_OPTIONS="detect_leaks=1:halt_on_error=1"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
export LSAN_OPTIONS="suppressions=$PWD/scripts/lsan.supp:print_suppressions=0"
mkdir -p build-fuzz/artifacts
for t in "${targets[@]}"; do
  echo "== $t: ${seconds}s"
  mkdir -p "build-fuzz/corpus/$t"
  # -timeout: one input may take at most 2 s (inputs are at most 16 KiB, so only an evaluator
  # that is worse than linear in the text's length gets near it, even under the sanitizers).
  # -rss_limit_mb: no input may make the program hoard memory.
  log="build-fuzz/$t.log"
  status=0
  build-fuzz/fuzz/"$t" "build-fuzz/corpus/$t" "fuzz/corpus/$t" \
    -max_total_time="$seconds" -max_len=16384 -timeout=2 -rss_limit_mb=2048 \
    -artifact_prefix="build-fuzz/artifacts/$t-" -print_final_stats=1 >"$log" 2>&1 || status=$?
  if [ "$status" -ne 0 ]; then
    grep -v '^#[0-9]' "$log" | tail -n 60 >&2
    echo "fuzz.sh: $t failed (exit $status); the input is in build-fuzz/artifacts/" >&2
    exit 1
  fi
  grep -E '^(Done|stat::number_of_executed_units|stat::peak_rss_mb|INFO: seed corpus)' "$log" || true
done
echo "fuzz.sh: all targets ran ${seconds}s without a finding"
