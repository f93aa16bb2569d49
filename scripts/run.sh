#!/usr/bin/env bash
# Installs what is missing, builds, makes the demo card once (kept in demo-card/), and starts the
# viewer on it. Without a display the viewer cannot start; the card's list and an excerpt of its
# telemetry are printed instead.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
build_dir="${BUILD_DIR:-$root/build}"
card="${KAVRO_DEMO_CARD:-$root/demo-card}"

"$root/scripts/setup.sh"
BUILD_DIR="$build_dir" "$root/scripts/build.sh"

if [ ! -f "$card/.complete" ]; then
    echo "Making the demo card in $card (once)..."
    rm -rf "$card"
    "$build_dir/src/tools/camsim/kavro-camsim" --out "$card"
    touch "$card/.complete"
fi

viewer="$build_dir/src/gui/app/kavro-viewer"
if [ -x "$viewer" ] && { [ -n "${DISPLAY:-}" ] || [ -n "${WAYLAND_DISPLAY:-}" ]; }; then
    exec "$viewer" "$card"
fi

kavro="$build_dir/src/cli/kavro"
"$kavro" list "$card"
first_front="$("$kavro" list "$card" --format json | python3 -c '
import json, sys
rows = json.load(sys.stdin)
print(next((r["path"] for r in rows if r["channel"] == "front"), ""))')"
if [ -n "$first_front" ]; then
    echo
    echo "Telemetry of $(basename "$first_front") (first 15 samples):"
    "$kavro" telemetry "$first_front" --format csv | head -n 16
fi
