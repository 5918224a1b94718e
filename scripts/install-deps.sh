#!/usr/bin/env bash
# Installs every Debian package the project needs (build, tests, benchmarks, hosts, editor).
# Does nothing when all are present.
set -euo pipefail

packages=(
  build-essential binutils cmake ninja-build pkg-config
  googletest libgtest-dev libgmock-dev libbenchmark-dev
  libboost-dev libboost-thread-dev libboost-filesystem-dev libboost-iostreams-dev
  libboost-date-time-dev
  libtinyxml-dev zlib1g-dev libfreetype-dev libagg-dev libfftw3-dev
  libx11-dev libx11-xcb-dev libxcb-shm0-dev libxext-dev libxtst-dev x11-utils
  libsndfile1-dev lv2-dev liblilv-dev lilv-utils jalv jackd2 serdi sordi
  fonts-dejavu-core xvfb xauth
  clang libclang-rt-14-dev
)

missing=()
for package in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed'; then
    missing+=("$package")
  fi
done
[ ${#missing[@]} -eq 0 ] && exit 0

sudo=()
[ "$(id -u)" -ne 0 ] && sudo=(sudo)
echo "Installing: ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
"${sudo[@]}" apt-get update -q
"${sudo[@]}" apt-get install -y -q --no-install-recommends "${missing[@]}"
