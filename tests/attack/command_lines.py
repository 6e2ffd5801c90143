# SPDX-License-Identifier: MIT
"""Command lines that nobody means, output that goes nowhere, and pipes where files are expected."""
import os, re, signal

from ground import bytes_of, files_below, judged, note

COMMANDS = ["", "chat", "talk PATH", "remind WORDS", "reminders", "reminders list", "reminders done ID",
            "reminders later ID WORDS", "agenda", "agenda today", "agenda week", "agenda free NUMBER", "notes", "notes list",
            "notes find WORDS", "notes show ID", "notes add WORDS", "notes edit ID", "notes tick ID NUMBER",
            "notes picture ID PATH", "notes history ID", "notes restore ID NUMBER", "notes delete ID", "notes facts",
            "notes remember WORDS", "notes confirm ID", "notes forget-facts --yes", "notes export PATH", "notes move PATH",
            "log", "log ID", "usage", "doctor", "live-service --port 0", "agent", "nonsense"]
OPTIONS = ["--json", "--help", "--version", "--verbose", "--dry-run", "--now", "--zone", "--list", "--last", "--yes", "--reply",
           "--device", "--backend", "--transport", "--host", "--port", "--token-file", "--fault", "--child", "--voice",
           "--tls-certificate", "--aloud", "--push-to-talk", "--list-devices", "--nonsense", "--", "-", "-x", "--json=--json"]
WORDS = ["", " ", "%s%n%d", "-1", "0", "99999999999999999999", "NaN", "2026-13-45T99:99:99Z", "tomorrow at 5 pm call mum",
         "every monday", "\u202eevil", "\x1b[2J\x07", "\udcff\udcfe", "\U0001F469\u200d\U0001F4BB" * 500, "e" + "\u0301" * 5000,
         "x" * 100000, "a" * 300, "*", "'; --", "openai", "on_device", "websocket", "Europe/Berlin", "Mars/Olympus",
         "slow=99999999s", "drop=-1@99", "malformed", "in 99999999999 years x", "127.0.0.1:1", "wss://127.0.0.1:1"]
PATHS = ["./new", "./there.txt", "./folder", "./folder/", "./no/such/place", "./link", "./loop", "./pipe", "./read-only/x",
         "./" + "p" * 255, "./\udcff", ".", "./there.txt/x", "./speech.wav", "./DATA_HOME/Quorvell/Notebook",
         "./DATA_HOME/Quorvell/Notebook/inside", "./CONFIG_HOME/Quorvell/settings.json"]
FITTING = {"ID": ["000000000001", "000000000002", "000000000003", "0000", ""], "NUMBER": ["1", "2", "45", "0", "-1", "9" * 30],
           "PATH": PATHS, "WORDS": WORDS}
KEPT = {"there.txt": b"kept text", "folder/deep.txt": b"kept deep"} | dict(
    [note(1, "The first", "kept first"), note(2, "The second", "- [ ] kept second"),
     note(3, "Fact", "kept fact", "confirmed: true\n", kind="about_me")])


def furnished(ground):
    home = ground.home(KEPT)
    os.symlink("there.txt", os.path.join(home, "link"))
    os.symlink("loop", os.path.join(home, "loop"))
    os.mkdir(os.path.join(home, "read-only"), 0o555)
    os.mkfifo(os.path.join(home, "pipe"))
    ground.give_away(home)
    return home


def gone(home, words):
    """What nobody asked to remove, and is nowhere below the home."""
    left = b"".join(map(bytes_of, files_below(home)))
    forgettable = (b"kept fact",) if "forget-facts" in words else (b"kept first", b"kept second") if "tick" in words else ()
    lost = [text for text in re.findall(rb"kept \w+", b"".join(KEPT.values())) if text not in left and text not in forgettable]
    return "%s is gone" % lost if lost else ""


def odd_line(chance):
    words = [chance.choice(FITTING.get(word, [word])) for word in chance.choice(COMMANDS).split()]
    for _ in range(chance.choice((0, 0, 1, 1, 2, 4))):
        words.append(chance.choice(chance.choice((OPTIONS, WORDS, PATHS, ["--json"]))))
    if chance.random() < 0.2:
        words[1:2] = []
    return words


