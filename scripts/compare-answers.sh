#!/bin/sh
# Compares what the Linux build and the Windows build answer to random documents and cases: the dumps of the models and
# the bits of every score. Both builds have their tests built.
set -eu
cd "$(dirname "$0")/.."
mkdir -p build/answers
build/test/tests/write_random_answers build/test/lib/libnaivebayes.so build/answers/linux.txt
scripts/under-wine.sh build/windows/tests/write_random_answers.exe build/windows/bin/naivebayes.dll build/answers/windows.txt
cmp build/answers/linux.txt build/answers/windows.txt
echo "Linux and Windows answer alike: $(wc -l <build/answers/linux.txt) lines, $(wc -c <build/answers/linux.txt) bytes"
