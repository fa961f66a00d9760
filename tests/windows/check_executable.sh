#!/usr/bin/env bash
# Checks what kind of program the Windows build made: a 64-bit (PE32+)
# console-subsystem executable whose imports are all DLLs that every Windows
# installation has, so the one .exe runs with nothing installed beside it.
# Usage: check_executable.sh <vornco.exe>
set -euo pipefail
exe=$1
headers=$(x86_64-w64-mingw32-objdump -p "$exe")
fail() { echo "check_executable: $exe: $*"; exit 1; }

grep -q 'file format pei-x86-64' <<<"$headers" || fail "not a 64-bit Windows program"
grep -Eq '^Magic[[:space:]]+020b[[:space:]]+\(PE32\+\)' <<<"$headers" || fail "not PE32+"
grep -Eq '^Subsystem[[:space:]]+00000003[[:space:]]+\(Windows CUI\)' <<<"$headers" ||
  fail "not a console program: $(grep '^Subsystem' <<<"$headers")"

system_dlls='advapi32 cfgmgr32 gdi32 imm32 kernel32 msvcrt ole32 oleaut32 setupapi shell32 shlwapi user32 version winmm'
count=0
while read -r dll; do
  name=$(tr '[:upper:]' '[:lower:]' <<<"${dll%.dll}")
  name=${name%.dll}
  [[ " $system_dlls " == *" $name "* ]] || fail "imports $dll, which Windows does not ship"
  count=$((count + 1))
done < <(sed -n 's/^[[:space:]]*DLL Name: //p' <<<"$headers")
[ "$count" -gt 0 ] || fail "no import table found"
echo "check_executable: PE32+, Windows CUI, $count system DLLs imported"
