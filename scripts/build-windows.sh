#!/usr/bin/env bash
# build-windows.sh [BUILD_DIR] [cmake options...]: builds Orbivane.aex, the effect for After
# Effects on Windows x64, with Debian's mingw-w64 (installs what is missing first), and checks
# the result: exactly one export (EntryPointFunc), only Windows system DLLs imported (the C and
# C++ runtimes are linked in), and the PiPL resource compiled in.
#   bash scripts/build-windows.sh                 -> build-win/Orbivane.aex
#   ORBIVANE_WINDOWS_TARGETS=all bash scripts/build-windows.sh   also the Windows test programs
set -euo pipefail
cd "$(dirname "$0")/.."
dir=${1:-build-win}
[ $# -gt 0 ] && shift
bash scripts/install-deps.sh windows
cmake -S . -B "$dir" -G Ninja -DCMAKE_TOOLCHAIN_FILE=cmake/mingw-w64-x86_64.cmake \
      -DCMAKE_BUILD_TYPE=Release "$@" >/dev/null
cmake --build "$dir" -j "$(nproc)" --target "${ORBIVANE_WINDOWS_TARGETS:-Orbivane}"

aex="$dir/Orbivane.aex"
headers=$(x86_64-w64-mingw32-objdump -p "$aex")
exports=$(sed -n '/\[Ordinal\/Name Pointer\] Table/,/^$/p' <<<"$headers" |
          sed -n 's/^[[:space:]]*\[ *[0-9]*\] //p' | sort -u)
dlls=$(grep -o 'DLL Name: .*' <<<"$headers" | cut -d' ' -f3 | tr '[:lower:]' '[:upper:]' | sort -u)
fail() { echo "build-windows: $aex: $*" >&2; exit 1; }
[ "$exports" = "EntryPointFunc" ] || fail "exports '$exports', expected only EntryPointFunc"
for dll in $dlls; do
  case "$dll" in
    KERNEL32.DLL|MSVCRT.DLL|UCRTBASE.DLL|API-MS-WIN-*|USER32.DLL|ADVAPI32.DLL) ;;
    *) fail "imports $dll, which is not a Windows system DLL" ;;
  esac
done
# The resource section holds the type name PIPL (UTF-16) and the list's first property 'kind'.
rsrc=$(mktemp)
trap 'rm -f "$rsrc"' EXIT
x86_64-w64-mingw32-objcopy -O binary -j .rsrc "$aex" "$rsrc"
tr -d '\000' <"$rsrc" | grep -aq 'PIPL' || fail "has no PiPL resource"
grep -aq 'MIB8dnik' "$rsrc" || fail "its PiPL resource is not a property list"
echo "build-windows: $aex ($(stat -c %s "$aex") bytes): exports EntryPointFunc only; imports $(tr '\n' ' ' <<<"$dlls")"
