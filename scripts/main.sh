#!/usr/bin/env bash
# Builds the tree (installing what is missing) and runs the main job with the given arguments.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
build="$("$root/scripts/build.sh" release)"
exec "$build/bin/varnel4-info" "$@"
