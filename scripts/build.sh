#!/usr/bin/env bash
# Configures and builds the project. BUILD_DIR (default: build) names the build folder; further
# arguments go to cmake's configure step, e.g. -DKAVRO_SANITIZE=ON.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
build_dir="${BUILD_DIR:-$root/build}"
build_type="${BUILD_TYPE:-RelWithDebInfo}"
# Paths inside the tree count relative to it, so that another clone of it hits the same cache.
export CCACHE_BASEDIR="${CCACHE_BASEDIR:-$root}"
# ... and without the build folder in the hash (it only reaches debug info), so they really do.
export CCACHE_NOHASHDIR="${CCACHE_NOHASHDIR:-1}"

cmake -S "$root" -B "$build_dir" -G Ninja -DCMAKE_BUILD_TYPE="$build_type" "$@" >/dev/null
cmake --build "$build_dir" -j "${JOBS:-2}"
