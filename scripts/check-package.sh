#!/usr/bin/env bash
# Builds the Debian package, checks it with lintian (errors fail), installs it with apt-get,
# starts the installed viewer offscreen for a few seconds and removes the package again.
# Needs root (or sudo) for apt-get.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"

fail() {
    echo "check-package: $*" >&2
    exit 1
}

sudo=""
[ "$(id -u)" -eq 0 ] || sudo="sudo"

work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
deb="$(bash "$root/scripts/package.sh" | tail -n 1)"
[ -f "$deb" ] || fail "no package built"
echo "package: $deb"

# Errors fail; warnings are listed.
lintian --fail-on error --tag-display-limit 0 "$deb" || fail "lintian found errors"

# Without the recommended udisks2, whose fuse3 would replace the fuse that the tests' fusefat
# uses on this machine.
DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "$deb" >"$work/apt.log" 2>&1 ||
    { tail -n 20 "$work/apt.log" >&2; fail "apt-get install failed"; }
trap 'DEBIAN_FRONTEND=noninteractive $sudo apt-get remove -y -qq kavro-viewer >/dev/null 2>&1 || true; rm -rf "$work"' EXIT

/usr/bin/kavro-viewer --version | grep -q '^kavro-viewer ' || fail "kavro-viewer --version"
/usr/bin/kavro --version >/dev/null || fail "kavro --version"
# config runs in the companion that kavro starts from the package's libexec folder.
/usr/bin/kavro config defaults "$work/config.bin" && /usr/bin/kavro config show "$work/config.bin" |
    grep -q '"checksum_valid"' || fail "kavro config show"

# The installed viewer in Korean on an empty folder, offscreen: it must say that it started and
# still be running a few seconds later.
home="$work/home"
mkdir -m 700 "$home"
log="$home/viewer.log"
: >"$log"
env -i PATH=/usr/bin:/bin HOME="$home" XDG_CONFIG_HOME="$home" XDG_RUNTIME_DIR="$home" \
    QT_QPA_PLATFORM=offscreen QTWEBENGINE_DISABLE_SANDBOX=1 \
    QTWEBENGINE_CHROMIUM_FLAGS=--disable-gpu \
    /usr/bin/kavro-viewer --lang ko "$home" >"$log" 2>&1 &
viewer=$!
started() { grep -q 'texts in "ko"' "$log"; }
deadline=$((SECONDS + 60))
until started || [ $SECONDS -ge $deadline ] || ! kill -0 "$viewer" 2>/dev/null; do
    sleep 1
done
alive=0
if started; then
    alive=5
    for _ in 1 2 3 4 5; do
        kill -0 "$viewer" 2>/dev/null || alive=0
        sleep 1
    done
fi
kill "$viewer" 2>/dev/null || true
wait "$viewer" 2>/dev/null || true
[ "$alive" -gt 0 ] || { tail -n 20 "$log" >&2; fail "the installed viewer did not start"; }
echo "package: installed, started and removed"
