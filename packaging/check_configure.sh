#!/usr/bin/env bash
# Configures the sources in a scratch folder as on a machine without Google Benchmark and
# muparser, with fuzzing asked for, and checks that the configure succeeds and leaves out
# just what needs them.   check_configure.sh SOURCE_DIR SCRATCH CXX_COMPILER
set -euo pipefail
source=$1 scratch=$2 cxx=$3
fail() { echo "FAIL: $*" >&2; exit 1; }

rm -rf "$scratch"
log=$scratch.log
cmake -S "$source" -B "$scratch" -G Ninja -DCMAKE_CXX_COMPILER="$cxx" -DCURVIX_FUZZ=ON \
  -DCMAKE_DISABLE_FIND_PACKAGE_benchmark=ON -DCMAKE_DISABLE_FIND_PACKAGE_muparser=ON >"$log" 2>&1 \
  || { cat "$log" >&2; fail "configuring without Google Benchmark and muparser failed"; }
cat "$log"

# Ninja has a build statement named after each target (the executable itself or a phony).
has() { grep -q "^build $1: " "$scratch/build.ninja"; }
for t in curvix curvix_manpage bench_symbolic bench_document; do
  has "$t" || fail "the configure has no target $t"
done
for t in bench_eval bench_redraw bench_points; do
  ! has "$t" || fail "$t is a target though its packages were not found"
done
grep -q 'Benchmarks: Google Benchmark (libbenchmark-dev) and muparser (libmuparser-dev) not found' "$log" \
  || fail "the configure does not say which benchmark packages are missing"

# Fuzzing: with a compiler that links libFuzzer the targets are there, without one they are
# not and a warning says what to install.
if grep -q '^CURVIX_HAVE_LIBFUZZER:INTERNAL=1$' "$scratch/CMakeCache.txt"; then
  has fuzz_evaluator || fail "libFuzzer works with $cxx, but there is no fuzz target"
else
  ! has fuzz_evaluator || fail "fuzz targets without a libFuzzer"
  grep -q 'libclang-rt-14-dev' "$log" || fail "no warning names the missing libFuzzer runtime"
fi
rm -rf "$scratch" "$log"
echo "configured without the optional packages"
