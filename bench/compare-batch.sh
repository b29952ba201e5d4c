#!/bin/sh
# compare-batch.sh OLD NEW MAKEJOB [SEEDS] [SIZES] [KINDS]: runs two kesto-batch builds on
# generated installations (every start corner, a fresh run, a restoring run, and a run after the
# job's quantities changed) and fails on the first file or message that differs. A speed-up of
# the core must leave every byte as it was. KINDS: plain (no outline files), crowded (five
# times the quantities, every seventh outline file missing) and crossings (the crowded kind with
# offsets of 100 that put many stacks across an offset line), all three by default, quiet (the
# crossings kind run with --quiet) and replay (no outline files; each run replays a journal of
# 300 random commands with --replay-any, for builds that have --replay).
set -eu
old=$(realpath "$1") new=$(realpath "$2") makejob=$(realpath "$3")
# 33 is the seed of the benchmarks' largest and crowded jobs.
seeds=${4:-"1 2 3 33"}
sizes=${5:-"5 40 200 999 1400"}
kinds=${6:-"plain crowded crossings"}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

run() { # run BATCH ROOT CORNER OUTDIR
    (cd "$2" && ORVOSystemRoot="$2" XDG_CONFIG_HOME="$2/config" \
        "$1" --answer ok $quiet $replay "$2/pallet/pallet.txt" 0 0 $offsets "$3" >"$4.stdout" \
            2>"$4.stderr") ||
        echo "exit $?" >>"$4.stdout"
    cp "$2/out/result.txt" "$4.result" 2>/dev/null || true
    cp "$2/out/save.txt" "$4.save" 2>/dev/null || true
}

runs=0
for kind in $kinds; do
    case $kind in
        plain) flags=--no-outlines offsets="0.0 0.0" replay= quiet= ;;
        crowded) flags=--crowded offsets="0.0 0.0" replay= quiet= ;;
        crossings) flags=--crowded offsets="100 100" replay= quiet= ;;
        quiet) flags=--crowded offsets="100 100" replay= quiet=--quiet ;;
        replay) flags="--no-outlines --journal 300" offsets="0.0 0.0" quiet= ;;
        *) echo "compare-batch: unknown kind $kind" >&2 && exit 2 ;;
    esac
    for size in $sizes; do
        for seed in $seeds; do
            root=$work/job-$kind-$size-$seed
            "$makejob" "$size" "$seed" "$root" $flags >/dev/null
            if [ "$kind" = replay ]; then
                # Drawn on corner 4; on the other corners lines may name what is not there.
                replay="--replay $root/job.journal --replay-any"
            fi
            cp "$root/job/job.txt" "$work/job.orig"
            for corner in 1 2 3 4; do
                for side in old new; do
                    eval batch=\$$side
                    rm -rf "$root/out" && mkdir "$root/out"
                    cp "$work/job.orig" "$root/job/job.txt"
                    run "$batch" "$root" "$corner" "$work/$side.1"
                    run "$batch" "$root" "$corner" "$work/$side.2"
                    # Every third part asks for more pieces, every fifth for fewer.
                    awk -F, 'BEGIN { OFS = "," } /^A[0-9]/ { n++; if (n % 3 == 0) $8 += 7;
                             else if (n % 5 == 0 && $8 > 2) $8 -= 2 } { print }' \
                        "$work/job.orig" >"$root/job/job.txt"
                    run "$batch" "$root" "$corner" "$work/$side.3"
                done
                for f in "$work"/old.*; do
                    g=$work/new.${f#"$work"/old.}
                    if ! cmp -s "$f" "$g"; then
                        echo "DIFFERENT: $kind size $size seed $seed corner $corner ${f##*/}"
                        diff "$f" "$g" | head -20
                        exit 1
                    fi
                done
                runs=$((runs + 3))
            done
        done
    done
done
echo "compare-batch: $runs runs, every file and message the same"
