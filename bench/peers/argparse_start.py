"""A tool on Python's argparse with as many commands as BENCH_COMMANDS says."""
import argparse
import os

parser = argparse.ArgumentParser()
groups = parser.add_subparsers(required=True)
for n in range(max(1, int(os.environ.get("BENCH_COMMANDS", "10")) // 10)):
    group = groups.add_parser(f"ns{n:04d}", help=f"Namespace number {n}")
    commands = group.add_subparsers(required=True)
    for c in range(10):
        command = commands.add_parser(f"cmd{c:03d}", help="Does one thing")
        command.add_argument("-n", "--name", required=True, help="Name of the object to work on")
        command.add_argument("--size", type=int, help="Size in megabytes")
        command.add_argument("-m", "--mode", choices=["fast", "safe"], help="Mode")
        command.add_argument("--force", action="store_true", help="Do not ask")
parser.parse_args()
print("done")
