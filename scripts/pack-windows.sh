#!/bin/sh
# Packs the Windows build, with everything needed to run it and to build against it, into
# build/nbscore-<version>-windows-x64.zip.
set -eu
cd "$(dirname "$0")/.."
version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' build/windows/CMakeCache.txt)
name=nbscore-$version-windows-x64

rm -rf "build/$name" "build/$name.zip"
cmake --install build/windows --prefix "build/$name" --strip >/dev/null
(cd build && zip -q -r "$name.zip" "$name")
echo "build/$name.zip"
