#!/usr/bin/env python3
# SPDX-License-Identifier: BSD-3-Clause
"""Runs a program and writes the most memory that it had, in KiB, into a file: peak_memory.py <file> <program> ...

Output and exit code are the program's own.
"""
import pathlib
import resource
import subprocess
import sys


def main():
    file, *command = sys.argv[1:]
    code = subprocess.run(command, check=False).returncode
    pathlib.Path(file).write_text(str(resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss), encoding="ascii")
    return code


if __name__ == "__main__":
    sys.exit(main())
