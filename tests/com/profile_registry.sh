#!/usr/bin/env bash
# Lets a script save a profile, and compares the values that it leaves with what Wine's own reg.exe reads:
# profile_registry.sh WINE x64|x86
set -euo pipefail
wine=$1 arch=$2
key='HKEY_CURRENT_USER\Software\TarnCom32 query test'
here=$(cd "$(dirname "$0")" && pwd)

"$wine" "$arch" reg delete "$key" /f >/dev/null 2>&1 || true
"$here/run_script.sh" "$wine" "$arch" "$here/registry/profile_values.vbs"

# The order of the values is the registry's own.
left=$("$wine" "$arch" reg query "$key" /s | tr -d '\r' | sed '/^$/d' | sort)
expected=$(sort <<'END'
HKEY_CURRENT_USER\Software\TarnCom32 query test\Default
    Width    REG_SZ    12
    Empty    REG_SZ    
    Folder    REG_SZ    C:\Program Files\Vendor
    Share    REG_SZ    \\server\share
    With blanks    REG_SZ     in front and behind 
    Number    REG_SZ    12.5
    Colour    REG_SZ    green
    Added later    REG_SZ    by a new entry
    Read only    REG_SZ    
END
)
diff <(printf '%s\n' "$expected") <(printf '%s\n' "$left")
"$wine" "$arch" reg delete "$key" /f >/dev/null
