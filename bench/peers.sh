#!/usr/bin/env bash
# peers.sh [--quick] [--depths] [--runs N] [--build DIR] [POV_MATCH_DIR]
#
# Times orbivane-render's 24-frame sequence of the POV-Ray matched scene at -j 2 and -j 1 and,
# when `povray` is installed (Debian package povray), POV-Ray on the same picture with forced
# 3x3 supersampling on 2 threads and on 1. The four commands take turns, round after round, so
# a change in the machine's load touches all of them alike; each figure is the median of its
# rounds, per frame (our sequence time / its frame count).
#
#   --quick       a quarter of the resolution (ours -d 4, POV-Ray 480x270), 6 frames, 1 round
#   --depths      instead: the cost of one more 8-, 16- and 32-bit frame at -j 2 (sequences of 1
#                 and of 24 frames in turns; (time of 24 - time of 1) / 23) and its ratio to 8-bit
#   --runs N      rounds (default 3; 1 with --quick)
#   --build DIR   build folder holding cli/orbivane-render (default: build)
#   POV_MATCH_DIR the scene folder (default: ../shared/bench/pov-match beside the repository,
#                 or beside the main checkout when this is a git worktree). It is copied to a
#                 temporary folder first: POV-Ray writes beside its scene.
set -euo pipefail
shopt -s inherit_errexit

root=$(cd "$(dirname "$0")/.." && pwd)
quick=0 depths=0 runs= build=build scene_dir=
while (($#)); do
    case $1 in
        --quick) quick=1 ;;
        --depths) depths=1 ;;
        --runs) runs=${2:?--runs needs a number}; shift ;;
        --build) build=${2:?--build needs a folder}; shift ;;
        -h|--help) sed -n '2,17p' "$0" | sed 's/^# \{0,1\}//'; exit 0 ;;
        -*) echo "peers.sh: unknown option $1 (see --help)" >&2; exit 2 ;;
        *) scene_dir=$1 ;;
    esac
    shift
done
[[ -n $runs ]] || runs=$((quick ? 1 : 3))
[[ $runs =~ ^[1-9][0-9]*$ ]] || { echo "peers.sh: --runs needs a positive number" >&2; exit 2; }

if [[ -z $scene_dir ]]; then
    main_root=$(cd "$root" && cd "$(dirname "$(git rev-parse --git-common-dir 2>/dev/null || echo .git)")" && pwd) || main_root=$root
    for candidate in "$root/../shared/bench/pov-match" "$main_root/../shared/bench/pov-match"; do
        [[ -f $candidate/orbivane_pov.json ]] && { scene_dir=$candidate; break; }
    done
fi
[[ -n $scene_dir && -f $scene_dir/orbivane_pov.json ]] ||
    { echo "peers.sh: no pov-match folder found; pass it as an argument" >&2; exit 2; }
