"""Describes the machine that the measurements are taken on, as JSON. Called before they begin.

    machine.py RESULT.json
"""

import datetime
import json
import os
import sys
import time


def processor():
    with open("/proc/cpuinfo", encoding="utf-8") as lines:
        for line in lines:
            if line.startswith("model name"):
                return line.split(":", 1)[1].strip()
    return "an unnamed processor"


def times_of_cores():
    """All of it, and what was idle, since the machine began."""
    with open("/proc/stat", encoding="utf-8") as lines:
        times = [int(word) for word in lines.readline().split()[1:9]]
    return sum(times), times[3] + times[4]


def share_in_use(seconds):
    """Of all cores, by whatever else runs, other machines on the same processor included."""
    whole_before, idle_before = times_of_cores()
    time.sleep(seconds)
    whole, idle = times_of_cores()
    return 1 - (idle - idle_before) / max(whole - whole_before, 1)


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    facts = {
        "processor": processor(),
        "cores": os.cpu_count(),
        "share_in_use": share_in_use(2),
        "day": datetime.date.today().isoformat(),
    }
    with open(sys.argv[1], "w", encoding="utf-8") as out:
        json.dump(facts, out, indent=1)
