#!/usr/bin/env bash
# Our LV2 plug-in beside LSP's parametric equaliser (x16 stereo, IIR and FIR), timed in one
# process with the same six bands and pink noise; prints ns per stereo frame and the ratios.
# Installs LSP's plug-ins if missing. Not part of the tests.
#   bench/compare-lsp.sh [block ...]
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
if ! dpkg -s lsp-plugins-lv2 > /dev/null 2>&1; then
  sudo=""; [ "$(id -u)" -ne 0 ] && sudo="sudo"
  $sudo apt-get install -y -q lsp-plugins-lv2 >&2
fi
build="$("$root/scripts/build.sh" release)"
scratch="$(mktemp -d)"
trap 'rm -rf "$scratch"' EXIT
# A private registry, so the latency levels set here leave the user's preference alone.
XDG_CONFIG_HOME="$scratch" LV2_PATH="$build/lv2:/usr/lib/lv2" "$build/bin/v4_lv2_timing" "$@"
