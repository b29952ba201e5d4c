#!/bin/sh
# Opens the sample job in the window without a display and saves a picture of it.
# Usage: sh examples/screenshot.sh [build folder]   (default: build)

. "$(dirname -- "$0")/demo_setup.sh"
demo_setup "$@"

if [ ! -x "$BUILD/kesto" ]; then
    echo "screenshot: $BUILD/kesto not found (build with the window program)" >&2
    exit 1
fi

mkdir -p "$BUILD/screenshots"
shot=$BUILD/screenshots/main.png
rm -f "$shot"
limit=
command -v timeout >/dev/null 2>&1 && limit="timeout 120"
# shellcheck disable=SC2086 # the arguments are blank-separated tokens on purpose
QT_QPA_PLATFORM=offscreen KESTO_SCREENSHOT=$shot $limit "$BUILD/kesto" $KESTO_ARGS
code=$?
echo "kesto exit code: $code"
if [ -s "$shot" ]; then
    echo "screenshot: $shot ($(wc -c < "$shot") bytes)"
else
    echo "screenshot: no picture written" >&2
    exit 1
fi
