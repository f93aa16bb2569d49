#!/usr/bin/env bash
# Refreshes the translation tables (src/resources/translations/InfoPlist_*.ts) from the sources:
# keys of new qtTrId calls come in with their //% English texts, translations already written
# stay, and keys no longer found are marked vanished (lrelease leaves them out). Translate the
# new Korean entries afterwards (linguist, or by hand) and rebuild.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
tables="$root/src/resources/translations"

fail() {
    echo "update-translations: $*" >&2
    exit 1
}

lupdate="${LUPDATE:-}"
if [ -z "$lupdate" ]; then
    for candidate in lupdate-qt6 /usr/lib/qt6/bin/lupdate "$(qtpaths6 --query QT_HOST_BINS 2>/dev/null)/lupdate"; do
        if command -v "$candidate" >/dev/null 2>&1; then
            lupdate="$candidate"
            break
        fi
    done
fi
[ -n "$lupdate" ] || fail "Qt 6 lupdate not found (install qt6-l10n-tools or set LUPDATE)"

log="$(mktemp)"
trap 'rm -f "$log"' EXIT
for language in en ko; do
    table="$tables/InfoPlist_$language.ts"
    if ! "$lupdate" -locations none -extensions cpp,h,ui -source-language en \
        -target-language "$language" "$root/src" -ts "$table" >"$log" 2>&1; then
        fail "lupdate failed for $(basename "$table"): $(grep -m1 -i error "$log" || tail -n1 "$log")"
    fi
    grep -m1 -E '^ *Found' "$log" | sed "s/^ */$(basename "$table"): /" || true
done
