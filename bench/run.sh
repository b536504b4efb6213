#!/bin/sh
# Every benchmark, on databases made afresh below the build folder.
set -e
build=$1
mkdir -p "$build/bench-data"
"$build/service_export_bench" "$build/bench-data"
"$build/odbc_export_bench" "$build/bench-data"
"$build/import_bench" "$build/bench-data/import"
