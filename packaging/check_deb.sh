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
[[ "$(field Maintainer)" =~ ^[^\<]+\ \<[^@\ ]+@[^@\ ]+\>$ ]] || fail "the maintainer is not 'Name <address>'"
[ "$(field Priority)" = optional ] || fail "the package's priority is not optional"
depends=$(field Depends)
for needed in libqt6core6 libqt6gui6 libqt6widgets6 libqt6svg6 libgiac fonts-dejavu-core qt6-qpa-plugins; do
  [[ "$depends" == *"$needed"* ]] || fail "Depends does not mention $needed: $depends"
done

contents=$(dpkg-deb -c "$deb" | awk '{ print $NF }')
for path in ./usr/bin/curvix ./usr/share/applications/$id.desktop ./usr/share/metainfo/$id.metainfo.xml \
            ./usr/share/icons/hicolor/256x256/apps/$id.png ./usr/share/icons/hicolor/scalable/apps/$id.svg \
            ./usr/share/man/man1/curvix.1.gz ./usr/share/doc/curvix/copyright ./usr/share/doc/curvix/changelog.gz; do
  grep -qxF "$path" <<<"$contents" || fail "the package does not hold $path"
done

dpkg-deb -x "$deb" "$out/root"
doc=$out/root/usr/share/doc/curvix
head -n 1 "$doc/copyright" | grep -q '^Format: https://www.debian.org/doc/packaging-manuals/copyright-format/1.0/' \
  || fail "the copyright file is not in the machine-readable format"
grep -q '^License: GPL-3.0-or-later$' "$doc/copyright" || fail "the copyright file names another licence"
# The newest changelog entry is this version: a version raised without an entry is caught.
top=$(gzip -dc "$doc/changelog.gz" | head -n 1)
[[ "$top" == "curvix ($version) "* ]] || fail "the changelog's newest entry is not $version: $top"
# ... and it carries the release date the AppStream metadata gives.
signed=$(gzip -dc "$doc/changelog.gz" | sed -n 's/^ -- .*>  //p' | head -n 1)
released=$(sed -n "s/.*<release version=\"$version\" date=\"\([0-9-]*\)\".*/\1/p" \
  "$out/root/usr/share/metainfo/$id.metainfo.xml")
[ "$(date -u -d "$signed" +%F)" = "$released" ] \
  || fail "the changelog dates $version $signed, the metainfo $released"
man=$(gzip -dc "$out/root/usr/share/man/man1/curvix.1.gz")
grep -q '^\.TH CURVIX "1"' <<<"$man" || fail "curvix.1 is not a section 1 manual page"
# grep reads the whole page: a grep -q that stops early would break the pipe under pipefail.
sed 's/\\-/-/g' <<<"$man" | grep -F -- '--export' >/dev/null || fail "curvix.1 does not hold the options of --help"
grep -q "^\.TH .*\"Curvix $version\"" <<<"$man" || fail "curvix.1 is not for version $version"
check_tree "$out/root/usr" "$id" "$out/root/scratch"
echo "$(basename "$deb") is complete; its curvix exports"
