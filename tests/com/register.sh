#!/usr/bin/env bash
# Registers a DLL, or unregisters it and looks whether anything is left:
# register.sh WINE x64|x86 DLL PROGID CLSID [/u]
set -euo pipefail
wine=$1 arch=$2 dll="Z:${3//\//\\}" progid=$4 clsid=$5
"$wine" "$arch" regsvr32 /s ${6:+"$6"} "$dll"

registered=$("$wine" "$arch" reg query "HKCR\\$progid\\CLSID" 2>/dev/null | tr -d '\r' || true)
if [[ -z ${6:-} ]]; then
    [[ $registered == *"$clsid"* ]]
    exit
fi
for root in 'HKLM\Software\Classes' 'HKCU\Software\Classes'; do
    # The library's name as it stands in ProgIDs, paths and texts; a folder may be called so.
    left=$("$wine" "$arch" reg query "$root" /s 2>/dev/null | grep -aiE "${progid%%.*}[. ]" || true)
    if [[ -n $left ]]; then
        printf 'left behind in %s:\n%s\n' "$root" "$left"
        exit 1
    fi
done
