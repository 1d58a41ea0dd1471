#!/usr/bin/env python3
"""What a load costs from Python, beside the tool: python_load.py TOOL PROJECT [RUNS]

Medians and best of processor time (user and system) of whole processes, taken in turns; what importing
the package takes is told apart. A tree that is still held at the end of the process is not taken apart.
PYTHONPATH says which build of the package is measured: it should be one of the same kind as the tool."""

import os
import resource
import statistics
import subprocess
import sys

TOOL, PROJECT = sys.argv[1:3]
RUNS = int(sys.argv[3]) if len(sys.argv) > 3 else 7
LOAD = "import sys, vendrelmodel; project = vendrelmodel.load(sys.argv[1])"


def seconds(command):
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    subprocess.run(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=True)
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    return after.ru_utime - before.ru_utime + after.ru_stime - before.ru_stime


programs = {
    "tool": [TOOL, "tree", "--depth", "1", "--quiet", PROJECT],
    "import": [sys.executable, "-c", "import vendrelmodel"],
    "python": [sys.executable, "-c", LOAD, PROJECT],
}
times = {name: [] for name in programs}
for _ in range(RUNS):
    for name, command in programs.items():
        times[name].append(seconds(command))
for what, pick in (("median", statistics.median), ("best", min)):
    tool, imports, python = (pick(times[name]) for name in programs)
    print(f"{what}: tool {tool:.3f} s, python {python:.3f} s, of which {imports:.3f} s is the import; "
          f"python over tool {100 * (python / tool - 1):+.1f} %, "
          f"without the import {100 * ((python - imports) / tool - 1):+.1f} %")
