#!/usr/bin/env bash
# Checks what kind of program the Windows build made: a 64-bit (PE32+)
# console-subsystem executable whose imports are all DLLs that every Windows
# installation has, so the one .exe runs with nothing installed beside it,
# and whose application manifest declares it aware of each monitor's DPI, so
# Windows never blows the game up as a bitmap on a scaled desktop.
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

# The manifest is resource type 24 (0x18), id 1. Its leaf in the resource
# directory gives the data's address (relative to the image base) and size;
# the bytes are read out of the .rsrc section.
leaf=$(awk '/^[0-9a-f]+   Entry: ID: 0x000018,/ { found = 1; next }
            found && /Leaf: Addr:/ { gsub(",", ""); print $4, $6; exit }' <<<"$headers")
[ -n "$leaf" ] || fail "no application manifest (resource type 24)"
read -r addr size <<<"$leaf"
base=$(awk '$1 == "ImageBase" { print $2; exit }' <<<"$headers")
section=$(x86_64-w64-mingw32-objdump -h "$exe" | awk '$2 == ".rsrc" { print $4; exit }')
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
x86_64-w64-mingw32-objcopy -O binary --only-section=.rsrc "$exe" "$scratch/rsrc.bin"
offset=$((addr - (0x$section - 0x$base)))
manifest=$(tail -c +"$((offset + 1))" "$scratch/rsrc.bin" | head -c "$((size))" | tr -d '\r')
grep -Eq '<dpiAwareness[^>]*>[[:space:]]*PerMonitorV2' <<<"$manifest" ||
  fail "the manifest does not declare per-monitor (v2) DPI awareness"
grep -Eq '<dpiAware[[:space:]][^>]*>[[:space:]]*true/pm[[:space:]]*</dpiAware>' <<<"$manifest" ||
  fail "the manifest lacks dpiAware true/pm for older Windows"
echo "check_executable: PE32+, Windows CUI, $count system DLLs imported, per-monitor DPI aware"
