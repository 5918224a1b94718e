#!/usr/bin/env bash
# Builds the tree (installing what is missing) and runs the whole test suite.
# An optional argument picks the flavour: release (default), asan, or tsan, which runs the
# tests of the threaded parts.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
flavour="${1:-release}"
build="$("$root/scripts/build.sh" "$flavour")"
cd "$build"
labels=()
[ "$flavour" = tsan ] && labels=(--label-regex threaded)
# The window tests need an X server: the real one, or else one without a screen. It must not
# reset when its last client leaves, or a test that connects just then is refused.
xserver=()
[ -z "${DISPLAY:-}" ] && xserver=(xvfb-run -a -s "-screen 0 1280x1024x24 -noreset")
"${xserver[@]}" ctest --output-on-failure --parallel 2 --timeout 900 "${labels[@]}"
