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
[ "$checked" = 1 ] || exit 77
