#!/usr/bin/env bash
# Carries out the Conan recipe and the vcpkg port with stand-ins for those tools, shared and static, and builds and runs
# an application with what they make:
#
#   packaging_test.sh BUILD_DIRECTORY SOURCE_DIRECTORY COMPILER
#
# The library's own object files are those of the build.
set -uo pipefail

build=$1
source=$2
compiler=$3
here=$source/tests/install
port=$source/packaging/vcpkg/tessarinfoundation
source "$here/checks.sh"
export REUSED_OBJECTS=$build/CMakeFiles/tessarin_objects.dir
export CMAKE_CXX_COMPILER_LAUNCHER=$here/add_subdirectory/reuse_objects.sh

for kind in shared static; do
    mkdir "$work/conan-$kind"
    quietly "Conan, $kind" python3 "$here/packaging/run_conan_recipe.py" "$source" "$build" "$work/conan-$kind" $kind \
        "$compiler"
done

python3 - "$port/vcpkg.json" "$source/CMakeLists.txt" <<'PYTHON' || complain "vcpkg.json"
import json, os, re, sys
port = json.load(open(sys.argv[1]))
assert set(port) <= {"name", "version", "description", "license", "supports", "dependencies"}, "fields"
assert port["name"] == os.path.basename(os.path.dirname(sys.argv[1])), "the port's name is its folder's"
assert f"project(TessarinFoundation VERSION {port['version']} " in open(sys.argv[2]).read(), "the project's version"
assert {dependency["name"] for dependency in port["dependencies"]} == {
    "vcpkg-" + name.replace("_", "-") for name in re.findall(
        r"^vcpkg_(cmake(?:_config)?)_", open(os.path.dirname(sys.argv[1]) + "/portfile.cmake").read(), re.MULTILINE)
}, "what the portfile calls"
assert all(dependency["host"] is True for dependency in port["dependencies"]), "tools are the host's"
PYTHON

for linkage in dynamic static; do
    area=$work/vcpkg-$linkage
    quietly "vcpkg, $linkage" cmake -DPORTFILE="$port/portfile.cmake" -DWORK="$area" -DLINKAGE=$linkage \
        -DCOMPILER="$compiler" -P "$here/packaging/run_vcpkg_port.cmake" || continue
    # What vcpkg refuses in a port.
    for directory in debug/include debug/share lib/cmake debug/lib/cmake; do
        [[ ! -e $area/package/$directory ]] || complain "vcpkg, $linkage: $directory is left"
    done
    for file in copyright usage; do
        [[ -s $area/package/share/tessarinfoundation/$file ]] || complain "vcpkg, $linkage: no $file"
    done
    endings=$(find "$area/package" -name 'libTessarinFoundation.*' ! -name '*.A' | sed 's/.*\.//' | sort | xargs)
    [[ $endings == "$([[ $linkage == dynamic ]] && echo "so so" || echo "a a")" ]] ||
        complain "vcpkg, $linkage: libraries: $endings"
    # What usage tells of, for either configuration.
    grep -qF 'find_package(TessarinFoundation CONFIG REQUIRED)' "$port/usage" || complain "usage"
    for configuration in Debug Release; do
        consumer=$area/consumer-$configuration
        quietly "vcpkg, $linkage, $configuration: configuring" cmake -S "$source/packaging/conan/test_package" \
            -B "$consumer" -G Ninja -DCMAKE_BUILD_TYPE=$configuration -DCMAKE_CXX_COMPILER="$compiler" \
            -DCMAKE_PREFIX_PATH="$area/package" &&
            quietly "vcpkg, $linkage, $configuration: building" cmake --build "$consumer" || continue
        "$consumer/example" | diff "$source/examples/readme/expected_output.txt" - ||
            complain "vcpkg, $linkage, $configuration: not the expected output"
        [[ $linkage == static || $(ldd "$consumer/example") == *"$area/package/$([[ $configuration == Release ]] ||
            echo debug/)lib/libTessarinFoundation.so.A "* ]] || complain "vcpkg, $configuration: another library"
    done
done

[[ $failures -eq 0 ]] && echo "The Conan recipe and the vcpkg port work with the stand-ins of their tools."
exit $((failures != 0))
