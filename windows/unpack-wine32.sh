#!/bin/sh
# Unpacks what lets Wine run 32-bit programs, without installing any of it:
#   unpack-wine32.sh FOLDER
#   unpack-wine32.sh FOLDER interpreter
# The first brings the 32-bit packages of the machine's own release, below FOLDER/usr; the second FOLDER/qemu-i386, from
# the newest release, since older ones cannot run Wine. Both come from the mirror that the machine already names. What
# is there is not brought again.
set -e
folder=$(realpath -m "$1")
apt="$folder/apt"
own="-o Dir::State::Lists=$apt/lists -o Dir::Cache=$apt -o APT::Sandbox::User= -o Debug::NoLocking=1"

if [ "$2" != interpreter ]; then
    [ ! -d "$folder/usr" ] || exit 0
    # To resolve what they need, the machine is taken for an empty one of 32 bits.
    own="$own -o Dir::State::Status=$apt/status -o APT::Architecture=i386 -o APT::Architectures=i386"
    mkdir -p "$apt/lists/partial" "$apt/archives/partial"
    : > "$apt/status"
    apt-get update -qq $own || true # a source that has nothing for 32 bits fails; the rest is there all the same
    apt-get install -y -qq --no-install-recommends --download-only $own wine32 libodbc2 libsqliteodbc
    for package in "$apt"/archives/*_i386.deb; do dpkg-deb -x "$package" "$folder/new"; done
    [ ! -d "$folder/new/lib" ] || cp -a "$folder/new/lib" "$folder/new/usr" # what /lib leads to
    # What a package writes only when it is installed stands in the machine's Wine, too.
    cp /usr/lib/*/wine/i386-windows/zlib*.dll "$folder/new/usr/lib/i386-linux-gnu/wine/i386-windows" || true
    mv "$folder/new/usr" "$folder/usr"
    rm -rf "$folder/new"
else
    [ ! -x "$folder/qemu-i386" ] || exit 0
    mkdir -p "$apt/lists/partial" "$apt/qemu"
    . /etc/os-release
    mirror=$(apt-get indextargets --format '$(SITE)' "Release: $VERSION_CODENAME" 'Component: main' | head -n 1)
    echo "deb $mirror stable main" > "$apt/sources.list"
    own="$own -o Dir::Etc::SourceList=$apt/sources.list -o Dir::Etc::SourceParts=/dev/null"
    apt-get update -qq $own
    (cd "$apt/qemu" && apt-get download -qq $own qemu-user)
    dpkg-deb -x "$apt"/qemu/*.deb "$apt/qemu"
    mv "$apt/qemu/usr/bin/qemu-i386" "$folder"
fi
rm -rf "$apt"
