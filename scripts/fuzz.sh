#!/usr/bin/env bash
# Builds the fuzz targets with clang (build-fuzz) and runs each for a bounded time over its seeds
# and the inputs of past findings. A crash, a leak, an input taking more than a second or memory
# past the limit stops the run with a non-zero status; the input is left under
# build-fuzz/findings/. Environment: FUZZ_SECONDS per target (default 60), FUZZ_TARGETS (default
# all), FUZZ_RSS_MB (default 2048).
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
build_dir="${BUILD_DIR:-$root/build-fuzz}"
seconds="${FUZZ_SECONDS:-60}"
targets=(${FUZZ_TARGETS:-avi nmea name settings drv})

CC=clang CXX=clang++ BUILD_DIR="$build_dir" BUILD_TYPE=RelWithDebInfo \
    "$root/scripts/build.sh" -DKAVRO_FUZZ=ON

export ASAN_OPTIONS="detect_leaks=1:abort_on_error=1:${ASAN_OPTIONS:-}"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1:${UBSAN_OPTIONS:-}"
mkdir -p "$build_dir/findings"
for target in "${targets[@]}"; do
    seeds="$root/fuzz/corpus/$target"
    regressions="$root/fuzz/regressions/$target"
    work="$build_dir/corpus/$target"
    mkdir -p "$work"
    options=(-timeout=1 -rss_limit_mb="${FUZZ_RSS_MB:-2048}" -print_final_stats=1
             -artifact_prefix="$build_dir/findings/$target-")
    if [ -f "$root/fuzz/$target.dict" ]; then
        options+=(-dict="$root/fuzz/$target.dict")
    fi
    echo "== fuzz_$target (${seconds}s)"
    # Past findings first, each on its own: they must all pass now.
    if compgen -G "$regressions/*" >/dev/null; then
        "$build_dir/fuzz/fuzz_$target" "${options[@]}" "$regressions"/* 2>&1 | tail -n 3 || {
            echo "fuzz_$target fails on an input of $regressions again" >&2
            exit 1
        }
    fi
    "$build_dir/fuzz/fuzz_$target" "${options[@]}" -max_total_time="$seconds" \
        "$work" "$seeds" 2>&1 | grep -v '^#[0-9]*.*\(NEW\|REDUCE\|pulse\)' || {
        echo "fuzz_$target failed; the input is under $build_dir/findings/" >&2
        exit 1
    }
done
