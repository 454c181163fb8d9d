"""Carries out a Conan recipe of the project, and its test package, where there is no Conan:

    run_conan_recipe.py SOURCE_DIRECTORY BUILD_DIRECTORY WORK_DIRECTORY shared|static COMPILER

What the recipe uses of Conan is stood in for by the few lines below, which do what Conan 2 documents. That shows
whether the exported files suffice, what is built and packaged, and whether a consumer finds it; not that Conan itself
takes the recipe. BUILD_DIRECTORY is a build that knows which files the library is compiled from.
"""

import importlib.util
import pathlib
import re
import shutil
import subprocess
import sys
import types

source, build, work = (pathlib.Path(argument) for argument in sys.argv[1:4])
kind, compiler = sys.argv[4:]
packaging = source / "packaging" / "conan"


def run(*command, **options):
    subprocess.run([str(part) for part in command], check=True, **options)


def expect(what, condition):
    if not condition:
        sys.exit(f"FAILED: Conan, {kind}: {what}")


# ---- Conan ----


class ConanFile:
    def __init__(self, folder):
        self.recipe_folder = str(folder)
        self.settings = types.SimpleNamespace(os="Linux", arch="x86_64", compiler="gcc", build_type="Release")
        self.cpp_info = types.SimpleNamespace(properties={}, defines=[], exelinkflags=[], sharedlinkflags=[],
                                              system_libs=[], libs=[], builddirs=[])
        self.cpp_info.set_property = self.cpp_info.properties.__setitem__
        self.cpp = types.SimpleNamespace(build=types.SimpleNamespace(bindir="."))
        self.cache_variables, self.prefix_path, self.package_folder = {}, [], str(work / "unused")

    def requires(self, reference):
        self.required = reference

    def run(self, command, env=None):
        expect("programs run in the environment of the package", env == "conanrun")
        self.output = subprocess.run(command, shell=True, check=True, capture_output=True, text=True,
                                     cwd=self.build_folder, env={"LD_LIBRARY_PATH": self.library_path}).stdout


class CMakeToolchain:
    def __init__(self, recipe):
        self.recipe, self.cache_variables = recipe, {}

    def generate(self):
        self.recipe.cache_variables = self.cache_variables


class CMake:
    def __init__(self, recipe):
        self.recipe = recipe

    def configure(self):
        recipe = self.recipe
        values = {"CMAKE_BUILD_TYPE": recipe.settings.build_type, "CMAKE_INSTALL_PREFIX": recipe.package_folder,
                  "CMAKE_CXX_COMPILER": compiler, "CMAKE_PREFIX_PATH": ";".join(recipe.prefix_path)}
        values.update((name, "ON" if value is True else "OFF" if value is False else value)
                      for name, value in recipe.cache_variables.items())
        run("cmake", "-S", recipe.source_folder, "-B", recipe.build_folder, "-G", "Ninja",
            *(f"-D{name}={value}" for name, value in values.items()))

    def build(self):
        run("cmake", "--build", self.recipe.build_folder)

    def install(self):
        run("cmake", "--install", self.recipe.build_folder)


def copy(recipe, pattern, src, dst):
    # Patterns are matched against whole relative paths, in which * stands for slashes too.
    root = pathlib.Path(src)
    expression = re.compile("".join(".*" if part == "*" else re.escape(part) for part in re.split(r"(\*)", pattern)))
    found = [root / pattern] if "*" not in pattern else (root / pattern.split("*")[0]).rglob("*")
    for path in found:
        if path.is_file() and expression.fullmatch(path.relative_to(root).as_posix()):
            target = pathlib.Path(dst) / path.relative_to(root)
            target.parent.mkdir(parents=True, exist_ok=True)
            shutil.copy2(path, target)


def module(name, **contents):
    sys.modules[name] = types.ModuleType(name)
    vars(sys.modules[name]).update(contents)


class ConanInvalidConfiguration(Exception):
    pass


module("conan", ConanFile=ConanFile)
module("conan.errors", ConanInvalidConfiguration=ConanInvalidConfiguration)
module("conan.tools")
module("conan.tools.cmake", CMake=CMake, CMakeToolchain=CMakeToolchain, cmake_layout=lambda recipe: None)
module("conan.tools.files", copy=copy)
module("conan.tools.build", can_run=lambda recipe: True)


