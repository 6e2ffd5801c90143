# SPDX-License-Identifier: MIT
"""Attacks a built program in every way that this folder knows and prints what became of it, as a table.

Exit code 1 when anything crashed, hung or was lost; 2 when nothing could be attacked.
"""
import argparse, collections, os, random, shutil, sys, time

import command_lines, hostile_files, hostile_service, kills, wire
from ground import BAD, Ground, Outcome

SHARES = 4  # Of what would be a kind's equal share of the time left; most need less, and no kind may use up all.
ORDINARY = {}  # What has been measured, by what measures it.
COLUMNS = ("what", "runs", "survived", "refused", "hung", "crashed", "lost", "worst time", "peak memory", "ordinary")


def arguments():
    parser = argparse.ArgumentParser(prog="scripts/attack", description=__doc__.splitlines()[0])
    parser.add_argument("--program", required=True, help="the built program")
    parser.add_argument("--short", action="store_true", help="a few of each kind, within a minute")
    parser.add_argument("--seconds", type=float, help="about so many; every kind is done once (default: 900, in short 50)")
    parser.add_argument("--seed", type=int, default=1, help="what chance begins with")
    parser.add_argument("--only", default="", help="kinds that have this in their names")
    return parser.parse_args()


def attacked(name, ground, kind, rounds, seed, end):
    """The ordinary case and all outcomes of one kind, which is broken off when its time is over, but not before the first."""
    begin, cases = kind
    usual, outcomes = ORDINARY.get(begin) or ORDINARY.setdefault(begin, begin(ground)), []
    running = cases(ground, random.Random("%d %s" % (seed, name)), usual.seconds)
    while len(outcomes) < rounds and (not outcomes or time.monotonic() < end):
        outcomes.append(next(running))
        if outcomes[-1].verdict in BAD:
            print("%s, run %d: %s: %s" % (name, len(outcomes), outcomes[-1].verdict, outcomes[-1].what), file=sys.stderr)
    running.close()
    left = ground.stop_what_is_left()
    if left:
        outcomes.append(Outcome("hung", "processes that outlived the program", 0, 0))
        print("%s: %d processes outlived the program" % (name, left), file=sys.stderr)
    return usual, outcomes


def row(name, usual, outcomes):
    count = collections.Counter(outcome.verdict for outcome in outcomes)
    return [name, len(outcomes), *(count[verdict] for verdict in COLUMNS[2:7]),
            "%.3f s" % max(outcome.seconds for outcome in outcomes), "%d MiB" % max(outcome.mib for outcome in outcomes),
            "%.3f s, %d MiB" % (usual.seconds, usual.mib)]


def main():
    options = arguments()
    ground = Ground(os.path.abspath(options.program))
    try:
        runs, bad = attack(ground, options)
    finally:
        ground.stop_what_is_left()
    if bad:
        print("%d crashed, hung or lost something; what that left is in %s." % (bad, ground.folder), file=sys.stderr)
    else:
        shutil.rmtree(ground.folder, ignore_errors=True)
    sys.exit(1 if bad else 0 if runs else 2)


def attack(ground, options):
    """Prints the table. How much was done, and how much of it went badly."""
    begun, seconds, runs, bad, unrun = time.monotonic(), options.seconds or (50 if options.short else 900), 0, 0, []
    modules = (kills, command_lines, hostile_files, wire, hostile_service)
    plan = [(name, few if options.short else many, kind) for module in modules
            for name, (few, many, *kind) in module.KINDS.items() if options.only in name and (few if options.short else many)]
    print("| %s |\n|%s" % (" | ".join(COLUMNS), "---|" * len(COLUMNS)))
    for index, (name, rounds, kind) in enumerate(plan):
        now = time.monotonic()
        share = SHARES * (begun + seconds - now) / (len(plan) - index)
        usual, outcomes = attacked(name, ground, kind, rounds, options.seed, now + share)
        if len(outcomes) < rounds:
            unrun.append("%d of %s" % (rounds - len(outcomes), name))
        print("| %s |" % " | ".join(map(str, row(name, usual, outcomes))), flush=True)
        runs += len(outcomes)
        bad += sum(outcome.verdict in BAD for outcome in outcomes)
    print("\nSeed %d, %d s.%s" % (options.seed, time.monotonic() - begun, " No time for " + ", ".join(unrun) if unrun else ""))
    return runs, bad


if __name__ == "__main__":
    main()
