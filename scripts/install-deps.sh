#!/usr/bin/env bash
# install-deps.sh [linux|windows|all]: installs the Debian packages a build needs (skips the
# install when they are all present).
#   linux    (default) the Linux build: module, host, orbivane-render, tests, benchmarks
#   windows  the Windows build: mingw-w64, wine to run its tests, zip/unzip for the package
set -euo pipefail
linux=(cmake ninja-build g++ pkg-config
       libgtest-dev libgmock-dev libbenchmark-dev
       libopenimageio-dev openimageio-tools libpng-dev nlohmann-json3-dev libcli11-dev libtbb-dev)
# g++ builds the PiPL writer that runs during the cross build; googletest is the source the
# cross compiler builds GoogleTest from; nlohmann-json is header-only and serves both.
windows=(cmake ninja-build g++ g++-mingw-w64-x86-64-posix googletest nlohmann-json3-dev wine64 zip unzip)
# wine runs the test programs only; its recommended fonts and graphics stacks are not needed.
options=()
case "${1:-linux}" in
  linux) packages=("${linux[@]}") ;;
  windows) packages=("${windows[@]}"); options=(--no-install-recommends) ;;
  all) packages=("${linux[@]}" "${windows[@]}") ;;
  *) echo "usage: $0 [linux|windows|all]" >&2; exit 2 ;;
esac
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0
sudo=""; [ "$(id -u)" -ne 0 ] && sudo="sudo"
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get update -qq
$sudo apt-get install -y -qq "${options[@]}" "${missing[@]}"
