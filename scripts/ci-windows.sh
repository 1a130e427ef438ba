#!/usr/bin/env bash
# ci-windows.sh [LINUX_BUILD_DIR] [WINDOWS_BUILD_DIR]: the Windows job. Builds Orbivane.aex and
# the Windows test programs with mingw-w64, runs them under wine against the .aex (command
# dispatch, the parameter set and the PiPL resource, the interface rules, scene renders at 8,
# 16 and 32 bits with depth of field and a control layer), then checks pixel parity: the
# example scenes' frames rendered by the .aex under wine and by the Linux Orbivane.so may
# differ by at most one 8-bit step or 1e-4 in float.
# Needs the Linux release build (scripts/test.sh) for the parity tools and Orbivane.so.
set -euo pipefail
cd "$(dirname "$0")/.."
linux=${1:-build}
win=${2:-build-win}
start=$(date +%s)

ORBIVANE_WINDOWS_TARGETS=all bash scripts/build-windows.sh "$win" -DORBIVANE_BUILD_BENCH=OFF
cmake --build "$linux" -j "$(nproc)" --target Orbivane orbivane_pipl parity_render parity_prepare parity_compare

# A private, display-less wine: its own prefix in a temporary folder, no Mono or Gecko prompts.
work=$(mktemp -d)
export WINEPREFIX="$work/wine" WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
unset DISPLAY WAYLAND_DISPLAY
wine=$(command -v wine64 || command -v wine || echo /usr/lib/wine/wine64)
cleanup() {
  "$(dirname "$wine")/wineserver" -k 2>/dev/null || wineserver -k 2>/dev/null || true
  rm -rf "$work"
}
trap cleanup EXIT
"$wine" wineboot --init >/dev/null 2>&1 || true
echo "== Windows: wine prefix ready after $(( $(date +%s) - start )) s"

echo "== Windows: test suites under wine"
ctest --test-dir "$win" --output-on-failure -j "$(nproc)"

echo "== Windows: pixel parity of the example scenes"
mkdir -p "$work/scenes" "$work/linux" "$work/windows"
"$linux/tests/parity/parity_prepare" "$work/scenes" examples/*.json
"$linux/tests/parity/parity_render" "$linux/Orbivane.so" "$work/linux" "$work"/scenes/*.json
"$wine" "$win/tests/parity/parity_render.exe" "$win/Orbivane.aex" "$work/windows" "$work"/scenes/*.json
"$linux/tests/parity/parity_compare" "$work/linux" "$work/windows"

echo "== Windows job took $(( $(date +%s) - start )) s"
