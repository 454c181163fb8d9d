"""A Conan 2 recipe of the checkout that it lies in: conan create packaging/conan"""

import os

from conan import ConanFile
from conan.errors import ConanInvalidConfiguration
from conan.tools.cmake import CMake, CMakeToolchain, cmake_layout
from conan.tools.files import copy


class TessarinFoundation(ConanFile):
    name = "tessarinfoundation"
    version = "1.0.0"
    description = "A shared support library for desktop audio applications"
    settings = "os", "arch", "compiler", "build_type"
    options = {"shared": [True, False]}
    default_options = {"shared": True}
    package_type = "library"

    def export_sources(self):
        root = os.path.join(self.recipe_folder, "..", "..")
        for pattern in ("CMakeLists.txt", "LICENSE", "CHANGELOG.md", "audio/*", "cmake/*", "collections/*",
                        "configurations/*", "include/*", "interface/*", "platform/*", "strings/*", "values/*"):
            copy(self, pattern, root, self.export_sources_folder)

    def layout(self):
        cmake_layout(self)

    def validate(self):
        if self.settings.os not in ("Linux", "FreeBSD", "Windows"):
            raise ConanInvalidConfiguration("The embedded platform is for Linux and Windows")

    def generate(self):
        toolchain = CMakeToolchain(self)
        shared = bool(self.options.shared)
        toolchain.cache_variables["TESSARIN_BUILD_SHARED"] = shared
        toolchain.cache_variables["TESSARIN_BUILD_STATIC"] = not shared
        toolchain.cache_variables["TESSARIN_BUILD_TESTS"] = False
        toolchain.cache_variables["TESSARIN_BUILD_EXAMPLES"] = False
        toolchain.cache_variables["TESSARIN_WARNINGS_AS_ERRORS"] = False
        toolchain.generate()

    def build(self):
        cmake = CMake(self)
        cmake.configure()
        cmake.build()

    def package(self):
        copy(self, "LICENSE", self.source_folder, os.path.join(self.package_folder, "licenses"))
        CMake(self).install()

    def package_info(self):
        # The package's own configuration for CMake serves Conan's users too.
        self.cpp_info.set_property("cmake_find_mode", "none")
        self.cpp_info.builddirs = [os.path.join("lib", "cmake", "TessarinFoundation")]
        self.cpp_info.libs = ["TessarinFoundation"]
        if not self.options.shared:
            self.cpp_info.defines = ["TESSARIN_STATIC"]
            if self.settings.os in ("Linux", "FreeBSD"):
                self.cpp_info.exelinkflags = ["-Wl,--exclude-libs,libTessarinFoundation.a"]
                self.cpp_info.sharedlinkflags = self.cpp_info.exelinkflags
                self.cpp_info.system_libs = ["pthread"]
            elif self.settings.os == "Windows":
                self.cpp_info.system_libs = ["synchronization"]
