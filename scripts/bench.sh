#!/usr/bin/env bash
# Builds the benchmarks optimised and runs them all. Each prints its ratio against a reference
# measured in the same run; the machine is shared, so compare ratios, not seconds.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
build_dir="$root/build-bench"

"$root/scripts/setup.sh"
targets=()
for source in "$root"/bench/bench_*.cpp; do
    targets+=("$(basename "$source" .cpp)")
done
cmake -S "$root" -B "$build_dir" -G Ninja -DCMAKE_BUILD_TYPE=Release -DKAVRO_BUILD_TESTS=OFF >/dev/null
cmake --build "$build_dir" -j "${JOBS:-2}" --target "${targets[@]}" kavro kavro-camsim minimal_reader
for target in "${targets[@]}"; do
    echo "== $target"
    "$build_dir/bench/$target"
done
echo "== whole processes"
"$root/bench/wholeprocess.sh" "$build_dir"
