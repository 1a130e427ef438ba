#!/usr/bin/env bash
# package.sh: builds what ships and writes it to dist/:
#   dist/Orbivane-<version>-win64.zip     Orbivane.aex and INSTALL.txt, for After Effects users
#   dist/orbivane_<version>_<arch>.deb     orbivane-render, its module, examples and docs, for
#                                          Linux render nodes (dependencies from dpkg-shlibdeps)
# BUILD=DIR and BUILD_WIN=DIR reuse existing build folders (default build and build-win).
set -euo pipefail
cd "$(dirname "$0")/.."
version=$(sed -n 's/^project(Orbivane VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
linux=${BUILD:-build}
win=${BUILD_WIN:-build-win}
mkdir -p dist

# Windows: the .aex with its install notes (Windows line ends).
bash scripts/build-windows.sh "$win"
stage=$(mktemp -d)
trap 'rm -rf "$stage"' EXIT
cp "$win/Orbivane.aex" "$stage/"
sed -e "s/@VERSION@/$version/g" -e 's/$/\r/' packaging/win64/INSTALL.txt >"$stage/INSTALL.txt"
zip_path="$PWD/dist/Orbivane-$version-win64.zip"
rm -f "$zip_path"
(cd "$stage" && zip -q -X "$zip_path" Orbivane.aex INSTALL.txt)
echo "package: dist/Orbivane-$version-win64.zip"

# Linux: the Debian package from the cmake --install layout.
bash scripts/install-deps.sh linux
if [ ! -f "$linux/CMakeCache.txt" ]; then
  cmake -S . -B "$linux" -G Ninja -DCMAKE_BUILD_TYPE=Release -DORBIVANE_BUILD_TESTS=OFF -DORBIVANE_BUILD_BENCH=OFF >/dev/null
fi
cmake --build "$linux" -j "$(nproc)"
(cd "$linux" && cpack -G DEB >/dev/null)
rm -rf dist/_CPack_Packages  # cpack's staging tree
echo "package: dist/orbivane_${version}_$(dpkg --print-architecture).deb"
