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
# Journals of the operator's commands: whole ones, and each kind of damage the reader meets.
job=0123456789abcdef0123456789abcdef0123456789abcdef0123456789abcdef
t=2024-05-06T07:08:09.010
journal() {  # journal TEXT: the text as printf writes it, as a seed
    printf "$1" >"$tmp"
    add Journal "$tmp"
}
head="kesto-journal 1\njob $job\n"
journal "$head$t process 2\n$t pallet 3\n$t view danmen\n$t view 4pallet\n$t direct 1\n$t 3d 0\n$t grid 1\n$t blockdraw 0\n$t area 1274 675\n$t hit single\n$t box 101\n$t down 7\n$t up 7\n$t left 5 2 11\n$t right 5\n$t sheets 4 25\n$t drop 800 600 10 20 110 70 3 1\n$t banddrop 800 600 -15 40 4 1 2 3 4 9 -5 6 70 80 / 6 2\n$t retry\n$t auto\n$t undo\n$t redo\n$t ok\n"
journal "kesto-journal 1\r\njob $job\r\n$t view 2pallet\r\n$t banddrop 640 480 0 0 7 1 2 3 4 /\r\n$t cancel\r\n"
journal "$head$t process 2\n$t left 5 6\n$t drop 800 600 10 20 11"
journal "$head$t view danmen\n$t window 230.000 770.000 68.560 431.440\n$t drop 1000 700 10 20 110 70 0\n$t window fit\n$t window -5 9 1.5 2\n$t window 2 1 0 1\n$t window 1e3 2 0 1\n$t view 4pallet\n$t window 0 1 0 1\n$t ok\n"
journal "$head"
journal ""
journal "kesto-journal 2\njob $job\n$t ok\n"
journal "kesto-journal 1\njob 0123456789ABCDEF\n$t ok\n"
journal "kesto-journal 1\njob $job"
journal "$head$t rotate 90\n$t zoom\n\n2024-13-06T07:08:09.010 retry\n2024-02-30T00:00:00.000 retry\n$t  retry\n$t retry \n$t process\n$t process 1 2\n$t box x\n$t box 2147483648\n$t grid 2\n$t view side\n$t hit all\n$t left\n$t drop 1 2 3 4 5 6\n$t banddrop 1 2 3 4 5 6 7 8 9\n$t banddrop 1 2 3 4 5 6 7 8 / 9\n$t area 0 600\n$t area 5\n$t ok now\n$t ok\n"
rm -f "$tmp"
