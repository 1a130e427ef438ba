#!/usr/bin/env bash
# Installs what is missing, builds everything (release) and runs every test.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh
bash scripts/build.sh build -DCMAKE_BUILD_TYPE=Release
ctest --test-dir build --output-on-failure -j "$(nproc)"
