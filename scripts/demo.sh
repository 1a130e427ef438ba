#!/usr/bin/env bash
# Installs what is missing, builds a release and renders the built-in demo to orbivane-demo.png.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh
bash scripts/build.sh build -DCMAKE_BUILD_TYPE=Release -DORBIVANE_BUILD_TESTS=OFF -DORBIVANE_BUILD_BENCH=OFF
./build/cli/orbivane-render "$@"
