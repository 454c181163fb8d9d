#!/usr/bin/env bash
# Makes the Debian packages of a build, installs them with dpkg into a system of their own, uses them there, and removes
# them again:
#
#   debian_test.sh BUILD_DIRECTORY SOURCE_DIRECTORY PLATFORM COMPILER
#
# That system is a scratch directory which knows which packages this one has, so that dependencies are truly examined.
# dpkg needs to be root there: a user who is not becomes it in a namespace. Where that is not allowed either, the
# packages are examined, and the exit status is 77: not everything was tested.
set -uo pipefail

if [[ $(id -u) -ne 0 && -z ${DEBIAN_TEST_IS_IN_NAMESPACE:-} ]] && unshare --map-root-user true 2>/dev/null; then
    DEBIAN_TEST_IS_IN_NAMESPACE=yes exec unshare --map-root-user "$BASH" "$0" "$@"
fi

build=$1
source=$2
platform=$3
compiler=$4
here=$source/tests/install
if [[ $platform == embedded ]]; then
    package=TessarinFoundation stem=libtessarinfoundation
    dependencies="libc6 libgcc-s1 libstdc++6"
else
    package=TessarinFoundation-native stem=libtessarinfoundation-native
    # gnustep-base-runtime is named by the description of GNUstep's own library.
    dependencies="gnustep-base-runtime libc6 libgcc-s1 libgnustep-base1.28 libobjc4 libstdc++6"
fi
runtime=$stem-a development=$stem-dev common=libtessarinfoundation-common-dev

source "$here/checks.sh"
finish() {
    [[ $failures -eq 0 ]] || { echo "$failures failures" >&2 && exit 1; }
    echo "$1"
    exit "$2"
}

# ---- what the packages say and hold ----------------------------------------------------------------------------------

quietly "cpack" cpack --config "$build/CPackConfig.cmake" -G DEB -B "$work/packages" || exit 1
[[ $(find "$work/packages" -maxdepth 1 -name '*.deb' | wc -l) -eq 3 ]] || complain "not three packages"
version=$(sed -n 's/^project(TessarinFoundation VERSION \([0-9.]*\).*/\1/p' "$source/CMakeLists.txt")-1
file_of() { # PACKAGE
    echo "$work/packages/$1_${version}_$(dpkg --print-architecture).deb"
}
field() { # PACKAGE FIELD
    dpkg-deb --field "$(file_of "$1")" "$2"
}
for name in $runtime $development $common; do
    [[ -f $(file_of $name) ]] || { complain "there is no $name of version $version for this machine" && finish "" 1; }
    [[ $(field $name Package) == "$name" && $(field $name Version) == "$version" ]] || complain "$name: not so named"
    [[ $(field $name Source) == tessarinfoundation ]] || complain "$name: not the source's name"
    [[ $(field $name Maintainer) =~ ^[^\<]+\ \<[^@\ ]+@[^@\ ]+\>$ ]] || complain "$name: Maintainer"
    [[ $(field $name Section) == "$([[ $name == "$runtime" ]] && echo libs || echo libdevel)" ]] ||
        complain "$name: Section"
    dpkg-deb --extract "$(file_of $name)" "$work/contents" || complain "$name: not extracted"
    for file in copyright changelog.Debian.gz; do
        [[ -s $work/contents/usr/share/doc/$name/$file ]] || complain "$name: no $file"
    done
done
[[ $(field $runtime Depends | sed -E 's/ \([^)]*\)//g') == "${dependencies// /, }" ]] ||
    complain "$runtime depends on $(field $runtime Depends)"
depends=$(field $development Depends)
[[ $platform == embedded ]] || depends=${depends%, libgnustep-base-dev, gobjc}
[[ $depends == "$runtime (= $version), $common (= $version)" ]] || complain "$development depends on $depends"
[[ -z $(field $common Depends) ]] || complain "$common depends on $(field $common Depends)"

# What programs that are packaged themselves learn from it.
dpkg-deb --control "$(file_of $runtime)" "$work/control"
[[ $(cat "$work/control/shlibs") == "lib$package A $runtime (= $version)" ]] ||
    complain "shlibs: $(cat "$work/control/shlibs")"
[[ $(cat "$work/control/triggers") == "activate-noawait ldconfig" ]] || complain "$runtime: no trigger of ldconfig"

# Together they are what `cmake --install` puts into a prefix, their own papers aside.
quietly "cmake --install" cmake --install "$build" --prefix "$work/prefix"
list_files() { # DIRECTORY
    (cd "$1" && find . ! -type d ! -path "./share/doc/lib*" | sort)
}
diff <(list_files "$work/prefix") <(list_files "$work/contents/usr") ||
    complain "the packages hold something else than what is installed"
[[ $(dpkg-deb --contents "$(file_of $runtime)" | grep '^-' | grep -vc /usr/share/doc/) -eq 1 ]] ||
    complain "$runtime: not one file"
library=$(cd "$work/contents" && find usr -name "lib$package.so.A")
archive=$(cd "$work/contents" && find usr -name "lib$package.a")
for file in "$library" "$archive"; do
    ! readelf --sections --wide "$work/contents/$file" | grep -qF .debug_info ||
        complain "$file holds debug information"
done

# ---- a system of their own -------------------------------------------------------------------------------------------

