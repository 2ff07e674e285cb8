#!/usr/bin/env bash
# Sets up a Debian machine, builds Curvix and runs the whole test suite through CTest, headless.
set -euo pipefail
cd "$(dirname "$0")"
./scripts/setup-debian.sh
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=Release >/dev/null
cmake --build build
export QT_QPA_PLATFORM=offscreen
cd build
ctest --output-on-failure --timeout 300 "$@"
