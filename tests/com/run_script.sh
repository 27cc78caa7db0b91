#!/usr/bin/env bash
# Runs a test script by Wine's own script host, a .vbs with the checks of prelude.vbs in front of it:
# run_script.sh WINE x64|x86 SCRIPT
# The host prints nothing and exits 0 when a script breaks off: only the closing line proves that it came to its end.
set -euo pipefail
script=$(mktemp "$PWD/script.XXXXXX.${3##*.}")
trap 'rm -f "$script"' EXIT
case $3 in
*.vbs) cat "$(dirname "$0")/prelude.vbs" "$3" - <<<'If failures = 0 Then WScript.Echo "all checks passed"' ;;
*) cat "$3" ;;
esac >"$script"
log='C:\tarncom32-'$(basename "$3").log
export TARNCOM32_REPORT_LOG=$log
output=$("$1" "$2" cscript //nologo "Z:${script//\//\\}" "$log" 2>&1) || true
printf '%s\n' "$output"
[[ $(tail -n 1 <<<"${output//$'\r'/}") == 'all checks passed' ]]
