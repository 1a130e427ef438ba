#!/usr/bin/env bash
# Installs what is missing, builds everything (release) and runs every test.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh
bash scripts/build.sh build -DCMAKE_BUILD_TYPE=Release -DORBIVANE_BUILD_TESTS=ON -DORBIVANE_BUILD_BENCH=ON
ctest --test-dir build --output-on-failure -j "$(nproc)"
