#!/bin/sh
# Compares the Linux build and the Windows build on random documents and cases: the dumps of the models and the bits of
# every score. The tests of both builds must be built.
set -eu
cd "$(dirname "$0")/.."
mkdir -p build/answers
build/test/tests/write_random_answers build/test/lib/libnaivebayes.so build/answers/linux.txt
scripts/under-wine.sh build/windows/tests/write_random_answers.exe build/windows/bin/naivebayes.dll build/answers/windows.txt
cmp build/answers/linux.txt build/answers/windows.txt
echo "Linux and Windows give the same dumps and scores: $(wc -l <build/answers/linux.txt) lines, $(wc -c <build/answers/linux.txt) bytes"
