"""Tells the machine that the measurements are taken on, as JSON. Called before they begin.

    machine.py RESULT.json
"""

import datetime
import json
import os
import sys


def processor():
    with open("/proc/cpuinfo", encoding="utf-8") as lines:
        for line in lines:
            if line.startswith("model name"):
                return line.split(":", 1)[1].strip()
    return "an unnamed processor"


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    told = {
        "processor": processor(),
        "cores": os.cpu_count(),
        "load": os.getloadavg()[0],
        "day": datetime.date.today().isoformat(),
    }
    with open(sys.argv[1], "w", encoding="utf-8") as out:
        json.dump(told, out, indent=1)
