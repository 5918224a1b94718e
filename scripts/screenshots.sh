#!/usr/bin/env bash
# Pictures of the editor as a user sees it: varnel4-edit on the display in DISPLAY (else on a
# virtual X server of its own), its window written as PNG files into a folder (docs/screenshots
# by default). With --idle SECONDS it then measures what the open editor costs while nothing
# changes, as a share of one core.
#   scripts/screenshots.sh [--idle SECONDS] [FOLDER]
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
idle=0
folder="$root/docs/screenshots"
while [ $# -gt 0 ]; do
  case "$1" in
    --idle) idle="${2:-}"; shift 2 ;;
    -*) echo "screenshots.sh: unknown option $1" >&2; exit 2 ;;
    *) folder="$1"; shift ;;
  esac
done
case "$idle" in ''|*[!0-9]*) echo "screenshots.sh: --idle needs whole seconds" >&2; exit 2 ;; esac

if [ -z "${DISPLAY:-}" ]; then
  "$root/scripts/install-deps.sh" >&2
  exec xvfb-run -a -s "-screen 0 1280x1024x24" "$0" --idle "$idle" "$folder"
fi

build="$("$root/scripts/build.sh" release)"
mkdir -p "$folder"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
"$build/bin/varnel4-edit" "$work/state.chunk" > "$work/edit.log" 2>&1 &
editor=$!
"$build/bin/v4_window_shot" "Varnel4 Lin Phase EQ" "$folder/editor.png"
echo "screenshots.sh: $folder/editor.png"

if [ "$idle" -gt 0 ]; then
  # utime and stime of /proc/PID/stat, in clock ticks.
  ticks() { awk '{print $14 + $15}' "/proc/$editor/stat"; }
  before="$(ticks)"
  sleep "$idle"
  after="$(ticks)"
  awk -v t=$((after - before)) -v hz="$(getconf CLK_TCK)" -v s="$idle" \
    'BEGIN { printf "screenshots.sh: the open editor took %.2f%% of one core over %d s of idle\n", 100 * t / hz / s, s }'
fi
kill -TERM "$editor"
wait "$editor"
