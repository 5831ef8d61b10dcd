#!/bin/sh
# Tests a wheel of the Python package: WHEEL [what pytest takes]. It is installed in a new environment, with nothing but
# Debian's packages beside it; of the source tree only the tests are read.
set -eu
cd "$(dirname "$0")/.."
repository=$PWD
wheel=$1
shift
unset PYTHONPATH PYTHONHOME
environment=$(mktemp -d)
trap 'rm -rf "$environment"' EXIT

"${PYTHON:-/usr/bin/python3}" -m venv --system-site-packages "$environment"
python=$environment/bin/python
"$python" -m pip --isolated install --quiet --no-index --no-deps "$wheel"
# From another folder, so that no module of the tree is found by chance.
cd "$environment"
NBSCORE_REPOSITORY=$repository "$python" -B -m pytest -q -p no:cacheprovider "$repository/tests/python" "$@"
