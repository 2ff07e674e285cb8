#!/usr/bin/env bash
# Style and static checks over the program's sources (app/ model/ plot/ eval/ output/):
#   clang-format   layout against .clang-format: the files that differ and by how many lines;
#                  reported, never a failure (the layout is reviewed, not enforced)
#   line length    lines over 100 columns (.clang-format keeps the author's breaks, so it
#                  does not wrap them); reported, never a failure
#   clang-tidy     the checks in .clang-tidy with BUILD/compile_commands.json; any finding
#                  fails the script
# The files over Giac (eval/symbolic_*.cpp but symbolic.cpp) are left to the compiler: Giac's
# headers would drown the findings.
#   scripts/lint.sh [BUILD]        BUILD defaults to build/ (configured here if need be)
set -euo pipefail
cd "$(dirname "$0")/.."
build="${1:-build}"
jobs=2
dirs=(app model plot eval output)
skip='^eval/symbolic_(cas|forms|identities|print|rules)\.cpp$'

./scripts/setup-debian.sh --dev

# Tracked and new files alike (not what .gitignore hides, such as build/).
mapfile -t sources < <(git ls-files --cached --others --exclude-standard "${dirs[@]}" | grep -E '\.(cpp|h)$')
mapfile -t units < <(printf '%s\n' "${sources[@]}" | grep -E '\.cpp$' | grep -Ev "$skip")

# --- layout -------------------------------------------------------------------------------
echo "== clang-format"
format_files=0
format_lines=0
total_lines=0
for f in "${sources[@]}"; do
  n=$(wc -l <"$f")
  total_lines=$((total_lines + n))
  changed=$(clang-format --style=file "$f" | diff "$f" - | grep -c '^<' || true)
  if [ "$changed" -gt 0 ]; then
    echo "  $f: $changed lines"
    format_files=$((format_files + 1))
    format_lines=$((format_lines + changed))
  fi
done
echo "clang-format: $format_files files, $format_lines of $total_lines lines laid out differently" \
  "(see: clang-format --style=file FILE | diff FILE -)"

echo "== lines over 100 columns"
# Characters, not bytes: the sources hold UTF-8 ("·", "√").
long=$(LC_ALL=C.UTF-8 grep -cE '^.{101,}' "${sources[@]}" | grep -v ':0$' || true)
[ -z "$long" ] || echo "$long" | sed 's/^/  /; s/:/: /; s/$/ lines/'
echo "line length: $(echo "$long" | awk -F: '{ n += $2 } END { print n + 0 }') lines over 100 columns" \
  "(see: grep -nE '^.{101,}' FILE)"

# --- clang-tidy ---------------------------------------------------------------------------
if [ ! -f "$build/compile_commands.json" ]; then
  echo "== configuring $build for its compile_commands.json"
  cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release >/dev/null
fi

echo "== clang-tidy (${#units[@]} files, $jobs at a time)"
logs=$(mktemp -d)
trap 'rm -rf "$logs"' EXIT
start=$SECONDS
# One log per file, so that the two runs do not interleave their output.
printf '%s\n' "${units[@]}" |
  xargs -P "$jobs" -I{} sh -c 'clang-tidy -p "$1" --quiet "$2" >"$3/$(echo "$2" | tr / _).log" 2>&1 || true' \
    sh "$build" {} "$logs"
# A header's finding comes once per file that includes it: each is listed once. A note at
# the finding's own place (the function's size against its threshold) joins its line.
findings=$(cat "$logs"/*.log | sed "s#^$PWD/##" | awk '
  match($0, /^[^ ]+:[0-9]+:[0-9]+: /) { place = substr($0, 1, RLENGTH) }
  /^[^ ]+:[0-9]+:[0-9]+: (warning|error): / { if (line != "") print line; line = $0; at = place; next }
  /^[^ ]+:[0-9]+:[0-9]+: note: / && place == at && line != "" { sub(/^[^ ]+:[0-9]+:[0-9]+: note: /, ""); line = line " (" $0 ")" }
  END { if (line != "") print line }' | sort -u)
if [ -n "$findings" ]; then
  echo "$findings" | sed 's/^/  /'
  echo "by check:"
  echo "$findings" | grep -oE '\[[a-z0-9.,-]+\]( \(.*\))?$' | sed 's/ (.*//' | sort | uniq -c | sort -rn | sed 's/^/  /'
fi
count=$(printf '%s' "$findings" | grep -c . || true)
echo "clang-tidy: $count findings in $((SECONDS - start)) s (details: clang-tidy -p $build FILE)"
[ "$count" -eq 0 ]
