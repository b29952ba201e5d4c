#!/bin/sh
# Runs the sample job with kesto-batch and then, when a display is there, in the window.
# Usage: sh examples/demo.sh [build folder] [language]   (default: build, the English sample;
#        language ja: the Japanese sample of examples/ja)

. "$(dirname -- "$0")/demo_setup.sh"
demo_setup "$@"

if [ ! -x "$BUILD/kesto-batch" ]; then
    echo "demo: $BUILD/kesto-batch not found (run: make build)" >&2
    exit 1
fi

# The placement's picture for the shop floor, when the picture program was built.
PICTURE_ARGS=
if [ -x "$BUILD/kesto-picture" ]; then
    rm -f out/placement.pdf
    PICTURE_ARGS="--picture out/placement.pdf"
fi

echo "== system folder: $DEMO"
echo "== kesto-batch $PICTURE_ARGS $KESTO_ARGS"
# shellcheck disable=SC2086 # the arguments are blank-separated tokens on purpose
"$BUILD/kesto-batch" $PICTURE_ARGS $KESTO_ARGS
code=$?
echo "== exit code: $code"

# The files keep the job's bytes; Shift_JIS ones are shown converted for the terminal.
show_head() {
    if iconv -f UTF-8 -t UTF-8 "$1" >/dev/null 2>&1; then
        head -n 5 "$1"
    else
        echo "   (Shift_JIS, shown as UTF-8)"
        head -n 5 "$1" | iconv -f CP932 -t UTF-8
    fi
}

echo "== files written"
for file in out/kesto_result.csv out/kesto_result.csv_tmp out/kesto_haichi.csv; do
    if [ -f "$file" ]; then
        echo "-- $file ($(wc -l < "$file") lines)"
        show_head "$file"
    else
        echo "-- $file: not written"
    fi
done

if [ -f out/placement.pdf ]; then
    echo "== placement picture: $DEMO/out/placement.pdf"
fi

if { [ -n "${DISPLAY:-}" ] || [ -n "${WAYLAND_DISPLAY:-}" ]; } && [ -x "$BUILD/kesto" ]; then
    echo "== opening the window on the same job"
    # shellcheck disable=SC2086
    "$BUILD/kesto" $KESTO_ARGS
    echo "== window closed, exit code: $?"
else
    echo "== to open the window on this job:"
    echo "   cd $DEMO && ORVOSystemRoot=$DEMO XDG_CONFIG_HOME=$XDG_CONFIG_HOME XDG_STATE_HOME=$XDG_STATE_HOME $BUILD/kesto $KESTO_ARGS"
fi
exit "$code"
