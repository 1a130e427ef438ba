#!/usr/bin/env bash
# ci-package.sh: builds both packages (scripts/package.sh), checks the zip's contents, installs
# the Debian package with apt-get, runs orbivane-render --version from the installed path (it
# must load the installed module) and renders an example to PNG and EXR with it, and purges
# the package again.
set -euo pipefail
cd "$(dirname "$0")/.."
start=$(date +%s)
bash scripts/package.sh
version=$(sed -n 's/^project(Orbivane VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)

listing=$(unzip -Z1 "dist/Orbivane-$version-win64.zip" | sort | tr '\n' ' ')
[ "$listing" = "INSTALL.txt Orbivane.aex " ] || { echo "ci-package: the zip holds: $listing" >&2; exit 1; }

deb=$(ls dist/orbivane_"$version"_*.deb)
contents=$(dpkg-deb -c "$deb")
for file in usr/bin/orbivane-render usr/lib/orbivane/Orbivane.so usr/lib/orbivane/orbivane_imageio.so; do
  grep -q " \./$file$" <<<"$contents" || { echo "ci-package: the package lacks /$file" >&2; exit 1; }
done
sudo=""; [ "$(id -u)" -ne 0 ] && sudo="sudo"
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get install -y -qq "./$deb" >/dev/null
status=0
output=$(/usr/bin/orbivane-render --version) || status=$?
echo "$output"
grep -q "^module /usr/lib/orbivane/Orbivane.so$" <<<"$output" || { echo "ci-package: not the installed module" >&2; status=1; }
grep -q "$version" <<<"$output" || { echo "ci-package: version $version not reported" >&2; status=1; }
# A real render from the installed files: a PNG texture to a PNG frame, and to an EXR frame,
# which needs the installed image-IO module.
frames=$(mktemp -d)
for out in frame.png frame.exr; do
  depth=8; [ "$out" = frame.exr ] && depth=32
  /usr/bin/orbivane-render /usr/share/orbivane/examples/reflection.json -q -d 4 --bit-depth $depth \
      -o "$frames/$out" || { echo "ci-package: the installed renderer could not write $out" >&2; status=1; }
done
rm -rf "$frames"
$sudo apt-get purge -y -qq orbivane >/dev/null
echo "== packages checked in $(( $(date +%s) - start )) s"
exit $status
