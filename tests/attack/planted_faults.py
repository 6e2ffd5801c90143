#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Attacks small programs with faults of every sort and sees them found, and none in a program that refuses all."""
import os, subprocess, sys, tempfile

HERE = os.path.dirname(os.path.abspath(__file__))
KEPT = 'cd "$XDG_DATA_HOME/Quorvell/Notebook" || exit 2; '
# What is said of it (nothing of a sound program), the kind of attack, what the program does.
PROGRAMS = [
    (None, "odd command lines", "echo no >&2; exit 1"),
    ("crashed", "odd command lines", "kill -SEGV $$"),
    ("crashed", "hostile notes", "exit 3"),
    ("lost", "odd command lines", "exit 1"),
    ("lost", "odd command lines", KEPT + "rm *"),
    ("lost", "hostile notes", KEPT + "echo more >>hostile.md"),
    ("lost", "output that goes nowhere", "echo list 2>&-; exit 0"),
    ("lost", "in `notes edit`", KEPT + "sed -i 200,250d *"),
    ("lost", "in `notes export`", 'echo "[" >"$3"'),
    ("lost", "in `notes move`", "echo '{\"title\": \"Note 1\"}'"),
    ("lost", "in `remind`", 'echo \'{"status":"set","id":"0123456789ab"}\''),
    ("outlived", "hostile usage", "sleep 60 & exit 0"),
]


def main():
    failed = False
    for expected, kind, body in PROGRAMS:
        with tempfile.TemporaryDirectory() as folder:
            os.chmod(folder, 0o755)
            program = os.path.join(folder, "program")
            with open(program, "w") as file:
                file.write("#!/bin/sh\n%s\n" % body)
            attack = [sys.executable, os.path.join(HERE, "attack.py"), "--program", program, "--short", "--only", kind]
            run = subprocess.run(attack, capture_output=True, text=True, env=os.environ | {"TMPDIR": folder})
        if run.returncode != (1 if expected else 0) or (expected or "") not in run.stderr:
            failed = True
            print("Of '%s' it is not said that something was %s:\n%s%s" % (body, expected, run.stdout, run.stderr[-500:]))
    sys.exit(1 if failed else 0)


main()
