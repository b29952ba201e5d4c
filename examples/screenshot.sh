#!/bin/sh
# Opens the sample job in the window without a display and saves a picture of each view:
# main-flat.png, main-danmen.png, main-4pallet.png, main-2pallet.png, main-3d.png,
# main-info.png (a stack picked), main-drag.png (a stack carried, its landing shown) and
# main-zoom.png (zoomed on a pick, the overview in the corner), plus
# main.png (the window as it opens, FLAT).
# Usage: sh examples/screenshot.sh [build folder] [language]   (default: build, the English
#        sample, pictures in <build>/screenshots; language ja: examples/ja, in <build>/screenshots-ja)

. "$(dirname -- "$0")/demo_setup.sh"
demo_setup "$@"

if [ ! -x "$BUILD/kesto" ]; then
    echo "screenshot: $BUILD/kesto not found (build with the window program)" >&2
    exit 1
fi

SHOTS=$BUILD/screenshots$SAMPLE_SUFFIX
mkdir -p "$SHOTS"
limit=
command -v timeout >/dev/null 2>&1 && limit="timeout 120"
failed=0
for view in flat danmen 4pallet 2pallet 3d info drag zoom; do
    shot=$SHOTS/main-$view.png
    rm -f "$shot"
    # shellcheck disable=SC2086 # the arguments are blank-separated tokens on purpose
    QT_QPA_PLATFORM=offscreen KESTO_SCREENSHOT=$shot KESTO_SCREENSHOT_VIEW=$view \
        $limit "$BUILD/kesto" $KESTO_ARGS
    code=$?
    if [ -s "$shot" ]; then
        echo "screenshot: $shot ($(wc -c < "$shot") bytes, kesto exit code $code)"
    else
        echo "screenshot: no picture written for $view (kesto exit code $code)" >&2
        failed=1
    fi
done
[ "$failed" = 0 ] || exit 1
cp "$SHOTS/main-flat.png" "$SHOTS/main.png"
echo "screenshot: $SHOTS/main.png (the window as it opens)"
