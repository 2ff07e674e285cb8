#!/usr/bin/env bash
# Makes the Debian package with cpack, checks its control data and contents, unpacks it
# into a scratch root and runs the curvix in it.   check_deb.sh BUILD_DIR OUT VERSION APP_ID
set -euo pipefail
build=$1 out=$2 version=$3 id=$4
. "$(dirname "$0")/installed_tree.sh"

for tool in dpkg-deb dpkg-shlibdeps; do
  command -v "$tool" >/dev/null || { echo "$tool is not installed (dpkg-dev); skipped"; exit 77; }
done

rm -rf "$out"
mkdir -p "$out"
cpack -G DEB --config "$build/CPackConfig.cmake" -B "$out" >"$out/cpack.log" 2>&1 \
  || { cat "$out/cpack.log" >&2; fail "cpack -G DEB failed"; }
debs=("$out"/curvix_*.deb)
[ "${#debs[@]}" = 1 ] && [ -f "${debs[0]}" ] || fail "cpack made no single curvix_*.deb in $out"
deb=${debs[0]}

info=$(dpkg-deb -f "$deb" Package Version Section Maintainer Depends)
echo "$info"
field() { dpkg-deb -f "$deb" "$1"; }
[ "$(field Package)" = curvix ] || fail "the package is not named curvix"
[ "$(field Version)" = "$version" ] || fail "the package version is not $version"
[ "$(field Section)" = math ] || fail "the package is not in section math"
[ "$(field Maintainer)" = "The Curvix developers" ] || fail "wrong maintainer"
depends=$(field Depends)
for needed in libqt6core6 libqt6gui6 libqt6widgets6 libqt6svg6 libgiac fonts-dejavu-core qt6-qpa-plugins; do
  [[ "$depends" == *"$needed"* ]] || fail "Depends does not mention $needed: $depends"
done

contents=$(dpkg-deb -c "$deb" | awk '{ print $NF }')
for path in ./usr/bin/curvix ./usr/share/applications/$id.desktop ./usr/share/metainfo/$id.metainfo.xml \
            ./usr/share/icons/hicolor/256x256/apps/$id.png ./usr/share/icons/hicolor/scalable/apps/$id.svg; do
  grep -qxF "$path" <<<"$contents" || fail "the package does not hold $path"
done

dpkg-deb -x "$deb" "$out/root"
check_tree "$out/root/usr" "$id" "$out/root/scratch"
echo "$(basename "$deb") is complete; its curvix exports"
