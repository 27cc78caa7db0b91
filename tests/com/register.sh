#!/usr/bin/env bash
# Registers a DLL, or unregisters it and looks whether anything is left: register.sh WINE x64|x86 DLL [/u]
set -euo pipefail
wine=$1 arch=$2 dll="Z:${3//\//\\}"
"$wine" "$arch" regsvr32 /s ${4:+"$4"} "$dll"

registered=$("$wine" "$arch" reg query 'HKCR\TarnCom32.StringFunctions\CLSID' 2>/dev/null | tr -d '\r' || true)
if [[ -z ${4:-} ]]; then
    [[ $registered == *'{742B0880-9FAA-4D8E-B4DE-086F4FAA22D3}'* ]]
    exit
fi
for root in 'HKLM\Software\Classes' 'HKCU\Software\Classes'; do
    left=$("$wine" "$arch" reg query "$root" /s 2>/dev/null | grep -aiE 'TarnCom32' || true)
    if [[ -n $left ]]; then
        printf 'left behind in %s:\n%s\n' "$root" "$left"
        exit 1
    fi
done
