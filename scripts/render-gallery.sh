#!/usr/bin/env bash
# Renders the gallery pictures (docs/gallery/*.png) with orbivane-render: the built-in demo and
# every scene in examples/, flattened over each composition's background. The opening scene is
# also rendered as a labelled contact sheet of six frames (Open Parameter 0 to 1.5).
#   bash scripts/render-gallery.sh            builds a release into build/ first
#   BUILD=build-dbg bash scripts/render-gallery.sh   uses an existing build folder as it is
# Needs oiiotool (OpenImageIO's command-line tool) for the contact sheet.
set -euo pipefail
cd "$(dirname "$0")/.."
if [ -z "${BUILD:-}" ]; then
  BUILD=build
  bash scripts/build.sh "$BUILD" -DCMAKE_BUILD_TYPE=Release -DORBIVANE_BUILD_TESTS=OFF -DORBIVANE_BUILD_BENCH=OFF
fi
render="$BUILD/cli/orbivane-render"
mkdir -p docs/gallery
"$render" --quiet -o docs/gallery/demo.png
echo "docs/gallery/demo.png"
for scene in examples/*.json; do
  name=$(basename "$scene" .json)
  "$render" "$scene" --quiet --flatten -o "docs/gallery/$name.png"
  echo "docs/gallery/$name.png"
done

# Opening contact sheet: frames 0..5 of examples/opening.json step "Open Parameter" by 0.3.
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
"$render" examples/opening.json --quiet --flatten --frames 0-5 -o "$work/open.#.png"
values=(0 0.3 0.6 0.9 1.2 1.5)
tiles=()
for frame in 0 1 2 3 4 5; do
  oiiotool "$work/open.$frame.png" --ch R,G,B \
    --text:x=16:y=34:size=22:color=0.85,0.88,0.95:font=DejaVuSans "Open Parameter ${values[$frame]}" \
    -o "$work/tile.$frame.png"
  tiles+=("$work/tile.$frame.png")
done
oiiotool "${tiles[@]}" --mosaic:pad=4 3x2 --resize 1280x0 -o docs/gallery/opening-sheet.png
echo "docs/gallery/opening-sheet.png"
