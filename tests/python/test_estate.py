"""A folder of projects on several workers, one of which is killed on the way."""

import os
import shutil
import signal
import subprocess
import sys
import tempfile
import threading
import time
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
ESTATE = ROOT / "samples/python/estate.py"

try:
    import distributed
except ImportError:
    distributed = None


class EstateTest(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        for i in range(60):
            shutil.copytree(ROOT / "samples/Ledger", Path(self.folder.name, f"p{i:02}"))
        Path(self.folder.name, "broken.vbp").mkdir()

    def lines(self, *options):
        done = subprocess.run([sys.executable, str(ESTATE), self.folder.name, *options],
                              capture_output=True, text=True)
        self.assertEqual(done.returncode, 0, done.stderr)
        return done.stdout

    def test_each_project_has_its_lines(self):
        lines = self.lines("--command", "names --kind procedure").splitlines()
        self.assertEqual(len(lines), 60 * 65)

    @unittest.skipUnless(distributed, "python3-distributed is not installed")
    def test_a_worker_that_dies_changes_nothing(self):
        alone = self.lines()
        scheduler = subprocess.Popen(
            [sys.executable, "-m", "distributed.cli.dask_scheduler", "--port", "0", "--no-dashboard",
             "--scheduler-file", str(Path(self.folder.name, "scheduler.json"))],
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.addCleanup(scheduler.wait)
        self.addCleanup(scheduler.kill)
        file = Path(self.folder.name, "scheduler.json")
        while not file.exists():
            self.assertIsNone(scheduler.poll())
            time.sleep(0.05)
        workers = [subprocess.Popen(
            [sys.executable, "-m", "distributed.cli.dask_worker", "--scheduler-file", str(file),
             "--nthreads", "1", "--no-dashboard", "--no-nanny"],
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL) for _ in range(2)]
        for worker in workers:
            self.addCleanup(worker.wait)
            self.addCleanup(worker.kill)
        with distributed.Client(scheduler_file=str(file)) as client:
            client.wait_for_workers(2, timeout=60)
            address = client.scheduler.address
            run = subprocess.Popen([sys.executable, str(ESTATE), self.folder.name, "--scheduler",
                                    address], stdout=subprocess.PIPE, text=True)
            first = run.stdout.readline()  # work has begun
            os.kill(workers[0].pid, signal.SIGKILL)
            rest = run.stdout.read()
            self.assertEqual(run.wait(), 0)
            run.stdout.close()
            self.assertEqual(len(client.scheduler_info()["workers"]), 1)
        self.assertEqual(first + rest, alone)


if __name__ == "__main__":
    unittest.main()