[[ $build = /* ]] || build=$root/$build
render=$build/cli/orbivane-render
[[ -x $render ]] || { echo "peers.sh: $render is missing; build first (scripts/build.sh build)" >&2; exit 2; }

work=$(mktemp -d "${TMPDIR:-/tmp}/orbivane-peers.XXXXXX")
trap 'rm -rf "$work"' EXIT
cp -r "$scene_dir/." "$work/"
cd "$work"

if ((quick)); then frames=6 size=(-d 4) pov_size=(+W480 +H270); else frames=24 size=() pov_size=(+W1920 +H1080); fi

have_pov=0
command -v povray >/dev/null && have_pov=1 ||
    echo "peers.sh: povray is not installed (apt-get install povray); timing Orbivane only" >&2

ours() { "$render" orbivane_pov.json -q -j "$1" "${size[@]}" --frames 0-$((frames - 1)) -o out/s.####.png; }
pov() { povray +Icyl.pov "${pov_size[@]}" -D +WT"$1" +A0.0 +AM1 +R3 +Opov.png >pov.log 2>&1 ||
            { echo "peers.sh: povray failed, see its log:" >&2; tail -5 pov.log >&2; exit 1; }; }

# Seconds taken by one run of the command. (hyperfine runs all the rounds of one command before
# the next, so the turns are taken here.)
seconds() {
    local start=$EPOCHREALTIME
    "$@"
    awk -v a="$start" -v b="$EPOCHREALTIME" 'BEGIN { printf "%.4f\n", b - a }'
}
median() { sort -g | awk '{ v[NR] = $1 } END { print (NR % 2) ? v[(NR + 1) / 2] : (v[NR / 2] + v[NR / 2 + 1]) / 2 }'; }
ratio() { awk -v a="$1" -v b="$2" 'BEGIN { printf "%.1f", a / b }'; }

# --depths: one more frame of each depth against one more 8-bit frame.
if ((depths)); then
    depth_run() { local ext=png; (($1 == 32)) && ext=exr
                  "$render" orbivane_pov.json -q -j 2 "${size[@]}" -b "$1" --frames 0-$(($2 - 1)) -o out/d$1.####.$ext; }
    declare -A depth_times
    for ((r = 1; r <= runs; ++r)); do
        echo "round $r/$runs" >&2
        for b in 8 16 32; do for n in 1 "$frames"; do depth_times[$b-$n]+="$(seconds depth_run "$b" "$n") "; done; done
    done
    declare -A added
    for b in 8 16 32; do
        one=$(tr ' ' '\n' <<<"${depth_times[$b-1]}" | grep . | median)
        all=$(tr ' ' '\n' <<<"${depth_times[$b-$frames]}" | grep . | median)
        added[$b]=$(awk -v a="$all" -v o="$one" -v f="$frames" 'BEGIN { print (a - o) / (f - 1) }')
    done
    echo "$(date -u +%F), $(nproc) cores; $runs round(s), medians; one more frame at -j 2"
    for b in 8 16 32; do
        printf '%2d-bit %9.3f s  %sx an 8-bit frame\n' "$b" "${added[$b]}" \
            "$(awk -v a="${added[$b]}" -v e="${added[8]}" 'BEGIN { printf "%.2f", a / e }')"
    done
    exit 0
fi

declare -A times
names=(ours2 ours1)
((have_pov)) && names+=(pov2 pov1)
for ((r = 1; r <= runs; ++r)); do
    echo "round $r/$runs" >&2
    times[ours2]+="$(seconds ours 2) "
    ((have_pov)) && times[pov2]+="$(seconds pov 2) "
    times[ours1]+="$(seconds ours 1) "
    ((have_pov)) && times[pov1]+="$(seconds pov 1) "
done

declare -A per_frame
for n in "${names[@]}"; do
    m=$(tr ' ' '\n' <<<"${times[$n]}" | grep . | median)
    [[ $n == ours* ]] && m=$(awk -v m="$m" -v f="$frames" 'BEGIN { print m / f }')
    per_frame[$n]=$m
done

cpu=$(grep -m1 'model name' /proc/cpuinfo | cut -d: -f2- | sed 's/^ //')
echo "$(date -u +%F), $(nproc) cores, $cpu; $runs round(s), medians$( ((quick)) && echo ', QUICK: quarter resolution, 6 frames')"
printf '%-52s %10s\n' "" "per frame"
((have_pov)) && printf '%-52s %9.3f s\n' "POV-Ray 3.7, forced 3x3, 2 threads" "${per_frame[pov2]}" \
                                         "POV-Ray 3.7, forced 3x3, 1 thread" "${per_frame[pov1]}"
printf '%-52s %9.3f s\n' "orbivane-render, $frames-frame sequence, -j 2" "${per_frame[ours2]}" \
                         "orbivane-render, $frames-frame sequence, -j 1" "${per_frame[ours1]}"
if ((have_pov)); then
    echo "POV-Ray / ours, 2 threads vs 2:  $(ratio "${per_frame[pov2]}" "${per_frame[ours2]}")x"
    echo "POV-Ray / ours, 1 thread vs 1:   $(ratio "${per_frame[pov1]}" "${per_frame[ours1]}")x"
fi
echo "our 2-thread speed-up (-j 1 / -j 2): $(awk -v a="${per_frame[ours1]}" -v b="${per_frame[ours2]}" 'BEGIN { printf "%.2f", a / b }')x"
