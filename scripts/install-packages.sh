#!/bin/sh
# Installs the missing Debian packages of each group named as an argument, and only those.
set -eu

packages_for() {
    case "$1" in
        build)
            echo g++ cmake ninja-build pkg-config libxerces-c-dev libcli11-dev nlohmann-json3-dev
            echo libre2-dev libutf8proc-dev libboost-math-dev libhwy-dev
            ;;
        test) echo libgtest-dev libgmock-dev librapidcheck-dev python3 groff-base node-csv-spectrum ;;
        # dpkg-dev, unicode-data and python3-six are for scripts/windows-prefix.sh, zip for scripts/pack-windows.sh.
        windows)
            echo g++-mingw-w64-x86-64-posix dpkg-dev unicode-data python3-six zip
            ;;
        windows-run) echo wine wine64 ;;
        lint) echo clang clang-format libclang-rt-14-dev llvm-14 python3 git ;;
        bench) echo libbenchmark-dev python3 valgrind ;;
        python) echo python3-dev python3-venv python3-pip python3-numpy ;;
        test-python) echo python3-pandas python3-pytest python3-matplotlib mypy ;;
        peers) echo python3-sklearn python3-pandas ;;
        foreign) echo npm ;;
        test-peers) echo python3 python3-sklearn r-cran-e1071 r-cran-mass ;;
        *) echo "install-packages.sh: unknown group $1" >&2; exit 2 ;;
    esac
}

missing=
for group in "$@"; do
    for package in $(packages_for "$group"); do
        status=$(dpkg-query -W -f '${Status}' "$package" 2>/dev/null || true)
        [ "$status" = "install ok installed" ] || missing="$missing $package"
    done
done
[ -n "$missing" ] || exit 0

as_root=
if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || { echo "These packages are missing and need root to install:$missing" >&2; exit 1; }
    as_root=sudo
fi
echo "Packages are missing. Running:$(printf '\n  %s' "${as_root:+$as_root }apt-get update" \
    "${as_root:+$as_root }apt-get install --no-install-recommends$missing")"
$as_root apt-get update -qq
# shellcheck disable=SC2086 # a list of words on purpose
$as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends $missing
