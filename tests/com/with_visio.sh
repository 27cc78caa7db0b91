#!/usr/bin/env bash
# Runs a script while "Visio.Application" is the stand-in, in the test bed's own registry:
# with_visio.sh WINE x64|x86 SCRIPT
set -euo pipefail
wine=$1 arch=$2
key='HKLM\Software\Classes\Visio.Application'
trap '"$wine" "$arch" reg delete "$key" /f >/dev/null 2>&1' EXIT
"$wine" "$arch" reg add "$key\\CLSID" /ve /d '{29ED9619-1CBA-409C-902D-9CB9EB8D3756}' /f >/dev/null
"$(dirname "$0")/run_script.sh" "$@"
