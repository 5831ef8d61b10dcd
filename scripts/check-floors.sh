#!/bin/sh
# A folder of src/ may include only itself and the folders above it in the list; XML headers only where XML is read;
# keys from outside are hashed under a seed.
set -eu
cd "$(dirname "$0")/.."

floors="framework naivebayes selflearning translator batch document host cli"
failed=0
allowed=
for floor in $floors; do
    allowed="$allowed $floor"
    [ -d "src/$floor" ] || continue
    pattern=$(echo "$allowed" | sed 's/^ //; s/ /|/g')
    if grep -rnE '^#include "' "src/$floor" | grep -vE "#include \"($pattern)/"; then
        echo "^ src/$floor may include only: $allowed" >&2
        failed=1
    fi
done
if grep -rnE '^#include <xercesc/' src | grep -v '^src/framework/'; then
    echo "^ XML headers belong to src/framework only" >&2
    failed=1
fi
if grep -rnE 'std::unordered_|std::hash' src | grep -v '^src/framework/SeededHash.h:' |
    grep -vE 'std::unordered_(map|set)<(const )?[A-Za-z:]+\*[,>]'; then
    echo "^ only pointers are hashed without a seed: use SeededMap or SeededSet (framework/SeededHash.h)" >&2
    failed=1
fi
exit $failed
