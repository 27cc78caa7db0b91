#!/usr/bin/env bash
# Installs a build into a folder of its own, builds clients against it by pkg-config alone, shared with the first compiler
# and static with the second, and runs them: install_test.sh BUILD_FOLDER CMAKE COMPILER COMPILER
set -euo pipefail
build=$1 cmake=$2 for_shared=$3 for_static=$4
compiler_of() { if [[ $1 == *-static ]]; then echo "$for_static"; else echo "$for_shared"; fi; }
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

"$cmake" --install "$build" --prefix "$folder/installed" >"$folder/log" 2>&1 || { cat "$folder/log"; exit 1; }
# Moved, as a package would be: nothing may point back to the first place.
mv "$folder/installed" "$folder/moved"
PKG_CONFIG_PATH=$(dirname "$(find "$folder/moved" -name tarncom32.pc)")
export PKG_CONFIG_PATH
LD_LIBRARY_PATH=$(dirname "$PKG_CONFIG_PATH")
export LD_LIBRARY_PATH

examples=$(dirname "${BASH_SOURCE[0]}")/../examples
client=$examples/native_client.cpp
wanted='folder: C:\plans
colour: red
matches: 2
fields: 3
error 457: This key is already associated with an element of this collection'

for kind in tarncom32 tarncom32-static; do
    read -ra flags < <(pkg-config --cflags --libs "$kind")
    "$(compiler_of "$kind")" -std=c++20 "$client" -o "$folder/$kind" "${flags[@]}"
    answer=$("$folder/$kind")
    if [[ $answer != "$wanted" ]]; then
        echo "the client of $kind printed '$answer'"
        exit 1
    fi
done
wanted='page: Upper floor
shape: Team A
shape: Switch
shape: Spare PC
shape: Cable
shape: Cable.25'
for kind in tarnvisiostandin tarnvisiostandin-static; do
    read -ra flags < <(pkg-config --cflags --libs "$kind")
    "$(compiler_of "$kind")" -std=c++20 "$examples/standin_client.cpp" -o "$folder/$kind" "${flags[@]}"
    answer=$("$folder/$kind" "$examples/drawings/office-network.vsdx" "/doc=1 /page=2")
    if [[ $answer != "$wanted" ]]; then
        echo "the client of $kind printed '$answer'"
        exit 1
    fi
done
# Every installed header can be used from where it is now.
(cd "$folder/moved/include/tarncom32" && find . -name '*.h' | sort -r | sed 's|^./\(.*\)|#include "\1"|') >"$folder/headers.cpp"
read -ra flags < <(pkg-config --cflags tarncom32)
for compiler in "$for_shared" "$for_static"; do
    "$compiler" -std=c++20 -fsyntax-only "$folder/headers.cpp" "${flags[@]}"
done
readelf -d "$folder/tarncom32" | grep -q 'NEEDED.*libtarncom32.so.1' || { echo "not linked to the shared library"; exit 1; }
if readelf -d "$folder/tarncom32-static" | grep -q 'libtarncom32'; then
    echo "the static client needs the shared library"
    exit 1
fi
