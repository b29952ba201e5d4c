#!/bin/sh
# Writes the Japanese installation's Shift_JIS files (install/) from their UTF-8 sources
# (utf8/), the way the machine's own Windows tools save them: code page 932.
# Edit the UTF-8 files, run this, commit both: the committed install/ files are the real bytes
# Kesto reads, and a test checks that they still decode to the UTF-8 sources.
# Usage: sh examples/ja/make_sjis.sh
set -eu
here=$(CDPATH='' cd -- "$(dirname -- "$0")" && pwd)
cd "$here/utf8"
find . -type f | sort | while read -r file; do
    target=$here/install/${file#./}
    mkdir -p "$(dirname -- "$target")"
    iconv -f UTF-8 -t CP932 "$file" > "$target.tmp"
    mv "$target.tmp" "$target"
    echo "make_sjis: $target"
done
