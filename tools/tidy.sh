#!/bin/sh
# Looks for faults with clang-tidy: tidy.sh [--changed] [JOBS]. With --changed in the sources that the commits since the
# last tag (or the last twenty) wrote, newest first and sixty at most; what was only moved does not count. Sources of
# another machine are left out.
set -e
cd "$(dirname "$0")/.."
most=60
which=all
if [ "$1" = --changed ]; then
    which=changed
    shift
fi
jobs=${1:-1}
mkdir -p build

# Unity builds compile other files than these, so the list of compile commands comes from a build folder of its own.
cmake -S . -B build/tidy -G Ninja -DCMAKE_BUILD_TYPE=Debug -DCMAKE_EXPORT_COMPILE_COMMANDS=ON > build/tidy.log ||
    { cat build/tidy.log; exit 1; }

changed() {
    tag=$(git describe --tags --abbrev=0 2>/dev/null || true)
    git log --no-merges --format= --name-status -M ${tag:+"$tag..HEAD"} ${tag:--n 20} | awk -F'\t' '
        { path = $NF; while (path in now) path = now[path] }
        /^R/ { if ($2 != path) now[$2] = path }
        /^(A|M|R)/ && !/^R100/ && !(path in seen) { seen[path] = 1; print path }'
}
compiled() { # those of the files named that this machine compiles
    while read -r file; do
        grep -qF "$PWD/$file\"" build/tidy/compile_commands.json && echo "$file"
    done
    true
}

if [ "$which" = changed ]; then
    changed | grep '\.cpp$' | compiled > build/tidy.files || true
    count=$(wc -l < build/tidy.files)
    if [ "$count" -gt $most ]; then
        echo "clang-tidy: $((count - most)) of $count changed files are left out (make tidy looks at all)"
        head -n $most build/tidy.files > build/tidy.some && mv build/tidy.some build/tidy.files
    fi
else
    git ls-files '*.cpp' | compiled > build/tidy.files
fi
echo "clang-tidy: $(wc -l < build/tidy.files) files"
xargs -r -P "$jobs" -n 4 clang-tidy -p build/tidy --quiet --extra-arg=-w < build/tidy.files \
    2> build/tidy.log || { cat build/tidy.log; exit 1; }
