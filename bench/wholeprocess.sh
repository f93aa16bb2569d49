#!/usr/bin/env bash
# Whole-process benchmarks of the kavro command line, as a user starts it: every command is a
# fresh process with its output to a pipe, timed by hyperfine, and compared with a reference
# measured in the same run. The machine is shared, so compare ratios, not seconds.
#
# Usage: bench/wholeprocess.sh BUILD_DIR   (RUNS=15 by default; data is made once under
# BUILD_DIR/bench-data and kept: the cards take a few minutes to simulate)
set -euo pipefail
build_dir="$(cd "${1:?usage: wholeprocess.sh BUILD_DIR}" && pwd)"
runs="${RUNS:-15}"
data="$build_dir/bench-data"
kavro="${KAVRO:-$build_dir/src/cli/kavro}" # KAVRO: another build of it, to compare
camsim="$build_dir/src/tools/camsim/kavro-camsim"
reader="$build_dir/bench/minimal_reader"
mkdir -p "$data"

make_once() { # TARGET COMMAND...: runs the command unless TARGET exists
    local target="$1"
    shift
    [ -e "$target" ] && return
    echo "making $target..."
    nice -n 10 "$@" >/dev/null
}
make_once "$data/demo" "$camsim" --out "$data/demo"
# About 200 recordings of 4 seconds, front and rear, over the simulator's five drives.
make_once "$data/card200" "$camsim" --quick --minutes 13.2 --out "$data/card200"
make_once "$data/recording-3min.avi" "$build_dir/bench/bench_extract" --write "$data/recording-3min.avi"
make_once "$data/tree15000" "$build_dir/bench/bench_scan" --write "$data/tree15000"

# The files kavro reads on a card: the front file of each pair, a lone rear file itself.
files_read() {
    "$kavro" list "$1" --format json | python3 -c '
import json, sys
print("\n".join(r["path"] for r in json.load(sys.stdin)
                if r["channel"] == "front" or r["partner"] is None))'
}

# NAME TARGET_TEXT "hyperfine options" COMMAND REFERENCE: prints both medians and command/reference.
# The runs are split into rounds that alternate which command goes first, so that a change in the
# load of the shared machine falls on both alike; the medians are taken over all rounds.
compare() {
    local name="$1" target="$2" options="$3" command="$4" reference="$5"
    local rounds=5 round first second
    rm -f "$data/$name".*.json
    for ((round = 0; round < rounds; ++round)); do
        first="$command" second="$reference"
        if ((round % 2)); then first="$reference" second="$command"; fi
        # shellcheck disable=SC2086 # the options are words
        hyperfine --style none --warmup 2 --runs $(((runs + rounds - 1) / rounds)) --output=pipe \
            $options --export-json "$data/$name.$round.json" "$first" "$second" \
            >/dev/null 2>>"$data/hyperfine.log"
    done
    python3 - "$name" "$target" "$command" "$reference" "$data/$name".*.json <<'EOF'
import json, statistics, sys
name, target, command, reference = sys.argv[1:5]
times = {command: [], reference: []}
for path in sys.argv[5:]:
    for result in json.load(open(path))["results"]:
        times[result["command"]] += result["times"]
a, b = (statistics.median(times[c]) * 1000 for c in (command, reference))
print(f"{name}: {a:.2f} ms / {b:.2f} ms = {a / b:.2f} ({target}; {len(times[command])} runs each)")
for c in (command, reference):
    print(f"    {statistics.median(times[c]) * 1000:8.2f} ms  {c[:110]}")
EOF
}

mapfile -t demo_files < <(files_read "$data/demo")
mapfile -t card_files < <(files_read "$data/card200")
recording="$data/recording-3min.avi"
echo "cards: demo ${#demo_files[@]} recordings read, card200 ${#card_files[@]} recordings read"
echo "medians of about $runs runs; ratio = first command / reference"

compare card200-gpx "target at most 1.5" "-N" \
    "$kavro telemetry $data/card200 --format gpx" "$reader ${card_files[*]}"
compare demo-gpx "target at most 1.5" "-N" \
    "$kavro telemetry $data/demo --format gpx" "$reader ${demo_files[*]}"
compare recording-csv "target at most 2" "-N" \
    "$kavro telemetry $recording --format csv" "$reader $recording"
compare help "start-up alone" "-N" "$kavro --help" "$reader $recording"
compare ffmpeg-copy "target at least 20" "-N" \
    "ffmpeg -v error -i $recording -map 0:2 -c copy -f data -y /dev/null" \
    "$kavro telemetry $recording --format csv"
# find needs a shell for its pipe: both sides run through one, which hyperfine subtracts.
compare list-text "target at most 1.5" "" \
    "$kavro list $data/tree15000" "find $data/tree15000 -iname '*.avi' | sort"
compare list-json "target at most 1.5" "" \
    "$kavro list $data/tree15000 --format json" "find $data/tree15000 -iname '*.avi' | sort"

# Peak resident memory of a whole card in one process against kavro's own start-up.
peak_kb() { /usr/bin/time -f %M "$@" 2>&1 >/dev/null | tail -1; }
base=$(peak_kb "$kavro" --help)
for format in gpx json; do
    peak=$(peak_kb "$kavro" telemetry "$data/card200" --format "$format")
    echo "memory card200 $format: peak $((peak / 1024)) MB, $(((peak - base) / 1024)) MB above" \
        "kavro --help ($((base / 1024)) MB) (target under 50)"
done
