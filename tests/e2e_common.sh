# Shared by the end-to-end scripts, sourced with exe and work set: the script runs itself
# again under Xvfb (or exits 77, skipped, when a tool is missing), then in a home of its own.

fail() { echo "FAIL: $*" >&2; exit 1; }

if [ "${CURVIX_E2E_INNER:-}" != 1 ]; then
  for tool in xvfb-run xauth xdotool import convert compare; do
    command -v "$tool" >/dev/null || { echo "$tool is not installed; skipped"; exit 77; }
  done
  rm -rf "$work"
  mkdir -p "$work"
  CURVIX_E2E_INNER=1 exec xvfb-run -a -s "-screen 0 1280x1024x24 -nolisten tcp" \
    bash "$0" "$exe" "$work"
fi

# Under Xvfb from here on. The program keeps its settings and documents in the scratch folder.
export QT_QPA_PLATFORM=xcb
export HOME=$work/home XDG_CONFIG_HOME=$work/home/.config XDG_DATA_HOME=$work/home/.local/share
export XDG_RUNTIME_DIR=$work/runtime
mkdir -p "$HOME" "$XDG_CONFIG_HOME" "$XDG_DATA_HOME" "$XDG_RUNTIME_DIR"
chmod 700 "$XDG_RUNTIME_DIR"
