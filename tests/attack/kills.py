# SPDX-License-Identifier: MIT
"""Kills the program at moments that it did not choose, and sees to it that nothing is lost or torn.

What a command confirmed must be there, and what was there before must still be, whole.
"""
import json, os, re, select, signal, subprocess, time

from ground import DEADLINE, NOTEBOOK, Outcome, Running, bytes_of, ended_within, judged, note, notes_in, peak


def torn(home, folder=NOTEBOOK):
    return next(("%s is torn" % path for path, read in notes_in(home, folder).items() if not read.get("id")), "")


def keeping(arguments, typed=b""):
    """A command that keeps notes; the ids that whole lines of its output name must be there from then on."""
    known = {"%012x" % 1}

    def check(ground, home, number, run):
        known.update(found.decode() for found in re.findall(rb'"(?:set|kept)","id":"([0-9a-f]{12})".*\n', run.out))
        gone = known - {read.get("id") for read in notes_in(home).values()}
        return torn(home) or ("%s was confirmed and is gone" % gone if gone else "")
    return changing(dict([note(1, "The first", "whole")]), lambda ground, home, number, **more: ground.run(
        home, *arguments, typed=typed, **more), check)


LINES = 400
EDITED = dict([note(1, "Edited", "version.0\n" * LINES)])
MANY = dict(note(number, "Note %d" % number, "body %d\n" % number * 30) for number in range(1, 41))


def edit(ground, home, number, **more):
    return ground.run(home, "notes", "edit", "%012x" % 1, **more, environment={
        "EDITOR": "sed -i s/version.[0-9]*/version.%d/" % number})


def torn_edit(home, number, run):
    versions = [re.findall(r"version\.(\d+)", read.get("body", "")) for read in notes_in(home).values()]
    if len(versions) != 1 or len(versions[0]) != LINES or len(set(versions[0])) != 1:
        return "the note is torn: %s" % versions
    return "" if run.code != 0 or int(versions[0][0]) == number else "the edit was confirmed and is gone"


def move(ground, home, number, **more):
    return ground.run(home, "notes", "move", home + "/place%d" % (number % 3), **more)


def lost_move(ground, home):
    listed = ground.run(home, "notes", "list", "--json")
    lost = {"Note %d" % one for one in range(1, 41)} - {json.loads(line)["title"] for line in listed.out.splitlines()}
    return "%s are not where the settings say" % lost if lost else torn(home, "")


def export(ground, home, number, **more):
    return ground.run(home, "notes", "export", home + "/all.json", "--json", **more)


def torn_export(home):
    changed = [path for path, content in MANY.items() if bytes_of(os.path.join(home, path)) != content]
    try:
        whole = not os.path.exists(home + "/all.json") or len(json.loads(bytes_of(home + "/all.json"))) == len(MANY)
    except ValueError:
        whole = False
    return "%s changed" % changed if changed else "" if whole else "the export is torn"


def changing(files, command, check):
    """A command that changes one notebook over and over."""
    def cases(ground, chance, usual):
        home = ground.home(files)
        for number in range(1, 1 << 30):
            run = command(ground, home, number, end_after=chance.uniform(0.2, 1.1) * usual)
            yield judged(run, "killed, run %d" % number, check(ground, home, number, run), killed=True)
    return lambda ground: command(ground, ground.home(files), 1), cases


class Desk(Running):
    """A bus of its own with a notification service, whose calls it keeps."""

    def __init__(self, ground, home):
        bus = ground.start(home, "--session", "--nofork", "--nopidfile", "--print-address",
                           "--address=unix:path=" + home + "/bus", program="/usr/bin/dbus-daemon", stdout=subprocess.PIPE)
        self.address, self.text = {"DBUS_SESSION_BUS_ADDRESS": bus.stdout.readline().decode().strip()}, b""
        service = ground.start(home, "-um", "dbusmock", "--session", "--template", "notification_daemon",
                               program="/usr/bin/python3", stdout=subprocess.PIPE, environment=self.address)
        self.processes, self.calls = (service, bus), service.stdout
        waiting = ground.start(home, "wait", "--session", "--timeout=20", "org.freedesktop.Notifications",
                               program="/usr/bin/gdbus", environment=self.address)
        assert waiting.wait() == 0, "the notification service did not begin"

    def wait_for(self, words, seconds, times=1):
        end = time.monotonic() + seconds
        while self.text.count(words) < times and (left := end - time.monotonic()) > 0:
            if select.select([self.calls], [], [], left)[0]:
                self.text += os.read(self.calls.fileno(), 65536)
        return self.text.count(words)


def due_note(number):
    return note(number, "Due %d" % number, "", 'remind_at: "2026-01-03T03:04:05.000Z"\n')


def noticing(ground, chance, usual):
    """An agent that is killed around its notice, and one after it: the reminder is told, again at the worst."""
    for number in range(1, 1 << 30):
        title, home = b"Due %d" % number, ground.home(dict([due_note(number)]))
        with Desk(ground, home) as desk:
            first = ground.start(home, "agent", environment=desk.address)
            after = desk.wait_for(title, chance.choice((0.3, 0.6, 0.9, 4, 4)) * usual)
            time.sleep(chance.choice((0, 0.002, 0.005, 0.012, 0.05)) if after else 0)
            first.kill()
            first.wait()
            yield agent_run(ground, home, desk, title, (usual * 2, 2) if after else (DEADLINE,))


def agent_run(ground, home, desk, title, patience):
    begun, agent = time.monotonic(), ground.start(home, "agent", environment=desk.address)
    desk.wait_for(title, *patience)
    seconds, most = time.monotonic() - begun, peak(agent)
    agent.terminate()
    hung, times = not ended_within(agent, DEADLINE), desk.text.count(title)
    agent.kill()
    verdict = "hung" if hung else "crashed" if agent.wait() not in (0, -signal.SIGTERM) else "survived" if times else "lost"
    return Outcome(verdict, "told %d times, exit code %d" % (times, agent.wait()), seconds, most)


def ordinary_notice(ground):
    home = ground.home(dict([due_note(1)]))
    with Desk(ground, home) as desk:
        return agent_run(ground, home, desk, b"Due 1", (DEADLINE,))


TWO = b"remind me on 9 december at 1 pm to do it\nremind me on 9 december at 2 pm to do it\n"
# How often it is done in short and in full, the ordinary case, the attack.
KINDS = {
    "kill -9 in `remind`": (10, 200, *keeping(("remind", "in 3 days do it", "--json"))),
    "kill -9 in `chat`, two reminders": (2, 20, *keeping(("chat", "--json"), TWO)),
    "kill -9 in `notes edit`": (8, 100, *changing(EDITED, edit, lambda _, home, number, run: torn_edit(home, number, run))),
    "kill -9 in `notes move`": (4, 60, *changing(MANY, move, lambda ground, home, *_: lost_move(ground, home))),
    "kill -9 in `notes export`": (6, 100, *changing(MANY, export, lambda _, home, *__: torn_export(home))),
    "kill -9 in `agent`, around its notice": (2, 40, ordinary_notice, noticing),
}
