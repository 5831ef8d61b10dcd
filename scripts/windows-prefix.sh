#!/bin/sh
# Cross-builds the libraries that nbscore needs for Windows, from Debian's own sources, into one folder:
# build/windows-prefix, or the one that NBSCORE_WINDOWS_PREFIX names, such as a cached folder. A folder that the same
# script has built from the same versions is left as it is.
set -eu
cd "$(dirname "$0")/.."
prefix=${NBSCORE_WINDOWS_PREFIX:-$PWD/build/windows-prefix}
jobs=${JOBS:-$(nproc)}

# Source packages, in the versions of the Debian packages that the Linux build uses.
version_of() { dpkg-query -W -f '${source:Version}' "$1"; }
xerces=xerces-c=$(version_of libxerces-c-dev)
re2=re2=$(version_of libre2-dev)
utf8proc=utf8proc=$(version_of libutf8proc-dev)
highway=highway=$(version_of libhwy-dev)

key=$({
    cat scripts/windows-prefix.sh cmake/mingw-w64.cmake
    echo "$xerces $re2 $utf8proc $highway"
    dpkg-query -W g++-mingw-w64-x86-64-posix mingw-w64-x86-64-dev \
        googletest unicode-data libboost-math-dev libcli11-dev nlohmann-json3-dev librapidcheck-dev
} | sha256sum | cut -d ' ' -f 1)
if [ "$(cat "$prefix/made-of" 2>/dev/null)" = "$key" ]; then
    exit 0
fi

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
rm -rf "$prefix"
mkdir -p "$prefix/include" "$prefix/share/cmake" "$prefix/lib/pkgconfig" "$work/lists/partial" "$work/apt" "$work/source"

# The package sources of this machine, but for sources instead of binaries; its configuration stays as it is.
for list in /etc/apt/sources.list.d/*.sources; do
    [ -e "$list" ] && sed 's/^Types:.*/Types: deb-src/' "$list" >"$work/apt/$(basename "$list")"
done
for list in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
    [ -e "$list" ] && sed -n 's/^deb /deb-src /p' "$list" >"$work/apt/$(basename "$list" .list)-sources.list"
done
from_debian() {
    apt-get -q -o Dir::Etc::sourcelist=/dev/null -o Dir::Etc::sourceparts="$work/apt" \
        -o Dir::State::lists="$work/lists" -o Dir::Cache="$work/cache" -o APT::Sandbox::User= "$@"
}
echo "Fetching the sources of the libraries for the Windows build"
mkdir -p "$work/cache/archives/partial"
from_debian update >"$work/log" 2>&1 || { cat "$work/log" >&2; exit 1; }
for package in "$xerces" "$re2" "$utf8proc" "$highway"; do
    (cd "$work/source" && from_debian source "$package") >"$work/log" 2>&1 || { cat "$work/log" >&2; exit 1; }
done

# build NAME SOURCE OPTION...: configures a library, builds $targets (all if empty) and installs it.
build() {
    name=$1
    source=$2
    shift 2
    echo "Building $name for Windows"
    {
        NBSCORE_WINDOWS_PREFIX=$prefix cmake -S "$source" -B "$work/$name" -G Ninja \
            -DCMAKE_TOOLCHAIN_FILE="$PWD/cmake/mingw-w64.cmake" -DCMAKE_BUILD_TYPE=Release \
            -DCMAKE_INSTALL_PREFIX="$prefix" -DCMAKE_INSTALL_LIBDIR=lib "$@" &&
            cmake --build "$work/$name" -j "$jobs" ${targets:+--target $targets} &&
            cmake --install "$work/$name${installed:-}"
    } >"$work/log" 2>&1 || { tail -n 40 "$work/log" >&2; exit 1; }
}
# The XML library is shared, because several modules of one process use it. Its documentation is not built, so only
# its src folder can be installed.
targets=xerces-c installed=/src build xerces-c "$work"/source/xerces-c-*/ \
    -DBUILD_SHARED_LIBS=ON -Dnetwork=OFF -Dtranscoder=windows -Dmessage-loader=inmemory
# The others end up inside the framework and the host library.
targets= installed= build highway "$work"/source/highway-*/ \
    -DBUILD_SHARED_LIBS=OFF -DHWY_ENABLE_CONTRIB=OFF -DHWY_ENABLE_EXAMPLES=OFF -DHWY_ENABLE_TESTS=OFF -DBUILD_TESTING=OFF
# Debian's sources leave out some tables. They are made from its own Unicode data, as for its own library.
make -C "$work"/source/re2-*/ REBUILD_TABLES=1 \
    re2/perl_groups.cc re2/unicode_groups.cc re2/unicode_casefold.cc >"$work/log" 2>&1 || { cat "$work/log" >&2; exit 1; }
targets= installed= build re2 "$work"/source/re2-*/ -DBUILD_SHARED_LIBS=OFF -DRE2_BUILD_TESTING=OFF
targets= installed= build utf8proc "$work"/source/utf8proc-*/ -DBUILD_SHARED_LIBS=OFF
targets= installed= build googletest /usr/src/googletest -DBUILD_SHARED_LIBS=OFF

# The Linux build finds these two libraries by pkg-config. RE2's own build writes no file for it, and utf8proc's file
# does not say that a static library needs a definition.
cat >"$prefix/lib/pkgconfig/re2.pc" <<PC
Name: re2
Description: regular expressions
Version: $(version_of libre2-dev)
Cflags: -I$prefix/include
Libs: -L$prefix/lib -lre2
PC
cat >"$prefix/lib/pkgconfig/libutf8proc.pc" <<PC
Name: libutf8proc
Description: Unicode normalization
Version: $(version_of libutf8proc-dev)
Cflags: -I$prefix/include -DUTF8PROC_STATIC
Libs: -L$prefix/lib -lutf8proc
PC

# Header-only libraries are taken from this machine, these folders and no others.
for headers in boost CLI nlohmann rapidcheck rapidcheck.h; do
    ln -s "/usr/include/$headers" "$prefix/include/$headers"
done
for package in CLI11 nlohmann_json; do
    cp -r "/usr/share/cmake/$package" "$prefix/share/cmake/"
done

echo "$key" >"$prefix/made-of"
