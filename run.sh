#!/usr/bin/env bash
# Installs what building and running need (scripts/setup-debian.sh), builds Curvix (Release)
# in build/ and starts it.
set -euo pipefail
cd "$(dirname "$0")"
./scripts/setup-debian.sh
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=Release >/dev/null
cmake --build build --target curvix
exec ./build/curvix "$@"
