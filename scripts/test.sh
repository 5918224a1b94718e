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
ctest --output-on-failure --parallel 2 --timeout 900 "${labels[@]}"
