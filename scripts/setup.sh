#!/usr/bin/env bash
# Installs every Debian package that Pellix needs to build, run and be tested. Idempotent:
# when everything is there it only looks, and it asks apt for the package lists only when a
# package is missing.
set -euo pipefail

packages=(
  # build
  g++ cmake ninja-build pkg-config
  # libraries
  libgoogle-glog-dev libsqlite3-dev libopencv-dev libvips-dev libqpdf-dev
  libgraphicsmagick1-dev
  # tests and benchmarks
  libgtest-dev libgmock-dev libbenchmark-dev sqlite3 util-linux time
  # converters the kernel drives, and the peers of the benchmarks
  ghostscript graphicsmagick libvips-tools qpdf
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
    missing+=("$p")
  fi
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "setup: installing ${missing[*]}"
sudo=()
[ "$(id -u)" -ne 0 ] && sudo=(sudo)
export DEBIAN_FRONTEND=noninteractive
"${sudo[@]}" apt-get update -qq
"${sudo[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
