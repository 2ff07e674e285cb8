#!/usr/bin/env bash
# Validates the installed desktop file and AppStream metainfo with the desktop's own tools;
# exits 77 (skipped) when neither tool is installed.   check_metadata.sh PREFIX APP_ID
set -euo pipefail
prefix=$1 id=$2
checked=0
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
