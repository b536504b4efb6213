#!/bin/sh
# Builds the embedded database engine for Windows, which no package of this machine brings:
#   build-engine.sh FOLDER TRIPLE [TRIPLE ...]
# It comes from the distribution's own source package, by the sources that the machine already names. Each FOLDER/TRIPLE
# gets include/ and lib/; what is there is not built again.
set -e
folder=$(realpath -m "$1")
shift
missing=""
for triple; do [ -f "$folder/$triple/lib/libsqlite3.a" ] || missing="$missing $triple"; done
[ -n "$missing" ] || exit 0

# The machine's sources of packages, read as sources of their code: lists of our own, so that the machine keeps its.
apt="$folder/apt"
mkdir -p "$apt/sources" "$apt/lists/partial"
for list in /etc/apt/sources.list /etc/apt/sources.list.d/*; do
    [ -f "$list" ] && sed 's/^deb[[:space:]]/deb-src /; s/^Types:.*/Types: deb-src/' "$list" > "$apt/sources/$(basename "$list")"
done
own="-o Dir::Etc::SourceList=/dev/null -o Dir::Etc::SourceParts=$apt/sources -o Dir::State::Lists=$apt/lists
  -o Dir::Cache=$apt -o APT::Sandbox::User= -o APT::Get::List-Cleanup=0"
apt-get update -qq $own || true # a source that keeps no code fails; the rest is there all the same
rm -rf "$folder"/sqlite3-*
(cd "$folder" && apt-get source -qq $own sqlite3 > apt.log 2>&1) || { cat "$folder/apt.log" >&2; exit 1; }
source=$(find "$folder" -maxdepth 1 -type d -name 'sqlite3-*')
(cd "$source" && ./configure -q --disable-tcl && make -s sqlite3.c) > "$folder/source.log" 2>&1 ||
    { cat "$folder/source.log" >&2; exit 1; }

for triple in $missing; do
    mkdir -p "$folder/$triple/include" "$folder/$triple/lib"
    cp "$source/sqlite3.h" "$folder/$triple/include"
    "$triple-gcc-posix" -O1 -w -DSQLITE_OMIT_LOAD_EXTENSION -c "$source/sqlite3.c" -o "$folder/sqlite3.o"
    "$triple-ar" rcs "$folder/$triple/lib/libsqlite3.a" "$folder/sqlite3.o"
done
rm -rf "$source" "$folder"/sqlite3_* "$folder/sqlite3.o" "$apt"
