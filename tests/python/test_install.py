"""pip installs the package from the checkout, with the build that VENDRELMODEL_BUILD names."""

import importlib.util
import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
VERSION = re.search(r"VendrelModel VERSION ([\d.]+)", (ROOT / "CMakeLists.txt").read_text()).group(1)


class InstallTest(unittest.TestCase):
    @unittest.skipUnless(all(map(importlib.util.find_spec, ("pip", "setuptools", "wheel"))),
                         "pip, setuptools or wheel is not installed")
    def test_pip_installs_the_checkout(self):
        with tempfile.TemporaryDirectory() as folder:
            source = Path(folder, "source")  # setuptools leaves files beside what it builds
            shutil.copytree(ROOT, source, ignore=shutil.ignore_patterns("build", ".git", "src"))
            target = Path(folder, "target")
            done = subprocess.run(
                [sys.executable, "-m", "pip", "install", "--no-build-isolation", "--no-deps",
                 "--no-index", "--target", str(target), str(source)],
                capture_output=True, text=True, env={**os.environ, "PIP_ROOT_USER_ACTION": "ignore"})
            self.assertEqual(done.returncode, 0, done.stdout + done.stderr)
            self.assertTrue(Path(target, "vendrelmodel/__init__.pyi").exists())
            self.assertTrue(Path(target, "vendrelmodel/py.typed").exists())
            said = subprocess.run(
                [sys.executable, "-c", "import sys, vendrelmodel\n"
                 "print(vendrelmodel.__version__, vendrelmodel.load(sys.argv[1]).project_name)",
                 str(ROOT / "samples/Ledger/Ledger.vbp")],
                capture_output=True, text=True, env={**os.environ, "PYTHONPATH": str(target)})
            self.assertEqual(said.stdout, f"{VERSION} Ledger\n", said.stderr)


if __name__ == "__main__":
    unittest.main()
