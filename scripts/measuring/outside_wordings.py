# SPDX-License-Identifier: MIT
"""Requests as strangers typed them, put one by one to the built program in a home that looks lived in, and what became
of each: the calls, the reply, and every line of the user's files that is another one afterwards.

The requests come from a file of rows (intent, request, annotated request; tabs between), which is not part of this
project. Of each intent the rows are counted from 1: the odd ones are the half to learn from, the even ones the half to
measure on. Whether an outcome is right is for a reader to say: a file of verdicts holds a row for each (request,
outcome, verdict), so that after a change only what came out otherwise has to be read again. The verdicts:
  right   what was asked for is done or told, or it says truly that there is no such thing
  asked   it asks for what is missing, or which of several is meant, and changed nothing yet
  said    it says plainly that it cannot
  none    not understood, and nothing was done
  wrong   changed what was not asked; a wrong day, hour or words; a false claim"""

import collections
import concurrent.futures
import difflib
import hashlib
import json
import os
import pathlib
import shutil
import subprocess
import tempfile

VERDICTS = ("right", "asked", "said", "none", "wrong")
IN_REACH = ("calendar", "lists", "alarm", "datetime", "reminder", "note")
# A week of somebody's: what requests to change, to remove and to tell something need.
LIVED_IN = """put standup into my calendar every weekday at 9:30 am
put dentist appointment into my calendar next tuesday at 3 pm
put lunch with Ana into my calendar on friday at 1 pm
put staff meeting into my calendar on wednesday at 10 am
put yoga class into my calendar on saturday at 9 am
put dinner with John into my calendar tomorrow at 7 pm
remind me to call mom tomorrow at 5 pm
remind me to pay the rent on the 1st at 9 am
create a grocery list with milk, eggs, bread and butter
create a to do list with pay the electric bill, call the plumber and clean the garage
create a shopping list with shoes, batteries and a birthday card
set an alarm for 7 am every weekday
set an alarm for 6:30 am tomorrow
note that the wifi password is bluebird42
"""


def rows_of(path, half):
    counts = collections.Counter()
    for line in open(path, encoding="utf-8"):
        parts = line.rstrip("\n").split("\t")
        if len(parts) < 2 or parts[0] == "intent":
            continue
        counts[parts[0]] += 1
        if half == "all" or (counts[parts[0]] % 2 == 1) == (half == "learned"):
            yield parts[0], parts[1]


def environment_in(home):
    kept = {key: value for key, value in os.environ.items()
            if not key.endswith("_API_KEY") and key not in ("DBUS_SESSION_BUS_ADDRESS", "DISPLAY", "WAYLAND_DISPLAY")}
    return {**kept, "HOME": home, "XDG_DATA_HOME": home + "/data", "XDG_CONFIG_HOME": home + "/config",
            "XDG_STATE_HOME": home + "/state", "XDG_CACHE_HOME": home + "/cache", "XDG_RUNTIME_DIR": home + "/run",
            "TZ": "Europe/Berlin"}


def talk(program, home, typed):
    os.makedirs(home + "/run", mode=0o700, exist_ok=True)
    ended = subprocess.run([program, "chat", "--json"], input=typed, text=True, capture_output=True,
                           env=environment_in(home), timeout=120)
    return [json.loads(line) for line in ended.stdout.splitlines()]


def files_in(home):
    """The user's own files, which are what counts; indexes are made from them."""
    texts = {}
    for path in sorted(pathlib.Path(home, "data").rglob("*")):
        if path.is_file() and path.suffix in (".md", ".ics"):
            texts[path.name] = path.read_text(encoding="utf-8", errors="replace").splitlines()
    return texts


def changes(before, after):
    told = []
    for name in sorted(before.keys() | after.keys()):
        for line in difflib.ndiff(before.get(name, []), after.get(name, [])):
            if line[0] in "+-" and line[2:].split(":")[0] not in (
                    "id", "created", "updated", "UID", "DTSTAMP", "CREATED", "LAST-MODIFIED", "BEGIN", "END", "VERSION",
                    "PRODID", "author", "origin", "kind", "---") and line[2:].strip() not in ("", "---"):
                told.append(line[0] + line[2:].strip())
    return told


def outcome_of(program, lived_in, words):
    with tempfile.TemporaryDirectory() as folder:
        home = folder + "/home"
        shutil.copytree(lived_in, home)
        before = files_in(home)
        events = talk(program, home, words + "\n")
        told = changes(before, files_in(home))
    calls = [event["name"] + " " + event["result"].get("status", "failed") for event in events
             if event["event"] == "tool_result"]
    replies = [event["text"] for event in events if event["event"] == "reply"]
    return {"calls": calls, "changes": told, "reply": replies[-1] if replies else ""}


def name_of(words, outcome):
    """The same for the same words and outcome, whatever ids and days there are in it."""
    plain = json.dumps([words, outcome["calls"], len(outcome["changes"]), outcome["reply"]])
    return hashlib.sha256(plain.encode()).hexdigest()[:16]


def read_verdicts(path):
    if not path or not os.path.exists(path):
        return {}
    return dict(line.split("\t")[:2] for line in open(path, encoding="utf-8") if "\t" in line)


def measure(program, path, half, verdict_path, table_path):
    rows = list(rows_of(path, half))
    verdicts = read_verdicts(verdict_path)
    with tempfile.TemporaryDirectory() as folder:
        lived_in = folder + "/home"
        talk(program, lived_in, LIVED_IN)
        with concurrent.futures.ThreadPoolExecutor(4 * os.cpu_count()) as several:
            outcomes = list(several.map(lambda row: outcome_of(program, lived_in, row[1]), rows))
    counts = {True: collections.Counter(), False: collections.Counter()}
    by_intent = collections.defaultdict(collections.Counter)
    with open(table_path, "w", encoding="utf-8") as table:
        for (intent, words), outcome in zip(rows, outcomes):
            verdict = verdicts.get(name_of(words, outcome), "unread")
            counts[intent.startswith(IN_REACH)][verdict] += 1
            by_intent[intent][verdict] += 1
            table.write("\t".join([name_of(words, outcome), verdict, intent, words, "; ".join(outcome["calls"]),
                                   " | ".join(outcome["changes"]), outcome["reply"]]) + "\n")
    for intent in sorted(by_intent):
        print(f"{intent:24}", dict(by_intent[intent]))
    for is_in_reach, name in ((True, "within reach"), (False, "out of reach")):
        total = sum(counts[is_in_reach].values())
        shares = ", ".join(f"{verdict} {100 * counts[is_in_reach][verdict] / max(total, 1):.1f} %"
                           for verdict in (*VERDICTS, "unread") if counts[is_in_reach][verdict])
        print(f"{name}: {total} requests: {shares}")
    return 0 if rows and not counts[True]["unread"] + counts[False]["unread"] else 1
