#!/usr/bin/env bash
# build.sh DIR [cmake options...]: configures and builds the project into DIR.
set -euo pipefail
cd "$(dirname "$0")/.."
dir=$1; shift
cmake -S . -B "$dir" -G Ninja "$@" >/dev/null
cmake --build "$dir" -j "$(nproc)"
