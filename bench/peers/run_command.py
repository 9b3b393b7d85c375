"""run_command.py FILE CALLS: a shell command whose output is kept, by Python's subprocess."""
import subprocess
import sys
import time

from measure import report

path, calls = sys.argv[1], int(sys.argv[2])
start = time.perf_counter()
size = 0
for _ in range(calls):
    done = subprocess.run(f"cat '{path}'", shell=True, input=b"", stdout=subprocess.PIPE,
                          check=True)
    size += len(done.stdout)
took = time.perf_counter() - start
report("Python subprocess", "us_per_call", took * 1e6 / calls)
report("Python subprocess", "mb_per_s", size / took / 1e6)
