#!/usr/bin/env bash
# Renders the gallery pictures (docs/gallery/*.png) with orbivane-render: the built-in demo and
# every scene in examples/, flattened over each composition's background.
#   bash scripts/render-gallery.sh            builds a release into build/ first
#   BUILD=build-dbg bash scripts/render-gallery.sh   uses an existing build folder as it is
set -euo pipefail
cd "$(dirname "$0")/.."
if [ -z "${BUILD:-}" ]; then
  BUILD=build
  bash scripts/build.sh "$BUILD" -DCMAKE_BUILD_TYPE=Release -DORBIVANE_BUILD_TESTS=OFF -DORBIVANE_BUILD_BENCH=OFF
fi
render="$BUILD/cli/orbivane-render"
mkdir -p docs/gallery
"$render" --quiet -o docs/gallery/demo.png
for scene in examples/*.json; do
  name=$(basename "$scene" .json)
  "$render" "$scene" --quiet --flatten -o "docs/gallery/$name.png"
  echo "docs/gallery/$name.png"
done