def takes(recipe, system):
    asked = types.SimpleNamespace(settings=types.SimpleNamespace(os=system))
    try:
        type(recipe).validate(asked)
    except ConanInvalidConfiguration:
        return False
    return True


def load(file):
    spec = importlib.util.spec_from_file_location(file.parent.name, file)
    loaded = importlib.util.module_from_spec(spec)
    spec.loader.exec_module(loaded)
    return next(value for value in vars(loaded).values()
                if isinstance(value, type) and issubclass(value, ConanFile) and value is not ConanFile)(file.parent)


# ---- conan create ----

sys.dont_write_bytecode = True
recipe = load(packaging / "conanfile.py")
project = re.search(r"project\(TessarinFoundation VERSION ([0-9.]+)", (source / "CMakeLists.txt").read_text())
expect("the version is the project's", recipe.version == project.group(1))
expect("the library is shared unless it is asked for otherwise", recipe.default_options == {"shared": True})
expect("what the library is made for is taken, and no more",
       [system for system in ("Linux", "Windows", "Macos", "Android") if takes(recipe, system)] == ["Linux", "Windows"])
recipe.options = types.SimpleNamespace(shared=kind == "shared")
recipe.export_sources_folder = recipe.source_folder = str(work / "sources")
recipe.build_folder, recipe.package_folder = str(work / "build"), str(work / "package")
for step in (recipe.export_sources, recipe.layout, recipe.generate, recipe.build, recipe.package, recipe.package_info):
    step()

read = subprocess.run(["ninja", "-C", build, "-t", "deps"], check=True, capture_output=True, text=True).stdout
of_library = "\n".join(part for part in read.split("\n\n") if part.startswith("CMakeFiles/tessarin_objects.dir/"))
named = {(build / line.strip()).resolve() for line in of_library.split("\n") if line.startswith("    ")}
sources = {path.relative_to(source.resolve()) for path in named if path.is_relative_to(source.resolve())}
lacking = [str(path) for path in sources if not (work / "sources" / path).is_file()]
expect(f"what the library is compiled from is exported: {lacking}", len(sources) > 100 and not lacking)

package, information = pathlib.Path(recipe.package_folder), recipe.cpp_info
expect("a license is packaged", (package / "licenses" / "LICENSE").is_file())
ending = "so" if kind == "shared" else "a"
libraries = sorted(path.name for path in (package / "lib").glob("lib*.*") if path.suffix[1:] in ("so", "a"))
expect("what is packaged is what is told of", libraries == [f"lib{name}.{ending}" for name in information.libs])

# A consumer of another build system has what package_info says alone.
program = work / "program"
run(compiler, "-std=c++20", *(f"-D{name}" for name in information.defines), f"-I{package}/include",
    source / "examples" / "readme" / "cpp_example.cpp", f"-L{package}/lib", *(f"-l{name}" for name in information.libs),
    *(f"-l{name}" for name in information.system_libs), *information.exelinkflags, "-o", program)
expected = (source / "examples" / "readme" / "expected_output.txt").read_text()
environment = {"LD_LIBRARY_PATH": f"{package}/lib"}
expect("a program works that is built as package_info says",
       subprocess.run([program], check=True, capture_output=True, text=True, env=environment).stdout == expected)

# ---- its test package ----

test = load(packaging / "test_package" / "conanfile.py")
test.tested_reference_str = f"{recipe.name}/{recipe.version}"
test.requirements()
expect("the test package requires what is tested", test.required == test.tested_reference_str)
expect("find_package finds the package's own configuration", information.properties == {"cmake_find_mode": "none"})
test.prefix_path = [str(package / directory) for directory in information.builddirs]
test.source_folder, test.build_folder = test.recipe_folder, str(work / "test_package")
test.library_path = str(package / "lib")
test.layout()
test.build()
test.test()
expect("the test package's program works", test.output == expected)
print(f"The Conan recipe and its test package work, {kind}.")