# make_system DIRECTORY: with a shell and ldconfig for the scripts of packages, and the loader for programs.
make_system() {
    local system=$1 file
    mkdir -p "$system"/{bin,sbin,etc,tmp,usr/lib,usr/share/doc,var/cache/ldconfig,var/lib/dpkg/{info,updates,triggers}}
    cp /var/lib/dpkg/status "$system/var/lib/dpkg"
    cp /var/lib/dpkg/triggers/* "$system/var/lib/dpkg/triggers" 2>/dev/null
    cp "$(readlink --canonicalize /bin/sh)" "$system/bin/sh"
    for file in /sbin/ldconfig.real /sbin/ldconfig; do
        [[ -f $system/sbin/ldconfig || ! -f $file ]] || cp $file "$system/sbin/ldconfig"
    done
    cp --recursive /etc/ld.so.conf* "$system/etc"
    bring_libraries "$system" /bin/sh
}
# bring_libraries DIRECTORY PROGRAM: what the program loads of this system.
bring_libraries() {
    local file
    ldd "$2" | grep -oE '[[:space:]]/[^ ]+' | while read -r file; do
        [[ $file == "$work"/* ]] || { mkdir -p "$1$(dirname "$file")" && cp --dereference "$file" "$1$file"; }
    done
}
in_system() { # DIRECTORY DPKG-OPTION...
    local system=$1
    shift
    dpkg --root="$system" --log=/dev/null --no-triggers "$@"
}
state_of() { # DIRECTORY PACKAGE
    dpkg-query --admindir="$1/var/lib/dpkg" --show --showformat='${db:Status-Status}' "$2" 2>/dev/null
}
everything_in() { # DIRECTORY
    (cd "$1" && find . -path ./var/lib/dpkg -prune -o -path ./etc/ld.so.cache -o -path './var/cache/*' -o -print | sort)
}

system=$work/system
make_system "$system"
chroot "$system" /bin/sh -c true 2>/dev/null ||
    finish "The packages were examined, but not installed: that takes root, or a namespace in which one is." 77

# Without what it depends on, a package is not configured.
make_system "$work/lacking"
in_system "$work/lacking" --install "$(file_of $development)" "$(file_of $common)" >"$work/log" 2>&1 &&
    complain "$development was installed without $runtime"
[[ $(state_of "$work/lacking" $development) == unpacked ]] || complain "$development was configured without $runtime"

everything_in "$system" >"$work/before"
# Of another package too, for all that dpkg installs is configured in the order of dependencies.
quietly "dpkg --install" in_system "$system" --install "$(file_of $development)" "$(file_of $common)" \
    "$(file_of $runtime)" || finish "" 1
for name in $runtime $development $common; do
    [[ $(state_of "$system" $name) == installed ]] || complain "$name is $(state_of "$system" $name)"
    [[ -z $(in_system "$system" --verify $name) ]] || complain "$name: the files are not those of the package"
done
[[ $(state_of "$system" libc-bin) == triggers-pending ]] || complain "ldconfig was not triggered"

# The loader knows the library, where it lies, by its cache.
ldconfig -r "$system" -p | grep -qF "lib$package.so.A (libc6,x86-64) => /$library" ||
    [[ $(dpkg --print-architecture) != amd64 ]] || complain "ldconfig does not know the library"

# ---- an application --------------------------------------------------------------------------------------------------

runs() { # WHAT PROGRAM
    cp "$2" "$system/tmp/application"
    bring_libraries "$system" "$2"
    bring_libraries "$system" "$system/$library"
    env --ignore-environment PATH="$PATH" LD_BIND_NOW=1 chroot "$system" /tmp/application >"$work/output" 2>"$work/errors" ||
        complain "$1: exit status $?: $(cat "$work/errors")"
    diff "$here/expected_output.txt" "$work/output" || complain "$1: not the expected output"
}
read -ra definitions <<<"$([[ $platform == embedded ]] || echo -DCONSUMER_IS_NATIVE)"
export PKG_CONFIG_PATH=$system/$(dirname "$library")/pkgconfig
read -ra flags <<<"$(pkg-config --cflags --libs $package)"
quietly "pkg-config" "$compiler" -std=c++20 "${definitions[@]}" "$here/consumer.cpp" "${flags[@]}" \
    -o "$work/pkg_config" && runs "pkg-config" "$work/pkg_config"
quietly "find_package: configuring" cmake -S "$here/find_package" -B "$work/consumers" -G Ninja \
    -DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_BUILD_TYPE=Debug -DCMAKE_PREFIX_PATH="$system/usr" \
    -DCMAKE_SKIP_RPATH=ON -DPLATFORM="$platform" &&
    quietly "find_package: building" cmake --build "$work/consumers" --target default_20 static_23
for program in default_20 static_23; do
    runs "find_package, $program" "$work/consumers/$program"
done

# ---- and away --------------------------------------------------------------------------------------------------------

in_system "$system" --remove $runtime >"$work/log" 2>&1 && complain "$runtime was removed from under $development"
everything_in "$system" >"$work/with"
quietly "dpkg --purge" in_system "$system" --purge $development $common $runtime
for name in $runtime $development $common; do
    [[ -z $(state_of "$system" $name) ]] || complain "$name is $(state_of "$system" $name) after it was purged"
done
left=$(comm -13 "$work/before" <(everything_in "$system") | grep -i tessarin)
[[ -z $left ]] || complain "left behind: $left"
[[ $(comm -13 "$work/before" "$work/with" | grep -ci tessarin) -gt 50 ]] || complain "nothing was there to be left"

finish "The packages were installed, used and removed." 0
