# Checks shared by the install and the package tests: an installed tree under PREFIX has
# every file a desktop looks for, and its curvix draws a picture. Sourced, not run.

fail() { echo "FAIL: $*" >&2; exit 1; }

# Prints "WIDTH HEIGHT" of a PNG file (from its IHDR chunk), or fails if it is no PNG.
png_size() {
  local sig
  sig=$(od -An -tx1 -N8 "$1" | tr -d ' \n')
  [ "$sig" = "89504e470d0a1a0a" ] || fail "$1 is not a PNG file"
  od -An -tu1 -j16 -N8 "$1" | awk '{ printf "%d %d\n", $1*16777216+$2*65536+$3*256+$4, $5*16777216+$6*65536+$7*256+$8 }'
}

# check_tree PREFIX APP_ID SCRATCH
check_tree() {
  local prefix=$1 id=$2 scratch=$3
  local exe=$prefix/bin/curvix
  local desktop=$prefix/share/applications/$id.desktop
  local metainfo=$prefix/share/metainfo/$id.metainfo.xml
  [ -x "$exe" ] || fail "no executable at $exe"
  [ -f "$desktop" ] || fail "no desktop file at $desktop"
  [ -f "$metainfo" ] || fail "no metainfo at $metainfo"

  # The desktop file must name what was installed: the program and the icon.
  grep -qx "Exec=curvix %f" "$desktop" || fail "the desktop file does not start curvix with a file"
  grep -qx "MimeType=application/x-curvix-drawing;" "$desktop" || fail "the desktop file opens no drawings"
  local mime=$prefix/share/mime/packages/$id.xml
  [ -f "$mime" ] || fail "no MIME type at $mime"
  grep -q '<glob pattern="\*.curvix"/>' "$mime" || fail "the MIME type does not match *.curvix"
  grep -qx "Icon=$id" "$desktop" || fail "the desktop file names another icon"
  grep -q "<launchable type=\"desktop-id\">$id.desktop</launchable>" "$metainfo" \
    || fail "the metainfo does not launch $id.desktop"

  local side size
  for side in 16 32 48 64 128 256; do
    local icon=$prefix/share/icons/hicolor/${side}x${side}/apps/$id.png
    [ -f "$icon" ] || fail "no ${side}x${side} icon"
    size=$(png_size "$icon")
    [ "$size" = "$side $side" ] || fail "the ${side}x${side} icon is $size"
  done
  local svg=$prefix/share/icons/hicolor/scalable/apps/$id.svg
  [ -f "$svg" ] || fail "no scalable icon"
  grep -q "<svg" "$svg" || fail "the scalable icon is no SVG"
  grep -q "<path" "$svg" || fail "the scalable icon has no drawing in it"

  # The installed program, not the one in the build folder, draws the picture.
  mkdir -p "$scratch"
  local out=$scratch/out.png
  rm -f "$out"
  (cd "$scratch" && "$exe" --export out.png --size 320x240 "sin(x)") \
    || fail "the installed curvix --export failed"
  [ -f "$out" ] || fail "the installed curvix wrote no picture"
  size=$(png_size "$out")
  [ "$size" = "320 240" ] || fail "the exported picture is $size, not 320 240"
}