def odd_lines(ground, chance, _):
    while True:
        words = odd_line(chance)
        home, typed = furnished(ground), chance.choice((b"", b"", b"\xff\0\n", b"x" * 200000, b"remind me\n" * 3, b"/quit\n"))
        what = "%a" % [word[:60] for word in words]
        # What goes on by itself is told to end.
        told = {"end_after": 3, "signal_sent": signal.SIGTERM} if words[:1] in (["agent"], ["live-service"], ["talk"]) else {}
        run = ground.run(home, *words, typed=typed, environment={"EDITOR": "true"}, **told)
        if told and run.code in (-signal.SIGTERM, 128 + signal.SIGTERM):
            run = run._replace(code=0)
        yield ground.forget(home, judged(run, what, lost=gone(home, words)))


SAYING = [("--help",), ("--version",), ("notes", "list"), ("notes", "list", "--json"), ("notes", "show", "000000000001"),
          ("notes", "find", "kept"), ("notes", "export", "-", "--json"), ("reminders",), ("agenda", "week"), ("usage",),
          ("doctor", "--json"), ("remind", "tomorrow at 5 pm call mum", "--json"), ("notes", "add", "more", "--json"),
          ("notes", "facts"), ("chat", "--json"), ("nonsense",)]


def nowhere(ground, chance, _):
    """A script must not take half a list for a whole one: what could not be printed is an exit code other than 0."""
    while True:
        for words in SAYING:
            for place in ("a full disk", "a closed pipe", "a closed descriptor"):
                home = furnished(ground)
                reader, writer = os.pipe()
                os.close(reader)
                out = open("/dev/full", "wb") if place == "a full disk" else writer
                start = {"program": "/bin/sh"} if place == "a closed descriptor" else {}
                line = ("-c", 'exec "$0" "$@" >&-', ground.program) + words if start else words
                run = ground.run(home, *line, out=out, typed=b"what time is it\n", **start)
                os.close(writer)
                what = "`%s` into %s" % (" ".join(words), place)
                silent = run.code == 0 and place == "a full disk"
                code = 1 if run.code == -signal.SIGPIPE else run.code
                yield ground.forget(home, judged(run._replace(code=code, out=b"-"), what,
                                                 lost="it says that all is well" if silent else gone(home, words)))


PIPED = ["CONFIG_HOME/Quorvell/settings.json", "STATE_HOME/Quorvell/events.jsonl", "STATE_HOME/Quorvell/usage.json",
         "STATE_HOME/Quorvell/typed.jsonl", "DATA_HOME/Quorvell/Notebook/pipe.md", "DATA_HOME/Quorvell/Calendar/pipe.ics",
         "DATA_HOME/Quorvell/Notebook/.quorvell.lock", "DATA_HOME/Quorvell/Notebook/.history/000000000001.json", "pipe"]
READING = [("usage",), ("log",), ("notes", "list"), ("notes", "tick", "000000000002", "1"), ("agenda", "week"), ("chat",),
           ("notes", "export", "pipe", "--json"), ("talk", "pipe"), ("talk", "speech.wav", "--reply", "pipe"),
           ("notes", "picture", "000000000001", "pipe"), ("notes", "move", "./pipe")]


def pipes(ground, chance, _):
    while True:
        for piped in PIPED:
            for words in READING:
                home = furnished(ground)
                path = os.path.join(home, piped)
                os.makedirs(os.path.dirname(path), exist_ok=True)
                if not os.path.exists(path):
                    os.mkfifo(path)
                ground.give_away(home)
                run = ground.run(home, *words, typed=b"what time is it\n")
                what = "`%s` with a pipe as %s" % (" ".join(words), piped)
                yield ground.forget(home, judged(run, what, lost=gone(home, words)))


def ordinary(ground):
    return ground.run(furnished(ground), "notes", "list")


KINDS = {"odd command lines": (25, 400, ordinary, odd_lines), "output that goes nowhere": (16, 48, ordinary, nowhere),
         "pipes as files": (10, 120, ordinary, pipes)}
