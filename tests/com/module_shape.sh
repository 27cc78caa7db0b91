#!/usr/bin/env bash
# Whether a server's DLL exports its four entry points and nothing else, and needs nothing but Windows' own DLLs:
# module_shape.sh OBJDUMP DLL
set -euo pipefail
headers=$("$1" -p "$2" | tr -d '\r')

# The table of names, behind its title.
exported=$(sed -n '/^\[Ordinal\/Name Pointer\] Table/,/^$/p' <<<"$headers" | awk 'NR > 1 && NF { print $NF }' | sort)
diff <(printf '%s\n' DllCanUnloadNow DllGetClassObject DllRegisterServer DllUnregisterServer) \
    <(printf '%s\n' "$exported")

# In every Windows that is still in use, whichever programs are installed.
own='ADVAPI32|COMCTL32|COMDLG32|GDI32|KERNEL32|msvcrt|ole32|OLEAUT32|SHELL32|SHLWAPI|USER32|VERSION'
imported=$(sed -n 's/^.*DLL Name: //p' <<<"$headers")
[[ -n $imported ]]
strangers=$(grep -viE "^($own)\.dll$" <<<"$imported" || true)
if [[ -n $strangers ]]; then
    printf 'needed, and not of Windows:\n%s\n' "$strangers"
    exit 1
fi
