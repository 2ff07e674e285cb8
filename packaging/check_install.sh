#!/usr/bin/env bash
# `cmake --install` into a scratch root under the build folder, then checks the tree and
# runs the installed program.   check_install.sh BUILD_DIR ROOT APP_ID
set -euo pipefail
build=$1 root=$2 id=$3
. "$(dirname "$0")/installed_tree.sh"

rm -rf "$root"
DESTDIR=$root cmake --install "$build" --prefix /usr/local >/dev/null
check_tree "$root/usr/local" "$id" "$root/scratch"
echo "installed tree under $root is complete; its curvix exports"
