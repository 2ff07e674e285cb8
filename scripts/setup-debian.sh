#!/usr/bin/env bash
# Installs the Debian packages Curvix needs, with apt-get (as root or through sudo).
#   scripts/setup-debian.sh         what building and running need (./run.sh): the compiler,
#                                   Qt 6 with its translation tools and its own translations,
#                                   Giac, help2man for the manual page, the plot's font
#   scripts/setup-debian.sh --dev   also what the checks need (./test.sh, .ci/run, scripts/lint.sh,
#                                   scripts/fuzz.sh, bench/): Xvfb and xdotool for the window
#                                   tests, the desktop-file and AppStream validators and lintian
#                                   for the packaging tests, clang with libFuzzer, clang-format,
#                                   clang-tidy, Google Benchmark, muparser, the Swedish locale
# Only missing packages are installed, so a second run is quick.
set -euo pipefail

usage() {
  echo "usage: scripts/setup-debian.sh [--dev]" >&2
  exit 2
}
dev=0
case "${1:-}" in
  "") ;;
  --dev) dev=1 ;;
  *) usage ;;
esac
[ $# -le 1 ] || usage

packages=(
  build-essential cmake ninja-build pkg-config
  qt6-base-dev qt6-base-dev-tools qt6-svg-dev libqt6svg6 libgl-dev
  qt6-tools-dev qt6-l10n-tools
  qt6-qpa-plugins qt6-image-formats-plugins qt6-translations-l10n
  libgiac-dev libgmp-dev libmpfr-dev libntl-dev
  libsleef-dev
  help2man
  fonts-dejavu-core
)
dev_packages=(
  xvfb xauth imagemagick xdotool locales
  dpkg-dev appstream desktop-file-utils shared-mime-info libxml2-utils lintian
  poppler-utils
  clang libclang-rt-14-dev clang-format clang-tidy
  libbenchmark-dev libmuparser-dev
)
[ "$dev" = 0 ] || packages+=("${dev_packages[@]}")

if [ "$(id -u)" -eq 0 ]; then sudo=""; else sudo="sudo"; fi

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q '^install ok installed$'; then
    missing+=("$p")
  fi
done

if [ "${#missing[@]}" -gt 0 ]; then
  echo "setup-debian: installing ${missing[*]}"
  export DEBIAN_FRONTEND=noninteractive
  $sudo apt-get update -qq
  $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi

# The tests run under the Swedish locale as well (decimal comma).
if [ "$dev" = 1 ] && ! locale -a 2>/dev/null | grep -qi '^sv_SE\.utf8$'; then
  $sudo sed -i 's/^# *\(sv_SE.UTF-8 UTF-8\)/\1/' /etc/locale.gen
  grep -q '^sv_SE.UTF-8 UTF-8' /etc/locale.gen || echo 'sv_SE.UTF-8 UTF-8' | $sudo tee -a /etc/locale.gen >/dev/null
  $sudo locale-gen >/dev/null
fi
