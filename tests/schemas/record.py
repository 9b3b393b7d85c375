"""Runs test programs and keeps every XML text that they have libxml2 read.

Usage: record.py RECORDER FOLDER PROGRAM...

RECORDER is the library that is preloaded, FOLDER is emptied first. Generated input is the same in
each run.
"""

import concurrent.futures
import os
import pathlib
import shutil
import subprocess
import sys


def run(program, environment):
    return subprocess.run(
        [program],
        cwd=pathlib.Path(program).parent,
        env=environment,
        stdin=subprocess.DEVNULL,
        stdout=subprocess.PIPE,
        stderr=subprocess.STDOUT,
    )


def main():
    recorder, folder, *programs = sys.argv[1:]
    shutil.rmtree(folder, ignore_errors=True)
    os.makedirs(folder)
    environment = dict(
        os.environ, LD_PRELOAD=recorder, RECORDED_TEXTS=folder, CPPTOOLS_TEST_SEED="1"
    )
    with concurrent.futures.ThreadPoolExecutor(max_workers=2) as pool:
        runs = list(pool.map(lambda program: run(program, environment), programs))
    for program, ended in zip(programs, runs):
        if ended.returncode != 0:
            print(f"{program} failed:\n{ended.stdout[-4000:].decode(errors='replace')}")
    print(f"{len(os.listdir(folder))} texts")
    sys.exit(any(ended.returncode != 0 for ended in runs))


main()
