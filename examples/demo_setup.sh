# Shared set-up of demo.sh and screenshot.sh (POSIX sh, sourced, not run).
# Copies the sample installation into the build folder and points Kesto at it.
# Arguments: [build folder] [language]; with "ja" the files of examples/ja/install (Japanese
# settings, pallet file and job in Shift_JIS) are laid over the English sample's.
# Sets: BUILD (absolute build folder), DEMO (installation copy), KESTO_ARGS, SAMPLE_LANGUAGE
# and SAMPLE_SUFFIX ("" or "-ja", for the names of the demo's folders).
# shellcheck disable=SC2034 # the variables are for the scripts that source this file

demo_setup() {
    examples=$(CDPATH='' cd -- "$(dirname -- "$0")" && pwd)
    repo=$(dirname -- "$examples")
    build_arg=${1:-build}
    case $build_arg in
        /*) BUILD=$build_arg ;;
        *) BUILD=$repo/$build_arg ;;
    esac
    if [ ! -d "$BUILD" ]; then
        echo "demo: build folder $BUILD not found (run: make build)" >&2
        exit 1
    fi
    SAMPLE_LANGUAGE=${2:-}
    SAMPLE_SUFFIX=
    if [ -n "$SAMPLE_LANGUAGE" ]; then
        if [ ! -d "$examples/$SAMPLE_LANGUAGE/install" ]; then
            echo "demo: no sample installation examples/$SAMPLE_LANGUAGE/install" >&2
            exit 1
        fi
        SAMPLE_SUFFIX=-$SAMPLE_LANGUAGE
    fi
    DEMO=$BUILD/demo-install$SAMPLE_SUFFIX
    # Refresh everything but out/, so that a second run restores the first run's save file.
    mkdir -p "$DEMO/out"
    for item in "$examples"/install/*; do
        name=$(basename -- "$item")
        [ "$name" = out ] && continue
        rm -rf "${DEMO:?}/$name"
        cp -R "$item" "$DEMO/$name"
    done
    # The language's own files replace the English ones; the rest (outlines, setup list) is shared.
    if [ -n "$SAMPLE_LANGUAGE" ]; then
        cp -R "$examples/$SAMPLE_LANGUAGE/install/." "$DEMO/"
    fi
    mkdir -p "$BUILD/demo-config$SAMPLE_SUFFIX"
    ORVOSystemRoot=$DEMO
    XDG_CONFIG_HOME=$BUILD/demo-config$SAMPLE_SUFFIX
    # The window's journal of the demo's job stays in the build folder too.
    XDG_STATE_HOME=$BUILD/demo-state$SAMPLE_SUFFIX
    export ORVOSystemRoot XDG_CONFIG_HOME XDG_STATE_HOME
    # Pallet file, direct flag, inch flag, offset A, offset B, start corner. The offsets
    # keep stacks 100 mm off the top edge of the 1500 mm table and 10 mm off its front edge.
    KESTO_ARGS="pallet/pallets.txt 0 0 1400 10 1"
    cd "$DEMO" || exit 1
}
