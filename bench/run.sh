#!/usr/bin/env bash
# Builds a benchmark (Release) and runs it, printing its table of ratios.
#   bench/run.sh eval|redraw [Google Benchmark options]
#   bench/run.sh symbolic [--rounds N] [--list]
#   bench/run.sh document [--rounds N]
#   bench/run.sh points [Google Benchmark options]
#   bench/run.sh interact [--turns N]
#   bench/run.sh startup [--runs N]
# The build directory is build/ beside the sources, or $BUILD_DIR.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
build="${BUILD_DIR:-$root/build}"

usage() {
  echo "usage: bench/run.sh eval|redraw|symbolic|document|points|interact|startup [benchmark options]" >&2
  exit 2
}

# Configures (Release, Ninja for a new directory) and builds one target. Google Benchmark
# and muparser come with the developer set-up.
build_target() {
  "$root/scripts/setup-debian.sh" --dev
  if [ -f "$build/CMakeCache.txt" ]; then
    cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=Release >/dev/null
  else
    cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release >/dev/null
  fi
  local log
  if ! log="$(cmake --build "$build" --target "$1" 2>&1)"; then
    echo "$log" >&2
    exit 1
  fi
}

[ $# -ge 1 ] || usage
what="$1"
shift

case "$what" in
  eval)
    build_target bench_eval
    # The fastest of ten repetitions run in random order, so that other work on the machine
    # slows every method alike.
    "$build/bench/bench_eval" --benchmark_repetitions=10 --benchmark_enable_random_interleaving=true \
      --benchmark_display_aggregates_only=true --benchmark_min_time=0.05 "$@"
    ;;
  redraw)
    build_target bench_redraw
    "$build/bench/bench_redraw" --benchmark_repetitions=15 --benchmark_display_aggregates_only=true \
      --benchmark_min_time=0.05 "$@"
    ;;
  symbolic)
    build_target bench_symbolic
    # Ends with: symbolic median ms = X, max ms = Y, pass = P/N, longer than reference = L
    "$build/bench/bench_symbolic" "$@"
    ;;
  document)
    build_target bench_document
    # Ends with: open and draw 50 functions median ms = X / save 50 functions median ms = Y
    QT_QPA_PLATFORM="${QT_QPA_PLATFORM:-offscreen}" "$build/bench/bench_document" "$@"
    ;;
  points)
    build_target bench_points
    # Ends with: points of interest 10 curves median ms = X
    "$build/bench/bench_points" --benchmark_repetitions=15 --benchmark_display_aggregates_only=true \
      --benchmark_min_time=0.05 "$@"
    ;;
  interact)
    build_target bench_interact
    # Ends with: wheel zoom frame 50 curves p95 ms = Z ... peak memory 50 curves MB = M
    QT_QPA_PLATFORM="${QT_QPA_PLATFORM:-offscreen}" "$build/bench/bench_interact" "$@"
    ;;
  startup)
    build_target curvix
    runs=15
    if [ "${1:-}" = "--runs" ] && [ -n "${2:-}" ]; then
      runs="$2"
    fi
    # The window, offscreen, each run in a fresh home (no settings, no recovery), quitting once
    # its first frame is painted; the program tells the time from its process start.
    times=()
    for ((i = 0; i < runs; i++)); do
      home="$(mktemp -d)"
      line="$(HOME="$home" XDG_CONFIG_HOME="$home/config" XDG_DATA_HOME="$home/data" \
        QT_QPA_PLATFORM="${QT_QPA_PLATFORM:-offscreen}" "$build/curvix" --quit-after-first-frame 2>/dev/null)"
      rm -rf "$home"
      times+=("${line##*= }")
    done
    echo "start to first frame ms: ${times[*]}"
    printf '%s\n' "${times[@]}" | sort -g | awk '{ v[NR] = $1 } END {
      printf "start to first frame median ms = %s\n", v[int((NR + 1) / 2)] }'
    ;;
  *)
    usage
    ;;
esac
