"""The package `vendrelmodel` for Python, compiled by CMake:

    pip install --no-build-isolation .

takes the packages of the distribution (./run --no-install names them, and pybind11-dev, python3-dev,
python3-setuptools, python3-wheel). VENDRELMODEL_BUILD names the folder of a build with
VENDREL_BUILD_PYTHON that is to be taken as it is, in place of a build of its own."""

import os
import re
import subprocess
import sys
from pathlib import Path

from setuptools import Extension, setup
from setuptools.command.build_ext import build_ext

HERE = Path(__file__).resolve().parent


def version():
    text = (HERE / "CMakeLists.txt").read_text(encoding="utf-8")
    return re.search(r"project\(VendrelModel VERSION ([\d.]+)", text).group(1)


class CMakeBuild(build_ext):
    def build_extension(self, extension):
        target = Path(self.get_ext_fullpath(extension.name)).resolve().parent.parent
        build = os.environ.get("VENDRELMODEL_BUILD")
        if not build:
            build = str(Path(self.build_temp).resolve())
            subprocess.run(["cmake", "-S", str(HERE), "-B", build, "-G", "Ninja",
                            "-DCMAKE_BUILD_TYPE=Release", "-DCMAKE_CXX_FLAGS_RELEASE=-O2 -DNDEBUG",
                            "-DVENDREL_UNITY=ON", "-DVENDREL_BUILD_TESTS=OFF",
                            "-DVENDREL_BUILD_PYTHON=ON", f"-DPython3_EXECUTABLE={sys.executable}"],
                           check=True)
            subprocess.run(["cmake", "--build", build, "--target", "vendrel_python_package"],
                           check=True)
        subprocess.run(["cmake", f"-DPACKAGE={build}/bindings/python/vendrelmodel",
                        f"-DTARGET={target}", "-P",
                        str(HERE / "bindings/python/tools/copy_package.cmake")], check=True)


setup(
    name="vendrelmodel",
    version=version(),
    description="The object model of Visual Basic code",
    long_description=(HERE / "bindings/python/README.md").read_text(encoding="utf-8"),
    long_description_content_type="text/markdown",
    python_requires=">=3.10",
    packages=[],
    ext_modules=[Extension("vendrelmodel._native", sources=[])],
    cmdclass={"build_ext": CMakeBuild},
    zip_safe=False,
)
