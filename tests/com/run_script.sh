#!/usr/bin/env bash
# Runs a test script by Wine's own script host: run_script.sh WINE x64|x86 SCRIPT
# The host prints nothing and exits 0 when a script breaks off: only the closing line proves that it came to its end.
set -euo pipefail
log='C:\tarncom32-'$(basename "$3").log
export TARNCOM32_REPORT_LOG=$log
output=$("$1" "$2" cscript //nologo "Z:${3//\//\\}" "$log" 2>&1) || true
printf '%s\n' "$output"
[[ $(tail -n 1 <<<"${output//$'\r'/}") == 'all checks passed' ]]
