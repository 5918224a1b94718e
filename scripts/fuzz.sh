#!/usr/bin/env bash
# Builds the libFuzzer binaries with clang, AddressSanitizer and UndefinedBehaviorSanitizer, and
# runs each on a copy of its seeds for a while. An input that breaks a target is kept in
# build/fuzz/findings/<target>/ and fails the run; it belongs in tests/fuzz/regressions/<target>/
# once fixed, where every test run replays it.
#   scripts/fuzz.sh [seconds per target, default 60]
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
seconds="${1:-60}"
case "$seconds" in
  ''|*[!0-9]*) echo "fuzz.sh: seconds per target must be a number, not '$seconds'" >&2; exit 2 ;;
esac

"$root/scripts/install-deps.sh" >&2
build="$root/build/fuzz"
export CCACHE_BASEDIR="$root" CCACHE_NOHASHDIR=1
CC=clang CXX=clang++ cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DVARNEL4_BUILD_BENCHMARKS=OFF -DVARNEL4_SANITIZE=address,undefined -DVARNEL4_FUZZ=ON >&2
targets=(chunk image pack preset registry render-arguments)
cmake --build "$build" --target $(printf 'v4_fuzz_%s ' "${targets[@]//-/}") >&2

status=0
for target in "${targets[@]}"; do
  work="$(mktemp -d)"
  cp -r "$root/tests/fuzz/corpus/$target/." "$work/"
  findings="$build/findings/$target"
  mkdir -p "$findings"
  log="$build/findings/$target.log"
  if ! "$build/bin/v4_fuzz_${target//-/}" "$work" -max_total_time="$seconds" -timeout=30 -rss_limit_mb=3072 \
       -artifact_prefix="$findings/" -print_final_stats=1 > "$log" 2>&1; then
    status=1
    echo "fuzz $target: FAILED, the input is in $findings/" >&2
    tail -40 "$log" >&2
  fi
  runs="$(grep -o 'number_of_executed_units: [0-9]*' "$log" | awk '{print $2}' | tail -1)"
  echo "fuzz $target: ${runs:-0} inputs in ${seconds} s, corpus grew to $(ls "$work" | wc -l) files"
  rm -rf "$work"
done
exit $status
