#!/usr/bin/env bash
# Builds the tree (installing what is missing) and runs the main job, the offline renderer, with
# the given arguments. With none it renders the built-in demo into varnel4-demo.wav here.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
build="$("$root/scripts/build.sh" release)"
exec "$build/bin/varnel4-render" "$@"
