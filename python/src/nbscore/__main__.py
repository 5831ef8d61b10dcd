"""The command itself: ``python3 -m nbscore score model.pmml cases.csv``."""

from __future__ import annotations

import os
import pathlib
import sys


def main() -> None:
    command = pathlib.Path(__file__).parent / "_native" / "bin" / "nbscore"
    # In the place of this process: signals, pipes and the exit status are the command's own.
    os.execv(command, [str(command), *sys.argv[1:]])


if __name__ == "__main__":
    main()
