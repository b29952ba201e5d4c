#!/bin/sh
# Fills fuzz/corpus/<harness>/ from the sample installation and the end-to-end cases: every
# input file goes to the harness of its reader, named by its content's hash so a file seen
# twice is kept once. Run from anywhere; it only adds files.
set -eu
root=$(cd "$(dirname "$0")/.." && pwd)
corpus="$root/fuzz/corpus"

add() {  # add HARNESS FILE
    mkdir -p "$corpus/$1"
    cp "$2" "$corpus/$1/$(sha1sum "$2" | cut -c1-16)"
}

for install in "$root"/examples/install "$root"/tests/e2e/*/install; do
    for f in "$install"/pallet/*; do [ -f "$f" ] && add PalletFile "$f"; done
    for f in "$install"/job/*; do [ -f "$f" ] && add JobFile "$f"; done
    for f in "$install"/outline/*; do [ -f "$f" ] && add OutlineFile "$f"; done
    [ -f "$install/Kesto.ini" ] && add MessageFile "$install/Kesto.ini"
    [ -f "$install/bin/Ks_Setup.ini" ] && add SetupList "$install/bin/Ks_Setup.ini"
    for f in "$install"/out/*.csv; do [ -f "$f" ] && add PlacementFile "$f"; done
done
# The save files the cases wrote are valid save files too.
for f in "$root"/tests/e2e/*/expected/out/haichi.csv; do [ -f "$f" ] && add PlacementFile "$f"; done
# kesto-batch's arguments as a process gets them: one per NUL-ended field.
tmp=$(mktemp)
for case in "$root"/tests/e2e/*/case.txt "$root"/examples/install; do
    [ -f "$case" ] || continue
    args=$(sed -n 's/^args: //p' "$case")
    answer=$(sed -n 's/^answer: //p' "$case")
    printf '%s' "--answer $answer $args" | tr ' ' '\0' >"$tmp"
    add CommandLine "$tmp"
done
printf '%s' 'pallet/pallets.txt 1 1 12.5 -3 2' | tr ' ' '\0' >"$tmp" && add CommandLine "$tmp"
printf '%s' '--picture out.png --picture-size 800x600 p.txt' | tr ' ' '\0' >"$tmp"
add CommandLine "$tmp"
rm -f "$tmp"
