#!/bin/sh
# Runs the sample installation of examples/ through the Linux kesto-batch and, under Wine,
# through the Windows one, twice each (the second run restores the first one's save file), and
# checks that both write the same three files: the Windows file is the Linux file with every
# line feed written as carriage return + line feed (text mode), nothing else differs. The exit
# codes must match too, and a start-up failure gives Windows the full code that Linux prints.
#   same_bytes.sh LINUX_KESTO_BATCH WINDOWS_KESTO_BATCH_EXE SOURCE_DIR WORK_DIR
# Wine's prefix comes from WINEPREFIX.
set -eu
linux_batch=$1
windows_batch=$2
source_dir=$3
work=$4
args="pallet/pallets.txt 0 0 0 0 1"

rm -rf "$work"
mkdir -p "$work"
cp -R "$source_dir/examples/install" "$work/linux"
cp -R "$source_dir/examples/install" "$work/windows"
mkdir -p "$work/linux/out" "$work/windows/out"
windows_root=$(winepath -w "$work/windows")

# The three files as the setup list names them: IEK (and IEK + _tmp) and IEL.
setup_value() {
  sed -n '/^#File/,/^#End/p' "$source_dir/examples/install/bin/Ks_Setup.ini" |
    awk -v key="$1" '$1 == key && $2 == ":" { print $3; exit }' | tr '\\' /
}
result=$(setup_value IEK)
files="$result ${result}_tmp $(setup_value IEL)"

# One run on each side: the Linux exit status and the full Windows exit code.
run_linux() {
  linux_code=0
  (cd "$work/linux" && ORVOSystemRoot="$work/linux" XDG_CONFIG_HOME="$work/linux-config" \
     "$linux_batch" --answer ok $1 >"$work/linux.log" 2>&1) || linux_code=$?
}
run_windows() {
  # The system folder comes from the machine's registry; the full exit code through cmd.
  wine reg add 'HKLM\SOFTWARE\ORVONetwork\Common\SystemInformation' /v ORVOSystemRoot \
    /t REG_SZ /d "$windows_root" /f >/dev/null 2>&1
  windows_code=$(cd "$work/windows" && wine cmd /c \
    "$(winepath -w "$windows_batch") --answer ok $1 >NUL 2>&1 & echo %ERRORLEVEL%" | tr -d '\r')
}

status=0
for run in 1 2; do
  run_linux "$args"
  run_windows "$args"
  if [ "$linux_code" != "$windows_code" ]; then
    echo "run $run: exit code $linux_code on Linux, $windows_code on Windows"
    status=1
  fi
  for file in $files; do
    if [ ! -f "$work/linux/$file" ] || [ ! -f "$work/windows/$file" ]; then
      echo "run $run: $file missing on one side"
      status=1
      continue
    fi
    # Text mode: the Linux line feeds become CR LF, every other byte as it stands.
    sed 's/$/\r/' "$work/linux/$file" >"$work/expected.crlf"
    if cmp -s "$work/expected.crlf" "$work/windows/$file"; then
      echo "run $run: $file same bytes ($(wc -l <"$work/linux/$file") lines, CR LF on Windows)"
    else
      echo "run $run: $file differs (Linux with CR LF vs Windows):"
      cmp "$work/expected.crlf" "$work/windows/$file" || true
      status=1
    fi
  done
done

# A start-up failure: POSIX keeps the low 8 bits and prints the full code, Windows returns it.
run_linux "pallet/none.txt 0 0 0 0 1"
run_windows "pallet/none.txt 0 0 0 0 1"
full=$(sed -n 's/^kesto: exit code //p' "$work/linux.log")
if [ -z "$full" ] || [ "$windows_code" != "$full" ] || [ "$linux_code" != $((full % 256)) ]; then
  echo "missing pallet file: Linux $linux_code (printed '$full'), Windows $windows_code"
  status=1
else
  echo "missing pallet file: Linux $linux_code, Windows $windows_code (the full code)"
fi
exit $status
