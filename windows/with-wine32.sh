#!/bin/sh
# Runs a command as with-wine.sh does, with a Windows of 32 bits:
#   with-wine32.sh FOLDER COMMAND [ARGUMENT ...]
# There are three ways, tried in this order unless WINE32 names those to try:
#   machine      the machine's own Wine
#   unpacked     with what it lacks for 32 bits, unpacked below FOLDER and laid over /usr for this command alone
#   interpreted  that, and for a kernel that runs no 32-bit programs, a processor in a program
# Each has a prefix of its own below FOLDER. Where none works it says so in one line and succeeds: the fault is not in
# what was to be run.
set -e
here=$(realpath "$(dirname "$0")")
folder=$(realpath -m "$1")
shift
export WINEARCH=win32
mkdir -p "$folder"

bring() {
    case $1 in
    unpacked) "$here/unpack-wine32.sh" "$folder/packages" ;;
    interpreted) "$here/unpack-wine32.sh" "$folder/packages" &&
        "$here/unpack-wine32.sh" "$folder/packages" interpreter ;;
    esac
}

# in_way WAY COMMAND [ARGUMENT ...]
in_way() {
    way=$1
    shift
    [ "$way" != machine ] || { "$here/with-wine.sh" "$folder/$way" "$@"; return; }
    unshare -Urm sh -e -c '
        folder=$1
        mount -t overlay -o "lowerdir=$folder/packages/usr:/usr" overlay /usr
        if [ "$2" = interpreted ]; then
            magic="\x7fELF\x01\x01\x01\x00\x00\x00\x00\x00\x00\x00\x00\x00\x02\x00\x03\x00"
            mask="\xff\xff\xff\xff\xff\xfe\xfe\x00\xff\xff\xff\xff\xff\xff\xff\xff\xfe\xff\xff\xff"
            mount -t binfmt_misc binfmt_misc /proc/sys/fs/binfmt_misc
            printf "%s" ":i386:M::$magic:$mask:$folder/packages/qemu-i386:F" > /proc/sys/fs/binfmt_misc/register
        fi
        shift 2
        exec "$@"' sh "$folder" "$way" "$here/with-wine.sh" "$folder/$way" "$@"
}

why=""
for way in ${WINE32:-machine unpacked interpreted}; do
    log="$folder/$way.log"
    if ! bring "$way" > "$log" 2>&1; then
        why="$why $way: not to be had;"
    elif ! in_way "$way" timeout 300 wine cmd /c exit 0 >> "$log" 2>&1 </dev/null; then
        why="$why $way: runs none;"
    else
        in_way "$way" "$@"
        exit
    fi
done
echo "32-bit tests were built and not run: no Wine here runs 32-bit programs (${why# } see $folder/*.log)."
