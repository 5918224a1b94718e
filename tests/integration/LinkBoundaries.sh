#!/usr/bin/env bash
# The library exports its two entry points and nothing else, and the signal path and the
# document code reach no drawing or windowing library: only the graphics code does.
#   LinkBoundaries.sh <libvarnel4.so> <static library>...
set -euo pipefail
library="$1"
shift
exports="$(nm -D --defined-only "$library" | awk '$2 != "A" {print $3}' | sort | tr '\n' ' ')"
if [ "$exports" != "HLA2Acquire HLA2Release " ]; then
  echo "$library exports: $exports" >&2
  exit 1
fi
status=0
for archive in "$@"; do
  found="$(nm -C -u "$archive" 2>/dev/null | grep -E ' (agg::|FT_|X[A-Z][A-Za-z]+$|xcb_)' | sort -u || true)"
  if [ -n "$found" ]; then
    echo "$(basename "$archive") uses drawing or windowing symbols:" >&2
    echo "$found" >&2
    status=1
  fi
done
exit $status
