#!/usr/bin/env bash
# Installs the Debian packages that building, testing, benchmarking, fuzzing (clang and
# its sanitizer runtimes for libFuzzer) and the lint checks (clang-format, clang-tidy) of
# Curvix need.
# Only missing packages are installed, so a second run is quick.
set -euo pipefail

packages=(
  build-essential cmake ninja-build pkg-config
  qt6-base-dev qt6-base-dev-tools qt6-svg-dev libqt6svg6 qt6-image-formats-plugins
  libgl-dev
  libgiac-dev libgmp-dev libmpfr-dev libntl-dev
  libmuparser-dev libbenchmark-dev
  clang libclang-rt-14-dev
  clang-format clang-tidy
  xvfb xauth imagemagick xdotool
  dpkg-dev appstream desktop-file-utils shared-mime-info libxml2-utils
  fonts-dejavu-core
  locales
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q '^install ok installed$'; then
    missing+=("$p")
  fi
done

if [ "${#missing[@]}" -gt 0 ]; then
  echo "setup-debian: installing ${missing[*]}"
  if [ "$(id -u)" -eq 0 ]; then sudo=""; else sudo="sudo"; fi
  export DEBIAN_FRONTEND=noninteractive
  $sudo apt-get update -qq
  $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi

# The tests run under the Swedish locale as well (decimal comma).
if ! locale -a 2>/dev/null | grep -qi '^sv_SE\.utf8$'; then
  if [ "$(id -u)" -eq 0 ]; then sudo=""; else sudo="sudo"; fi
  $sudo sed -i 's/^# *\(sv_SE.UTF-8 UTF-8\)/\1/' /etc/locale.gen
  grep -q '^sv_SE.UTF-8 UTF-8' /etc/locale.gen || echo 'sv_SE.UTF-8 UTF-8' | $sudo tee -a /etc/locale.gen >/dev/null
  $sudo locale-gen >/dev/null
fi
