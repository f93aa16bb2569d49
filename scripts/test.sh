#!/usr/bin/env bash
# Installs what is missing, builds, and runs every test.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
build_dir="${BUILD_DIR:-$root/build}"

"$root/scripts/setup.sh"
BUILD_DIR="$build_dir" "$root/scripts/build.sh" "$@"
ctest --test-dir "$build_dir" --output-on-failure -j "${JOBS:-2}"
