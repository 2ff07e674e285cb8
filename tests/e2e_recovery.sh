#!/usr/bin/env bash
# Recovery after a crash, in the real window: draws a function, waits for the recovery
# file, kills the program with SIGKILL, starts it again, accepts the offer to restore, and
# checks that the plot is back pixel for pixel and that the recovery file is gone.
#
#   e2e_recovery.sh CURVIX_EXE WORK_DIR
#
# Exits 77 (skipped) when xvfb-run, xdotool or ImageMagick is missing (e2e_common.sh).
set -euo pipefail

exe=$1
work=$2

. "$(dirname "$0")/e2e_common.sh"
recovery=$XDG_DATA_HOME/Curvix/Curvix

start() {
  "$exe" >>"$work/curvix.log" 2>&1 &
  pid=$!
  window=$(timeout 10 xdotool search --sync --onlyvisible --name '^Curvix' | head -n 1) \
    || { cat "$work/curvix.log" >&2; fail "no window named Curvix within 10 s"; }
}
trap 'kill -9 "$pid" 2>/dev/null || true' EXIT

# The plot area of the window, as a picture.
shoot() {
  eval "$(xdotool getwindowgeometry --shell "$window")"
  import -window root -crop "$((WIDTH * 6 / 10))x$((HEIGHT * 7 / 10))+$X+$((Y + HEIGHT / 5))" +repage "$work/$1.png"
}

start
sleep 1
xdotool type --delay 15 'x^2-3'
xdotool key Return
for _ in $(seq 1 20); do
  ls "$recovery"/recovery-*.curvix >/dev/null 2>&1 && break
  sleep 0.25
done
ls "$recovery"/recovery-*.curvix >/dev/null 2>&1 || fail "no recovery file 5 s after a change"
grep -q 'x^2-3' "$recovery"/recovery-*.curvix || fail "the recovery file lacks the function"
shoot before
kill -9 "$pid"
wait "$pid" 2>/dev/null || true

start
# The question comes over the window; Return answers its default, Yes.
sleep 1.5
xdotool key Return
sleep 1
shoot after
differ=$(compare -metric AE "$work/before.png" "$work/after.png" "$work/diff.png" 2>&1 || true)
[ "$differ" = 0 ] || fail "the restored plot differs from the one before the crash in $differ pixels"
if ls "$recovery"/recovery-*.curvix >/dev/null 2>&1; then
  fail "the recovery file of the crashed run is still there"
fi
echo "the drawing came back after kill -9"
