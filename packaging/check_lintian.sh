#!/usr/bin/env bash
# Runs lintian over the Debian package that packaging_deb made in DEB_DIR and fails on any
# error (an E: line); warnings are printed, not failed on. Exits 77 (skipped) without
# lintian.   check_lintian.sh DEB_DIR
set -euo pipefail
dir=$1
command -v lintian >/dev/null || { echo "lintian is not installed; skipped"; exit 77; }
debs=("$dir"/curvix_*.deb)
[ -f "${debs[0]}" ] || { echo "FAIL: no curvix_*.deb in $dir (packaging_deb makes it)" >&2; exit 1; }

# --info: the hints come with the reason, for whoever reads a failure. lintian's own exit
# status is not used: it depends on its fail-on setting, and the E: lines are what counts.
report=$(lintian --info --display-info "${debs[0]}" 2>&1) || true
echo "$report"
if grep -q '^E: ' <<<"$report"; then
  echo "FAIL: lintian reports $(grep -c '^E: ' <<<"$report") errors on $(basename "${debs[0]}")" >&2
  exit 1
fi
echo "lintian: no errors, $(grep -c '^W: ' <<<"$report" || true) warnings"
