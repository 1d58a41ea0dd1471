#!/usr/bin/env python3
"""Runs fuzz targets until they find nothing new, and prints a row of a table for each.

    fuzz/saturate.py [--jobs N] [TARGET ...]

A target runs until ten minutes of its processor time bring no new covered edge, thirty at most.
Processor time is counted, not the clock's: a busy machine makes a run longer, not poorer. The targets
are built by `./fuzz.sh`; what they read grows in build/fuzz-corpus/TARGET as there.
"""
import argparse, concurrent.futures, os, pathlib, re, subprocess, sys, time

QUIET, LIMIT = 10 * 60, 30 * 60
ROOT = pathlib.Path(__file__).resolve().parent.parent
CORPUS = ROOT / "build/fuzz-corpus"
TICK = os.sysconf("SC_CLK_TCK")


def options_of(target):
    script = f'. <(sed -n "/^options_of() {{/,/^}}/p" fuzz.sh); options_of {target}'
    return subprocess.check_output(["bash", "-c", script], cwd=ROOT, text=True).split()


def processor_seconds(pid):
    fields = pathlib.Path(f"/proc/{pid}/stat").read_text().rpartition(")")[2].split()
    return (int(fields[11]) + int(fields[12])) / TICK


def last_number(log, name):
    found = re.findall(name + r":? *(\d+)", log.read_text(errors="replace"))
    return int(found[-1]) if found else 0


def saturate(target):
    corpus, seeds = CORPUS / target, ROOT / "fuzz/seeds" / target
    broken, log = CORPUS / f"{target}-broken", CORPUS / f"{target}.log"
    for folder in (corpus, broken):
        folder.mkdir(parents=True, exist_ok=True)
    # The time-out goes by the clock, which a busy machine outruns; no input may take long, but that is
    # what tests/limits measures.
    command = [ROOT / "build/asan/fuzz" / target, *options_of(target), "-timeout=900",
               "-rss_limit_mb=4096", "-entropic=0", "-print_final_stats=1", f"-artifact_prefix={broken}/", corpus]
    if seeds.is_dir():
        command.append(seeds)
    used = quiet_since = best = first = 0
    with open(log, "w") as out, subprocess.Popen(command, stdout=out, stderr=out, cwd=ROOT) as run:
        while run.poll() is None:
            time.sleep(5)
            try:
                used = processor_seconds(run.pid) or used
            except (FileNotFoundError, ProcessLookupError, IndexError):
                break
            covered = last_number(log, r"\bcov")
            first = first or last_number(log, r"INITED cov")
            if covered > best:
                best, quiet_since = covered, used
            if used - quiet_since >= QUIET or used >= LIMIT:
                run.send_signal(2)
                run.wait()
    failed = any(not found.name.startswith("slow-unit") for found in broken.iterdir())
    runs = last_number(log, r"number_of_executed_units") or last_number(log, r"\n#")
    end = "**broken**" if failed else "quiet" if used - quiet_since >= QUIET else "limit"
    return (f"| `{target}` | {used / 60:.0f} | {runs:,} | {first:,} | {best:,} | "
            f"{quiet_since / 60:.0f} | {len(list(corpus.iterdir())):,} | {end} |")


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--jobs", type=int, default=1)
    parser.add_argument("targets", nargs="*")
    options = parser.parse_args()
    targets = options.targets or sorted(path.name for path in (ROOT / "build/asan/fuzz").glob("*Fuzz"))
    print("| target | minutes | runs | covered at first | at last | last new at | inputs | end |")
    print("|---|---|---|---|---|---|---|---|", flush=True)
    with concurrent.futures.ThreadPoolExecutor(options.jobs) as pool:
        for row in pool.map(saturate, targets):
            print(row, flush=True)


if __name__ == "__main__":
    sys.exit(main())
