#!/bin/sh
# check-exports.sh TRIPLE DLL: the library exports the names of its .def and no other, none of them decorated, and
# loads with what every Windows has.
set -e
wanted=$(sed -n 's/^ \+//p' "$(dirname "$0")/VlmASLServicesLib.def" | sort)
headers=$("$1-objdump" -p "$2")
exported=$(echo "$headers" | sed -n '/\[Ordinal\/Name Pointer\] Table/,/^$/s/^\t\[ *[0-9]*\] //p' | sort)
if [ "$wanted" != "$exported" ]; then
    echo "$2 exports:" $exported >&2
    exit 1
fi
brought=$(echo "$headers" | sed -n 's/^\tDLL Name: //p' | grep -i -E '^lib|winpthread' || true)
if [ -n "$brought" ]; then
    echo "$2 needs:" $brought >&2
    exit 1
fi
echo "$2 exports" $exported
