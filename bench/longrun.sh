#!/usr/bin/env bash
# Long run of the viewer: plays a card of short recordings from the first row on, moving on by
# itself, and reports its resident memory, open descriptors and threads every 10 openings, so that
# a cache filling up (growth that stops) tells itself from a leak (growth that goes on).
# Usage: bench/longrun.sh BUILD_DIR CARD [OPENINGS]
# Make a card of 200 short recordings first, e.g.:
#   kavro-camsim --out CARD --minutes 7 --seconds-per-recording 2 --front-size 320x180 \
#                --rear-size 160x90
set -euo pipefail
build="${1:?build folder}"
card="${2:?card folder}"
openings="${3:-200}"
log="$(mktemp)"
trap 'kill "$pid" 2>/dev/null || true; rm -f "$log"' EXIT

export QT_QPA_PLATFORM=offscreen KAVRO_VLC_ARGS=--aout=dummy QTWEBENGINE_DISABLE_SANDBOX=1
export QTWEBENGINE_CHROMIUM_FLAGS=--disable-gpu QT_LOGGING_RULES="kavro.app.info=true"
"$build/src/gui/app/kavro-viewer" "$card" --play 0 >"$log" 2>&1 &
pid=$!

sample() {
    local rss fds threads
    rss=$(awk '/^VmRSS/ {print $2}' "/proc/$pid/status")
    threads=$(awk '/^Threads/ {print $2}' "/proc/$pid/status")
    fds=$(ls "/proc/$pid/fd" | wc -l)
    echo "after opening $1: RSS ${rss} kB, ${fds} descriptors, ${threads} threads"
}

count=0
changed=$SECONDS
for mark in $(seq 10 10 "$openings"); do
    while [ "$count" -lt "$mark" ]; do
        kill -0 "$pid" 2>/dev/null || { echo "the viewer ended after $count openings" >&2; exit 1; }
        now=$(grep -c "opening row" "$log" || true)
        if [ "$now" -ne "$count" ]; then
            count=$now
            changed=$SECONDS
        elif [ $((SECONDS - changed)) -gt 60 ]; then
            echo "no new opening for 60 s after $count openings (the end of the list?)" >&2
            mark=$count
            ended=1
            break
        fi
        sleep 1
    done
    sleep 2 # into the recording
    sample "$mark"
    [ -z "${ended:-}" ] || break
done
