"""What the Python peers measure with; the same as support/Measure.h."""


def memory(key):
    """Bytes of a line of /proc/self/status, such as VmRSS or VmHWM."""
    with open("/proc/self/status") as status:
        return next(1024 * int(line.split()[1]) for line in status if line.startswith(key + ":"))


def forget_peak():
    with open("/proc/self/clear_refs", "w") as out:
        out.write("5")


def report(what, key, value):
    print(f"{what}\t{key}\t{value:.6g}", flush=True)
