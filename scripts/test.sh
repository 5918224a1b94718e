#!/usr/bin/env bash
# Builds the tree (installing what is missing) and runs the whole test suite.
# An optional argument picks the flavour: release (default), asan or tsan.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
build="$("$root/scripts/build.sh" "${1:-release}")"
cd "$build"
ctest --output-on-failure --parallel 2 --timeout 600
