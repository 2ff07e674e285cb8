#!/usr/bin/env bash
# Validates the installed desktop file and AppStream metainfo with the desktop's own tools;
# exits 77 (skipped) when neither tool is installed. The metainfo's homepage and screenshots
# are checked without the tools: software centres show them, and `appstreamcli --no-net`
# cannot see a screenshot that was renamed.   check_metadata.sh PREFIX APP_ID SOURCE_DIR
set -euo pipefail
prefix=$1 id=$2 source=$3
checked=0
fail() { echo "FAIL: $*"; exit 1; }

metainfo=$prefix/share/metainfo/$id.metainfo.xml
homepage=$(sed -n 's#.*<url type="homepage">\(https://[^<]*\)</url>.*#\1#p' "$metainfo")
[ -n "$homepage" ] || fail "the metainfo has no https homepage"
mapfile -t shots < <(sed -n 's#.*<image>\([^<]*\)</image>.*#\1#p' "$metainfo")
[ "${#shots[@]}" -gt 0 ] || fail "the metainfo has no screenshots"
grep -q '<screenshot type="default">' "$metainfo" || fail "no screenshot is the default one"
for url in "${shots[@]}"; do
  [[ "$url" == "$homepage"/* ]] || fail "screenshot $url is not under $homepage"
  # Served from the repository: the path after raw/BRANCH/ is a file of the source tree.
  file=$(sed -E 's#^.*/raw/[^/]+/##' <<<"$url")
  [ -f "$source/$file" ] || fail "screenshot $url names $file, which the sources do not have"
done
echo "metainfo: homepage $homepage, ${#shots[@]} screenshots from the sources"
checked=1
if command -v desktop-file-validate >/dev/null; then
  desktop-file-validate "$prefix/share/applications/$id.desktop"
  checked=1
else
  echo "desktop-file-validate is not installed; the desktop file is not validated"
fi
if command -v appstreamcli >/dev/null; then
  appstreamcli validate --no-net --explain "$prefix/share/metainfo/$id.metainfo.xml"
  checked=1
else
  echo "appstreamcli is not installed; the metainfo is not validated"
fi
if command -v xmllint >/dev/null && [ -f /usr/share/mime/packages/freedesktop.org.xml ]; then
  # The type must be one update-mime-database reads: a well-formed shared-mime-info file.
  xmllint --noout "$prefix/share/mime/packages/$id.xml"
  mime=$(mktemp -d)
  mkdir -p "$mime/packages"
  cp "$prefix/share/mime/packages/$id.xml" "$mime/packages/"
  update-mime-database "$mime" >/dev/null 2>&1
  grep -q "application/x-curvix-drawing" "$mime/globs2" || { echo "FAIL: the MIME database has no Curvix drawing"; exit 1; }
  rm -rf "$mime"
  checked=1
fi
[ "$checked" = 1 ] || exit 77
