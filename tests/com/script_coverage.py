"""Fails unless each member of the type library's description is called by a script: IDL SCRIPT..."""

import re
import sys


def main():
    idl = open(sys.argv[1], encoding="utf-8").read()
    scripts = "".join(open(name, encoding="utf-8").read() for name in sys.argv[2:]).lower()
    members = set()
    for interface in re.findall(r"interface _\w+ : IDispatch\n\{(.*?)\n\}", idl, re.S):
        members |= set(re.findall(r"HRESULT (\w+)\(", interface))
    missing = sorted(
        name
        for name in members - {"NewEnum"}
        if not re.search(r"\." + name.lower() + r"\b", scripts)
    )
    print(f"{len(members)} members, without a script: {', '.join(missing) or 'none'}")
    return 1 if missing or not members else 0


sys.exit(main())
