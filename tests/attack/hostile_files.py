# SPDX-License-Identifier: MIT
"""Files that somebody else wrote: the seeds of the fuzz targets after accidents, and shapes that once cost much.

What the program only reads must be the same, byte for byte, when it is done.
"""
from ground import MIB, bytes_of, files_below, judged, mutated, note, seeds

EVENT = ("BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:x\r\n%sBEGIN:VEVENT\r\nUID:a\r\nDTSTAMP:20260101T000000Z\r\n"
         "DTSTART%s\r\nSUMMARY:A\r\n%sEND:VEVENT\r\nEND:VCALENDAR\r\n")
ZONE = ("BEGIN:VTIMEZONE\r\nTZID:Mine\r\nBEGIN:STANDARD\r\nDTSTART:19700101T000000\r\nTZOFFSETFROM:+0100\r\nTZOFFSETTO:+0100\r\n"
        "%sEND:STANDARD\r\nEND:VTIMEZONE\r\n")
DATES = ",".join("2027%02d%02dT%02d%02d00" % (month, day, hour, minute) for month in range(1, 13) for day in range(1, 29)
                 for hour in range(24) for minute in range(0, 60, 5))
EVERY = [":20260101T090000\r\nRRULE:FREQ=" + rule for rule in (
    "SECONDLY", "MINUTELY;BYSECOND=1,2,3", "HOURLY;BYMONTH=2;BYMONTHDAY=30", "DAILY;INTERVAL=1;BYHOUR=" + "0,1,2,3,4,5,6,7" * 9,
    "YEARLY;BYWEEKNO=53;BYDAY=MO", "MONTHLY;BYDAY=5FR;BYSETPOS=-366;COUNT=9999999", "YEARLY;BYMONTH=2;BYMONTHDAY=30")]
CALENDARS = [EVENT % ("", start, "") for start in EVERY] + [
    EVENT % (ZONE % ("RRULE:FREQ=%s\r\n" % rate), ";TZID=Mine:20261124T090000", "")
    for rate in ("SECONDLY", "MINUTELY", "DAILY", "YEARLY;BYDAY=MO,TU,WE,TH,FR,SA,SU")] + [
    EVENT % (ZONE % ("RDATE:%s\r\n" % DATES), ";TZID=Mine:20261124T090000", ""),
    EVENT % ("", ":20261124T090000", "RDATE:%s\r\n" % DATES), EVENT % ("", ":20261124T090000", "EXDATE:%s\r\n" % DATES),
    EVENT % ("", ":20261124T090000", "ATTENDEE:mailto:a@b\r\n" * 60000), EVENT % ("", ":20261124T090000", "X" * 3000000 + "\r\n"),
    "BEGIN:VCALENDAR\r\n" + "BEGIN:VEVENT\r\n" * 100000, EVENT % ("", ";TZID=" + "../" * 80 + "dev/zero:20261124T090000", "")]

NOTES = [note(7, "Note \\u202e", "body\n" * many, header)[1] for many in (1, 100000) for header in (
    'remind_at: "2026-12-24T16:00:00.000Z"\nrepeat: "every minute"\n', 'steps: [%s"x"]\n' % ('"step",' * 50000),
    "steps: " + "[" * 60000 + "\n", 'image: "../../../../etc/passwd"\n', 'remind_at: "9999-12-31T23:59:59.999Z"\n')]
SETTINGS = [b'{"user_name": "Asha", "voice": "cedar", "only_send_speech": true, "daily_minutes": 30}',
            b'{"waking_hours": "7:30-23", "backend": "openai", "help_mode": "do", "max_output_tokens": 4096, "voice": null}',
            b'{"a":' * 5000, b"[" * 60000, b'{"voice": "' + b"v" * 70000 + b'"}', b'{"daily_minutes": 1e308}', b"\xff\xfe{\0}\0"]
LOG = [b'{"at":"2026-11-21T09:00:00.%03dZ","event":"%s","run":"abc%03d","tool":"set_reminder","ms":%d}\n' % (
    number % 1000, event, number % 7, number) for number, event in enumerate(
        (b"session_started", b"tool_called", b"session_lost", b"\\u001b[2J", b"user_said", b"session_ended") * 40)]
USAGE = [b'{"days":{"2026-11-21":{"spoken_seconds":12,"billed_seconds":20,"tokens":{"input":5,"output":1e300}},"2026-99-99":{}}}']

# How often in short and in full, the seeds, what is given as it is as well, the file's place, the commands that read it.
FILES = {
    "calendars": (24, 300, lambda: seeds("ics"), [text.encode() for text in CALENDARS], "DATA_HOME/Quorvell/Calendar/x.ics",
                  [("agenda", "week", "--json"), ("agenda", "free", "45"), ("agenda", "today")]),
    "notes": (12, 300, lambda: seeds("noteFile"), NOTES, "DATA_HOME/Quorvell/Notebook/hostile.md",
              [("notes", "list"), ("notes", "find", "a", "--json"), ("reminders",), ("agenda", "week"), ("notes", "facts")]),
    "settings": (8, 200, lambda: SETTINGS, SETTINGS, "CONFIG_HOME/Quorvell/settings.json",
                 [("usage",), ("notes", "list"), ("reminders",)]),
    "event logs": (5, 200, lambda: [b"".join(LOG)], [b"".join(LOG) * 90, b"".join(LOG).replace(b"\n", b"") * 50],
                   "STATE_HOME/Quorvell/events.jsonl", [("log",), ("log", "--list"), ("log", "--json")]),
    "usage": (4, 100, lambda: USAGE, [b"[" * 60000, b"9" * 70000], "STATE_HOME/Quorvell/usage.json",
              [("usage",), ("usage", "--json")]),
    "recordings": (0, 8, lambda: seeds("wavFile"), [bytes(MIB)], "speech.wav",
                   [("talk", "speech.wav", "--reply", "answer.wav")]),
}


def read_by(ground, place, content, command):
    home = ground.home({place: content} | dict([note(1, "The first", "whole")]))
    before = {path: bytes_of(path) for path in files_below(home)}
    run = ground.run(home, *command)
    changed = [path for path, text in before.items() if bytes_of(path) != text]
    return ground.forget(home, judged(run, "%s of %d bytes, `%s`" % (place, len(content), " ".join(command)),
                                      lost="%s has changed" % changed if changed else ""))


def reading(few, many, seeds_of, shapes, place, commands):
    def cases(ground, chance, _):
        known = seeds_of()
        for content in shapes:
            yield read_by(ground, place, content, commands[0])
        while True:
            content = mutated(chance, known + [shape for shape in shapes if len(shape) < 70000])
            if "settings" in place:
                content = content.replace(b'"/', b'"')  # Chance must not name a folder.
            yield read_by(ground, place, content, chance.choice(commands))

    def ordinary(ground):
        return read_by(ground, place, seeds_of()[0], commands[0])
    return few, many, ordinary, cases


KINDS = {"hostile %s" % name: reading(*row) for name, row in FILES.items()}
