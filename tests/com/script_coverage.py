"""Fails unless each member of the type library's description is called by a script: IDL SCRIPT...

Members that take a record are left to compiled clients: scripts have none.
"""

import re
import sys


def main():
    idl = open(sys.argv[1], encoding="utf-8").read()
    scripts = "".join(open(name, encoding="utf-8").read() for name in sys.argv[2:]).lower()
    record = re.compile(r"\b(%s)\*? " % "|".join(re.findall(r"^struct (\w+)", idl, re.M)))
    members = set()
    for interface in re.findall(r"interface _\w+ : IDispatch\n\{(.*?)\n\}", idl, re.S):
        lines = re.findall(r"HRESULT (\w+)\((.*)\);", interface)
        members |= {name for name, parameters in lines if not record.search(parameters)}
    missing = sorted(
        name
        for name in members - {"NewEnum", "_NewEnum"}
        if not re.search(r"\." + name.lower() + r"\b", scripts)
    )
    print(f"{len(members)} members, without a script: {', '.join(missing) or 'none'}")
    return 1 if missing or not members else 0


sys.exit(main())
