#!/usr/bin/env python3
"""The examples of the pages do what they say: examples.py [--update] TOOL PAGE...

A block of sh with a block of text behind it is run, and what it prints is that text; a line "..."
stands for any lines. A block of sh alone is run where it calls the tool, and must not be refused.
Blocks of python with a block of text behind them are run one after the other, like one program, where
the module vendrelmodel can be imported. Indented lines that call the tool must name commands and options that
exist. Programs in C++ are run by guide.sh; commands of the checkout (./test, cmake) are looked at by
the tests of the pages. Everything runs in a copy of the samples; --update puts what was printed into
the page."""

import contextlib
import io
import os
import re
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
BLOCK = re.compile(r"^```(\w+)\n(.*?)^```\n(?:\n```text\n(.*?)^```\n)?", re.S | re.M)
INDENTED = re.compile(r"^    (?:\S+ \| )?vendrelmodel ((?:\S+ ?)+)", re.M)
# Of the checkout, of the system, or not of this machine.
ELSEWHERE = ("cmake", "./test", "./check", "./coverage", "./build/", "./fuzz", "pip", "PYTHONPATH=",
             "cpack", "apt", "sudo", "tests/", "bench/", ".ci/", "git", "g++", "gcc", "cc ", "mcs",
             "widl", "export", "cat", "diff", "perf", "python", "clang", "#", "for", "done", "LD_",
             "ctest", "valgrind", "heaptrack", "ninja")


class Page:
    def __init__(self, path, tool, folder, update):
        self.path, self.tool, self.folder, self.update = path, tool, folder, update
        self.faults, self.count = [], 0
        self.names = {}
        self.text = path.read_text(encoding="utf-8")

    def fault(self, what, text):
        self.faults.append(f"{self.path}: {what}\n{text}")

    def shell(self, commands):
        environment = {**os.environ, "PATH": f"{self.folder}/bin:{os.environ['PATH']}", "TERM": "dumb",
                       "LC_ALL": "C.UTF-8"}
        done = subprocess.run(["bash", "-c", commands], cwd=self.folder, env=environment, text=True,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                              stdin=subprocess.DEVNULL)
        return done.returncode, done.stdout.replace(self.folder, "/home/me")

    def python(self, code):
        said = io.StringIO()
        here = os.getcwd()
        os.chdir(self.folder)
        try:
            with contextlib.redirect_stdout(said):
                exec(compile(code, str(self.path), "exec"), self.names)
        finally:
            os.chdir(here)
        return said.getvalue()

    def block(self, match):
        kind, code, wanted = match.groups()
        if kind == "python" and wanted is not None and HAS_MODULE:
            said = self.python(code)
        elif kind == "sh" and wanted is not None:
            code_of_exit, said = self.shell(code)
            if code_of_exit == 2:
                self.fault("is refused", code + said)
        elif kind == "sh":
            self.alone(code)
            return match.group()
        else:
            return match.group()
        self.count += 1
        if matches(wanted, said):
            return match.group()
        if self.update:
            return f"```{kind}\n{code}```\n\n```text\n{said}```\n"
        self.fault("prints something else", f"{code}WANTED\n{wanted}GOT\n{said}")
        return match.group()

    def alone(self, code):
        for line in code.replace("\\\n", " ").splitlines():
            line = line.split("  #")[0].strip()
            if not line or line.startswith(ELSEWHERE) or "--no-install" in line or line == "./run":
                continue
            self.count += 1
            status, said = self.shell(line)
            if status not in (0, 3, 4):
                self.fault(f"ends with {status}", line + "\n" + said)

    def indented(self):
        prose = BLOCK.sub("", self.text)
        for match in INDENTED.finditer(prose):
            words = match.group(1).split("  ")[0].split()
            command = next((w for w in words if w in COMMANDS), "tree")
            self.count += 1
            for word in words:
                option = re.match(r"--[a-z-]+", word)
                if option and option.group() not in HELP[command]:
                    self.fault("names an option that is none", match.group())

    def run(self):
        new = BLOCK.sub(self.block, self.text)
        self.indented()
        if new != self.text:
            self.path.write_text(new, encoding="utf-8")


def matches(wanted, said):
    pattern = "".join(".*" if line == "...\n" else re.escape(line)
                      for line in wanted.splitlines(keepends=True))
    return re.fullmatch(pattern, said, re.S) is not None


def help_of(tool, *command):
    return subprocess.run([tool, *command, "--help"], capture_output=True, text=True).stdout


def main(arguments):
    global HAS_MODULE, COMMANDS, HELP
    update = arguments[:1] == ["--update"]
    tool, *pages = arguments[update:]
    try:
        import vendrelmodel  # noqa: F401
        HAS_MODULE = True
    except ImportError:
        HAS_MODULE = False
        print("the module vendrelmodel is not there: examples in Python are not run")
    COMMANDS = re.findall(r"^  ([a-z][a-z-]+)  ", help_of(tool), re.M)
    HELP = {command: help_of(tool, command) + " --version" for command in COMMANDS}
    status = count = 0
    for path in map(Path, pages):
        with tempfile.TemporaryDirectory() as folder:
            folder = os.path.realpath(folder)
            shutil.copytree(ROOT / "samples", f"{folder}/samples")
            os.mkdir(f"{folder}/bin")
            os.symlink(tool, f"{folder}/bin/vendrelmodel")
            os.symlink(tool, f"{folder}/run")  # as ./run of the checkout with arguments
            page = Page(path, tool, folder, update)
            page.run()
            for fault in page.faults:
                print(fault)
            status |= bool(page.faults)
            count += page.count
            print(f"{path.name}: {page.count} examples")
    if len(pages) > 10 and count < 40:
        print(f"only {count} examples were recognised")
        return 1
    return status


sys.exit(main(sys.argv[1:]))
