#!/usr/bin/env bash
# Installs what is missing, then configures and builds one flavour of the tree:
#   release (default)  optimised with debug information, benchmarks included
#   asan               AddressSanitizer and UndefinedBehaviorSanitizer
#   tsan               ThreadSanitizer
# The build folder is build/<flavour>; its path is printed last.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
flavour="${1:-release}"

case "$flavour" in
  release) options=(-DVARNEL4_BUILD_BENCHMARKS=ON) ;;
  asan) options=(-DVARNEL4_BUILD_BENCHMARKS=OFF "-DVARNEL4_SANITIZE=address,undefined") ;;
  tsan) options=(-DVARNEL4_BUILD_BENCHMARKS=OFF -DVARNEL4_SANITIZE=thread) ;;
  *) echo "build.sh: unknown flavour '$flavour' (release, asan, tsan)" >&2; exit 2 ;;
esac

"$root/scripts/install-deps.sh" >&2
build="$root/build/$flavour"
export CCACHE_BASEDIR="$root" CCACHE_NOHASHDIR=1
cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo "${options[@]}" >&2
cmake --build "$build" >&2
echo "$build"
