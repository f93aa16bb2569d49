#!/usr/bin/env bash
# Builds an optimised tree and runs every benchmark. Each prints its ratio against a reference
# measured in the same run; the machine is shared, so compare ratios, not seconds.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
build_dir="$root/build-bench"

"$root/scripts/setup.sh"
BUILD_DIR="$build_dir" BUILD_TYPE=Release "$root/scripts/build.sh" -DKAVRO_BUILD_TESTS=OFF
for bench in "$build_dir"/bench/bench_*; do
    [ -x "$bench" ] || continue
    echo "== $(basename "$bench")"
    "$bench"
done
