"""What the kernel has written down about a process and its children."""
import os
import time
from pathlib import Path


def tree(pid):
    """The process and its living descendants."""
    found = [pid]
    for parent in found:
        for task in Path(f"/proc/{parent}/task").glob("*/children"):
            try:
                found += [int(child) for child in task.read_text().split()]
            except OSError:
                pass
    return found


def cpu_seconds(pid):
    """Processor time of the tree, to the nanosecond: the kernel's CPU-time clock of each process (that of
    clock_getcpuclockid), which counts what ran in all its threads, ended ones too."""
    total = 0
    for process in tree(pid):
        try:
            total += time.clock_gettime_ns((~process << 3) | 2)
        except OSError:
            pass
    return total / 1e9


def context_switches(pid, kind="ctxt_switches"):
    """Of the tree's living threads, voluntary ("voluntary_ctxt_switches": how often it was woken) or all."""
    total = 0
    for process in tree(pid):
        for status in Path(f"/proc/{process}/task").glob("*/status"):
            try:
                total += sum(int(line.split()[1]) for line in status.read_text().splitlines()
                             if line.partition(":")[0].endswith(kind) and not (kind[0] == "v" and line[0] == "n"))
            except OSError:
                pass
    return total


def memory(pid):
    """MiB of the tree: resident at its peak, resident and its own alone, resident and anonymous, its share."""
    fields = {"VmHWM": 0, "RssAnon": 0, "Private_Clean": 0, "Private_Dirty": 0, "Pss": 0}
    for process in tree(pid):
        for name in ("status", "smaps_rollup"):
            for line in Path(f"/proc/{process}/{name}").read_text().splitlines():
                key, _, value = line.partition(":")
                if key in fields:
                    fields[key] += int(value.split()[0])
    mib = {key: value / 1024 for key, value in fields.items()}
    return {"peak": mib["VmHWM"], "private": mib["Private_Clean"] + mib["Private_Dirty"], "anonymous": mib["RssAnon"],
            "share": mib["Pss"]}


def unread(port):
    """Bytes in the receive queue of the socket on 127.0.0.1 with that local port."""
    wanted = f"{port:04X}"
    for line in Path("/proc/net/tcp").read_text().splitlines()[1:]:
        parts = line.split()
        if parts[1].endswith(":" + wanted):
            return int(parts[4].split(":")[1], 16)
    return 0


def machine_busy():
    """Processor seconds that all processes of the machine have run."""
    ticks = [int(number) for number in Path("/proc/stat").read_text().split("\n", 1)[0].split()[1:]]
    return (sum(ticks[:8]) - ticks[3] - ticks[4]) / os.sysconf("SC_CLK_TCK")
