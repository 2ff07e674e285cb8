#!/usr/bin/env bash
# Sets up a Debian machine with the tools of the checks (scripts/setup-debian.sh --dev), builds
# Curvix and runs the whole test suite through CTest, headless.
#   ./test.sh [ctest arguments]             Release build in build/
#   ./test.sh --sanitize [ctest arguments]  AddressSanitizer + UBSan build in build-sanitize/;
#                                           any sanitizer report fails the test that made it
set -euo pipefail
cd "$(dirname "$0")"
./scripts/setup-debian.sh --dev

if [ "${1:-}" = "--sanitize" ]; then
  shift
  dir=build-sanitize
  cmake -S . -B "$dir" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCURVIX_SANITIZE=ON \
    -DCURVIX_BUILD_BENCH=OFF >/dev/null
  supp="$PWD/scripts/lsan.supp"
  # intercept_strndup=0: libxkbcommon-x11 (the xcb window test) strndup()s counted, unterminated
  # buffers, which the interceptor reads as C strings.
  export ASAN_OPTIONS="detect_leaks=1:halt_on_error=1:exitcode=23:detect_stack_use_after_return=1:check_initialization_order=1:intercept_strndup=0"
  export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1:exitcode=24"
  export LSAN_OPTIONS="suppressions=$supp:print_suppressions=0"
else
  dir=build
  cmake -S . -B "$dir" -G Ninja -DCMAKE_BUILD_TYPE=Release >/dev/null
fi
cmake --build "$dir"
export QT_QPA_PLATFORM=offscreen
cd "$dir"
ctest --output-on-failure --timeout 300 "$@"
