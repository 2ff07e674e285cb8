#!/usr/bin/env bash
# The real window, end to end: starts curvix under Xvfb with the xcb platform, types a
# function into the function box with xdotool, presses Return and checks the screen: the
# title, the menu bar, and the curve's pixels where sin x must be.
#
#   e2e_window.sh CURVIX_EXE WORK_DIR
#
# Exits 77 (skipped) when xvfb-run, xdotool or ImageMagick is missing (e2e_common.sh).
set -euo pipefail

exe=$1
work=$2

. "$(dirname "$0")/e2e_common.sh"

"$exe" >"$work/curvix.log" 2>&1 &
pid=$!
trap 'kill "$pid" 2>/dev/null || true; wait "$pid" 2>/dev/null || true' EXIT

window=$(timeout 10 xdotool search --sync --onlyvisible --name '^Curvix$' | head -n 1) \
  || { cat "$work/curvix.log" >&2; fail "no window named Curvix within 10 s"; }
[ "$(xdotool getwindowname "$window")" = Curvix ] || fail "the window's title is not Curvix"
eval "$(xdotool getwindowgeometry --shell "$window")"
crop="${WIDTH}x${HEIGHT}+${X}+${Y}"

# The window's picture as plain grey-level PGM (one number per pixel, 0 black, 255 white).
shoot() {
  import -window root "$work/$1.png"
  convert "$work/$1.png" -crop "$crop" +repage -colorspace Gray -depth 8 -compress none "$work/$1.pgm"
}

# Reads one or two PGM files and answers questions about them.
# analyse layout FILE          the menu bar, the axes and the scale, from a picture without curves
# analyse curve BEFORE AFTER   whether sin x is drawn in AFTER (needs OX OY XUNIT YUNIT)
analyse() {
  local mode=$1
  shift
  awk -v mode="$mode" -v ox="${OX:-0}" -v oy="${OY:-0}" -v xu="${XUNIT:-0}" -v yu="${YUNIT:-0}" '
    # Plain PGM: magic, width, height, maximum, then the values, over any number of lines.
    # The first file goes to a[], the second to b[], both indexed y * w + x.
    FNR == 1 { file++; n = 0 }
    {
      for (i = 1; i <= NF; i++) {
        if ($i ~ /^#/) break
        n++
        if (n == 2) w = $i + 0
        else if (n == 3) h = $i + 0
        else if (n >= 5) { if (file == 1) a[n - 5] = $i + 0; else b[n - 5] = $i + 0 }
      }
    }
    # Darkest pixel of the 3x3 square around (x, y) in b[] (or a[] when before is set): a
    # curve is one pixel wide, and a computed position may be off by one.
    function dark_near(before, x, y,   dx, dy, m, v, k) {
      m = 255
      for (dy = -1; dy <= 1; dy++) for (dx = -1; dx <= 1; dx++) {
        k = (int(y + 0.5) + dy) * w + int(x + 0.5) + dx
        v = before ? a[k] : b[k]
        if (v < m) m = v
      }
      return m
    }
    # Where the fifth grid line from the axis lies along a straight walk from (x, y) by
    # (dx, dy): grid lines are grey on white, the walk crosses nothing else.
    function fifth_line(x, y, dx, dy,   lines, last, v, step) {
      lines = 0; last = -10
      for (step = 2; step < 2000; step++) {
        x2 = x + dx * step; y2 = y + dy * step
        if (x2 < 0 || y2 < 0 || x2 >= w || y2 >= h) return 0
        v = a[y2 * w + x2]
        if (v < 235 && step > last + 1 && ++lines == 5) return step
        if (v < 235) last = step
      }
      return 0
    }
    END {
      if (mode == "layout") {
        # The menu bar: text pixels in the top strip.
        menu = 0
        for (k = 0; k < 24 * w; k++) if (a[k] < 100) menu++
        # The x axis is the row, the y axis the column, with the most black pixels below
        # the menu bar.
        for (y = 30; y < h; y++) for (x = 0; x < w; x++) if (a[y * w + x] < 60) { row[y]++; col[x]++ }
        best = 0
        for (y = 30; y < h; y++) if (row[y] > best) { best = row[y]; oy = y }
        axislen = best; best = 0
        for (x = 0; x < w; x++) if (col[x] > best) { best = col[x]; ox = x }
        # The view starts as -5..5 on both axes; the two scales may differ.
        printf "MENU=%d AXISLEN=%d OX=%d OY=%d XUNIT=%.3f YUNIT=%.3f\n", menu, axislen, ox, oy,
          fifth_line(ox, oy - 6, 1, 0) / 5, fifth_line(ox + 6, oy, 0, -1) / 5
      } else {
        # Points of sin x must be dark after Draw and light before; the mirrored points
        # (where -sin x would be) stay light; and many pixels of the plot changed.
        bad = ""
        n = split("1.5708 -1.5708 0.6 -2.5 2.3 4.6", xs, " ")
        for (i = 1; i <= n; i++) {
          wx = xs[i]; wy = sin(wx)
          sx = ox + wx * xu; sy = oy - wy * yu; my = oy + wy * yu
          if (dark_near(0, sx, sy) >= 100) bad = bad sprintf(" no curve at x=%s (%d,%d);", wx, sx, sy)
          if (dark_near(1, sx, sy) < 100) bad = bad sprintf(" dark before typing at x=%s;", wx)
          if (dark_near(0, sx, my) < 100) bad = bad sprintf(" a curve at the mirror of x=%s;", wx)
        }
        changed = 0
        for (y = int(oy - 5 * yu); y <= oy + 5 * yu; y++)
          for (x = int(ox - 5 * xu); x <= ox + 5 * xu; x++)
            if (a[y * w + x] != b[y * w + x]) changed++
        printf "CHANGED=%d\n", changed
        if (changed < 5 * xu) bad = bad " too few pixels changed in the plot;"
        if (bad != "") { print "PROBLEMS:" bad; exit 1 }
      }
    }' "$@"
}

# Both scales measured, at least 10 pixels per unit.
scaled() { awk -v x="$XUNIT" -v y="$YUNIT" 'BEGIN { exit !(x > 10 && y > 10) }'; }

# Wait until the first redraw has put the axes on the screen.
layout=""
for _ in $(seq 1 10); do
  shoot before
  layout=$(analyse layout "$work/before.pgm")
  eval "$layout"
  if [ "$AXISLEN" -gt 200 ] && scaled; then break; fi
  sleep 0.25
done
echo "window $crop: $layout"
[ "$MENU" -gt 40 ] || fail "no menu bar text in the top strip of the window"
[ "$AXISLEN" -gt 200 ] || fail "no x axis in the plot"
scaled || fail "no grid lines to measure the scale by"

# The function box has the focus when the window opens.
xdotool type --delay 15 'sin(x)'
xdotool key Return

for attempt in $(seq 1 6); do
  shoot after
  if result=$(analyse curve "$work/before.pgm" "$work/after.pgm"); then
    echo "$result"
    echo "sin x is drawn in the real window"
    exit 0
  fi
  [ "$attempt" = 6 ] || sleep 0.25
done
echo "$result" >&2
fail "the curve of sin x did not appear where it belongs"
