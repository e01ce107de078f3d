#!/bin/sh
# Builds the library on the infrastructure of tests/host, and compares its listing of a FED file with the program's. Usage:
# host_test.sh PROGRAM FED BUILD_DIR CMAKE_OPTION...
set -eu
here=$(dirname "$0")
program=$1 fed=$2 build=$3
shift 3

cmake -S "$here/host" -B "$build" "$@"
cmake --build "$build"
"$build/host" "$fed" "$build/image" >"$build/listing"
"$program" list "$fed" | diff - "$build/listing"
"$program" save "$fed" "$build/our-image"
! cmp -s "$build/image" "$build/our-image" || { echo "FAILED: the images are the same"; exit 1; }
