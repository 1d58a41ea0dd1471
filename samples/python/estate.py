#!/usr/bin/env python3
"""What a command of the tool says of each project of a folder, as JSON lines, on one machine or many.

    estate.py FOLDER                                    here, one project after the other
    estate.py FOLDER --workers 4                        here, four processes
    estate.py FOLDER --scheduler tcp://host:8786        on the workers of a Dask cluster

A project is a task: one that fails is a line with "Failure", and one whose worker dies is done again
by another. The lines are the same however many work, in the order of the paths. --command names what
is asked of each project (inventory; uses and others that write JSON lines), with its options behind
it: --command "names --kind procedure". Every machine must see the folder under the same path."""

import argparse
import json
import shlex
import sys

import vendrelmodel


def ask(path, command):
    """The JSON lines of one project."""
    name, *options = shlex.split(command)
    try:
        return [json.dumps({"Project": path, **record}, ensure_ascii=False)
                for record in vendrelmodel.records(name, path, "--quiet", *options)]
    except vendrelmodel.VendrelError as error:
        return [json.dumps({"Project": path, "Failure": error.text}, ensure_ascii=False)]


def one_machine(paths, command):
    for path in paths:
        yield ask(path, command)


def cluster(paths, command, arguments):
    from distributed import Client, LocalCluster

    # Ctrl-C, or the end, closes what was started here.
    with (Client(arguments.scheduler) if arguments.scheduler else
          Client(LocalCluster(n_workers=arguments.workers, threads_per_worker=1,
                              dashboard_address=None))) as client:
        tasks = [client.submit(ask, path, command, pure=False, retries=3) for path in paths]
        for task in tasks:
            yield task.result()
            task.release()


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("folder")
    parser.add_argument("--command", default="inventory")
    parser.add_argument("--workers", type=int, default=0)
    parser.add_argument("--scheduler")
    arguments = parser.parse_args()
    paths = vendrelmodel.projects(arguments.folder)
    if arguments.workers or arguments.scheduler:
        results = cluster(paths, arguments.command, arguments)
    else:
        results = one_machine(paths, arguments.command)
    for lines in results:
        sys.stdout.writelines(line + "\n" for line in lines)
        sys.stdout.flush()


if __name__ == "__main__":
    main()
