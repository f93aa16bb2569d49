#!/usr/bin/env bash
# Builds the Debian package kavro-viewer_VERSION-1_ARCH.deb in the build folder BUILD_DIR
# (default: build), configured for /usr; prints its path last.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
export BUILD_DIR="${BUILD_DIR:-$root/build}"
bash "$root/scripts/build.sh" -DCMAKE_INSTALL_PREFIX=/usr
cd "$BUILD_DIR"
rm -f kavro-viewer_*.deb
cpack -G DEB >cpack.log 2>&1 || { tail -n 20 cpack.log >&2; echo "package: cpack failed" >&2; exit 1; }
ls "$BUILD_DIR"/kavro-viewer_*.deb
