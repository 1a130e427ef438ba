#!/usr/bin/env bash
# ci-sanitizers.sh [BUILD_DIR]: the ThreadSanitizer job. Builds only the suites that render on
# several threads (frames on two host threads, the host's iteration pool and sampler cache, the
# ray tracer's passes, the render driver) with -fsanitize=thread and runs them; any report fails.
# The AddressSanitizer + UBSan job covers every suite and stays in .ci/run.
set -euo pipefail
cd "$(dirname "$0")/.."
dir=${1:-build-tsan}
start=$(date +%s)

targets=(reliability_threads host_checks_test host_session_test host_pixels_test raytrace_primary_test
         raytrace_dof_test render_driver_test)

cmake -S . -B "$dir" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DORBIVANE_BUILD_BENCH=OFF \
      -DORBIVANE_SANITIZE=thread >/dev/null
cmake --build "$dir" -j "$(nproc)" --target Orbivane orbivane_pipl "${targets[@]}"

export TSAN_OPTIONS="halt_on_error=1:second_deadlock_stack=1:exitcode=66"
status=0
for target in "${targets[@]}"; do
  exe=$(find "$dir/tests" -type f -name "$target" -perm -u+x | head -n 1)
  if [ -z "$exe" ]; then
    echo "ci-sanitizers: $target was not built" >&2
    status=1
    continue
  fi
  echo "== ThreadSanitizer: $target"
  "$exe" --gtest_brief=1 || status=1
done
echo "== ThreadSanitizer job took $(( $(date +%s) - start )) s"
exit $status
