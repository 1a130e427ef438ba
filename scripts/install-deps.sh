#!/usr/bin/env bash
# Installs the Debian packages the build needs (skips the install when they are all present).
set -euo pipefail
packages=(cmake ninja-build g++ pkg-config
          libgtest-dev libgmock-dev libbenchmark-dev
          libopenimageio-dev openimageio-tools nlohmann-json3-dev libcli11-dev libtbb-dev)
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0
sudo=""; [ "$(id -u)" -ne 0 ] && sudo="sudo"
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get update -qq
$sudo apt-get install -y -qq "${missing[@]}"
