#!/bin/sh
# Checks the rules of src/: a folder may include only itself and the folders before it in the list, XML headers are
# included only where XML is read, and keys from outside are hashed under a seed.
set -eu
cd "$(dirname "$0")/.."

floors="framework factors pmml xml transform reading naivebayes selflearning standard translator standardtranslator batch evidence output table adapt verify ignored host check count c cli"
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
rooms=
for room in evaluation functions text reading; do
    rooms="$rooms $room"
    pattern=$(echo "$rooms" | sed 's/^ //; s/ /|/g')
    if grep -rnE '^#include "transform/' "src/transform/$room" | grep -vE "#include \"transform/($pattern)/"; then
        echo "^ src/transform/$room may include only, of src/transform:$rooms" >&2
        failed=1
    fi
done
if grep -rnE '^#include "(naivebayes|standard|translator|standardtranslator)/' src/table; then
    echo "^ src/table knows tables: neither documents nor what models are made of" >&2
    failed=1
fi
if grep -rnE '^#include "xml/' src | grep -v '^src/xml/'; then
    echo "^ src/xml is loaded at the first need, through pmml/XmlServices.h" >&2
    failed=1
fi
if grep -rnE '^#include <xercesc/' src | grep -vE '^src/(framework|pmml|xml|reading)/'; then
    echo "^ XML headers belong to src/pmml, src/xml and the contract's translators only" >&2
    failed=1
fi
if grep -rnE 'std::unordered_|std::hash' src | grep -v '^src/framework/SeededHash.h:' |
    grep -vE 'std::unordered_(map|set)<(const )?[A-Za-z:]+\*[,>]'; then
    echo "^ only pointers may be hashed without a seed: use SeededMap or SeededSet (framework/SeededHash.h)" >&2
    failed=1
fi
exit $failed
