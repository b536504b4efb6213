#!/bin/sh
# Checks the walls between the rooms and prints who names whom; with --write it renews docs/rooms.md instead of
# comparing it. A wall is broken by a circle, by an arrow upward, by an include of a room that is not named, of what a
# room keeps for itself or by way of "..", and by a room that is named, or shown to others, for nothing.
set -e
cd "$(dirname "$0")/.."
page=docs/rooms.md

graph() {
    awk -v FORM="$1" -f tools/walls.awk \
        $(find libs src host tools -name CMakeLists.txt ! -path '*/tests/*' | sort) \
        $(find libs src host tools \( -name '*.h' -o -name '*.cpp' \) ! -path '*/tests/*' | sort)
}

if [ "$1" = --write ]; then
    graph page > "$page"
    exit
fi
graph text
if ! graph page | cmp -s - "$page"; then
    echo "$page is out of date: make rooms renews it" >&2
    exit 1
fi
# Tests of a library or of the mission reach a host through tests/support, never by a room of its own.
rooms=$(sed -n 's/^vlm_room(\([a-z]*\).*/\1/p' $(find host tools -name CMakeLists.txt) | paste -sd '|' -)
if grep -rnE "#include \"($rooms)/" libs src --include='*.h' --include='*.cpp' >&2; then
    echo "an include of a host's room" >&2
    exit 1
fi
