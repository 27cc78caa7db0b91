#!/usr/bin/env bash
# Compares what a script prints, letter by letter, with a file: print_script.sh WINE x64|x86 SCRIPT EXPECTED
set -euo pipefail
TARNCOM32_REPORT_LOG='C:\tarncom32-'$(basename "$3").log
export TARNCOM32_REPORT_LOG
diff "$4" <("$1" "$2" cscript //nologo "Z:${3//\//\\}" | tr -d '\r')
