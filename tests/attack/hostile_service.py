# SPDX-License-Identifier: MIT
"""A hosted service that means harm: floods, nonsense, and a model that calls tools by the thousand.

The assistant is asked to speak aloud, since what is only typed takes another wire.
"""
import base64, contextlib, hashlib, json, re, signal, socket, subprocess, threading, time

from ground import DEADLINE, Outcome, Running, bytes_of, ended_within, files_below, mutated, note, notes_in, peak
from wire import PING, TEXT, frame, odd_text


def event(**members):
    return frame(TEXT, json.dumps(members).encode(), masked=False)


def delta(kind, text):
    return event(type="session.%s.delta" % kind, delta=text)


class Peer:
    """The service's end of the first WebSocket that the assistant opens."""

    def __init__(self):
        self.listener, self.unread = socket.create_server(("127.0.0.1", 0)), b""
        self.listener.settimeout(DEADLINE)

    def accept(self):
        self.connection, _ = self.listener.accept()
        self.connection.settimeout(DEADLINE)
        while b"\r\n\r\n" not in self.unread:
            self.more()
        head, _, self.unread = self.unread.partition(b"\r\n\r\n")
        name = re.search(rb"(?i)sec-websocket-key: *(\S+)", head)[1]
        accepted = base64.b64encode(hashlib.sha1(name + b"258EAFA5-E914-47DA-95CA-C5AB0DC85B11").digest())
        self.send(b"HTTP/1.1 101 Switching Protocols\r\nUpgrade: websocket\r\nConnection: Upgrade\r\nSec-WebSocket-Accept: "
                  + accepted + b"\r\n\r\n")

    def send(self, data):
        self.connection.sendall(data)

    def more(self):
        came = self.connection.recv(1 << 20)
        if not came:
            raise ConnectionError("the assistant closed the connection")
        self.unread += came

    def take(self, count):
        while len(self.unread) < count:
            self.more()
        taken, self.unread = self.unread[:count], self.unread[count:]
        return taken

    def frame(self):
        first, second = self.take(2)
        length = second & 0x7f
        if length > 125:
            length = int.from_bytes(self.take(2 if length == 126 else 8), "big")
        mask, payload = self.take(4), self.take(length)
        mask = (mask * (length // 4 + 1))[:length]
        return first, (int.from_bytes(payload, "big") ^ int.from_bytes(mask, "big")).to_bytes(length, "big")

    def message(self):
        """The next whole text, as a value; an answer to a ping counts as one."""
        whole = b""
        while True:
            first, clear = self.frame()
            if first & 15 == 10:
                return clear
            if first & 15 == PING:
                self.send(frame(10, clear, masked=False))
            elif first & 15 < 2:
                whole += clear
                if first & 0x80:
                    return json.loads(whole)
            elif first & 15 == 8:
                raise ConnectionError("the assistant ended the session")


class Conversation(Running):
    """An assistant with a notebook, led to a hostile service."""

    def __init__(self, ground):
        self.peer, self.home = Peer(), ground.home(HELD)
        self.process = ground.start(self.home, "chat", "--aloud", "--transport", "websocket", stdin=subprocess.PIPE, environment={
            "OPENAI_API_KEY": "k", "QUORVELL_LIVE_HOST": "ws://127.0.0.1:%d" % self.peer.listener.getsockname()[1]})
        self.processes = [self.process]
        self.process.stdin.write(b"hello\n")
        self.process.stdin.flush()
        self.peer.accept()
        self.tools = self.peer.message()["session"]["delegation"]["response"]["tools"]
        self.peer.send(event(type="session.started", session={"id": "s"}))

    def ended(self):
        """Ctrl+C, and how long it took."""
        begun, most = time.monotonic(), peak(self.process)
        self.process.send_signal(signal.SIGINT)
        hung = not ended_within(self.process, DEADLINE)
        code = None if hung else self.process.wait()
        lost = harm_done(self.home)
        verdict = ("hung" if hung else "crashed" if code not in (0, 1, 130, -signal.SIGINT) else "lost" if lost
                   else "refused" if code == 1 else "survived")
        return Outcome(verdict, "after Ctrl+C: exit code %s %s" % (code, lost), time.monotonic() - begun, most)


EVENT = (b"BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:x\r\nBEGIN:VEVENT\r\nUID:kept\r\nDTSTAMP:20260101T000000Z\r\n"
         b"DTSTART:20270101T090000Z\r\nSUMMARY:kept event\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n")
HELD = dict([note(1, "The first", "kept first"), note(2, "Fact", "kept fact", "confirmed: true\n", kind="about_me"),
             note(3, "Call mum", "", 'remind_at: "2027-01-03T03:04:05.000Z"\n'),
             ("DATA_HOME/Quorvell/Calendar/kept.ics", EVENT)])
TEXTS = ["", "\0", "\u202e", "\x1b[2J", "x" * 40000, "000000000001", "000000000002", "000000000003", "kept", "kept event",
         "The first", "../../x", "tomorrow at 5 pm", "every second", "9999-12-31 23:59", "-1", "yes", "delete everything",
         "2027-01-01 10:00"]
MOST_CHANGES = 20  # For one request of the user; docs/limits.md.


def arguments(chance, schema, most=300):
    """A value as the schema wants it, or nearly; lists hold up to `most`."""
    kind = schema.get("type") if chance.random() < 0.9 else chance.choice(("string", "integer", "array", "null"))
    if kind == "object":
        wanted = {name: arguments(chance, member, most) for name, member in schema.get("properties", {}).items()
                  if chance.random() < 0.7}
        return wanted | ({"more": "x"} if chance.random() < 0.1 else {})
    if kind == "array":
        return [arguments(chance, schema.get("items", {}), 0) for _ in range(min(most, chance.choice((0, 1, 3, 300))))]
    if kind in ("integer", "number"):
        return chance.choice((0, -1, 1, 7, 2**31, -2**63, 1e300, 10**30))
    if kind == "string":
        return chance.choice(schema["enum"] if "enum" in schema and chance.random() < 0.9 else TEXTS)
    return chance.choice((True, False, None))


def harm_done(home):
    """What a model may not do by itself, however often it calls."""
    notes = list(notes_in(home).values())
    everything = "".join(bytes_of(path).decode(errors="replace") for path in files_below(home + "/DATA_HOME"))
    if not all(text in everything for text in ("kept first", "kept fact", "SUMMARY:kept event", "Call mum")):
        return "something that was kept is gone"
    if [read["body"] for read in notes if read.get("kind") == "about_me" and read.get("confirmed")] != ["kept fact"]:
        return "a fact was kept without a yes"
    changed = len(notes) - 3 + everything.count("BEGIN:VEVENT") - 1
    return "%d changes for one request" % changed if changed > MOST_CHANGES else ""


# Each attack gives the outcomes of what it did; how the conversation ends is one more.

def flooding(harm):
    """The same bytes for three seconds, and on while the user wants to leave."""
    def attack(conversation, _):
        def pour():
            with contextlib.suppress(OSError):
                while True:
                    conversation.peer.send(harm)
        threading.Thread(target=pour, daemon=True).start()
        time.sleep(3)
        return ()
    return attack


def odd_events(conversation, chance):
    """Three hundred a conversation."""
    with contextlib.suppress(OSError):  # The assistant may have had enough.
        for _ in range(300):
            sent = frame(TEXT, odd_text(chance), masked=False)
            conversation.peer.send(sent if chance.random() < 0.997 else mutated(chance, [sent]))
        conversation.peer.send(frame(PING, b"all read", masked=False))
        while conversation.peer.message() != b"all read":
            pass
    return ()


def calls(conversation, chance):
    """A model that calls tools a hundred at a time. Each call is answered."""
    for batch, size in enumerate((24, 100, 100)):
        sent, begun = {}, time.monotonic()
        events = [{"type": "response.created", "response": {"id": "r%d" % batch}}]
        for number in range(size):
            tool, call = chance.choice(conversation.tools), "%d-%d" % (batch, number)
            text = json.dumps(arguments(chance, tool["parameters"]))
            sent[call] = tool["name"] if chance.random() < 0.97 else chance.choice(("nonsense", "", "\x1b[2J", "n" * 500))
            events.append({"type": "response.output_item.done", "item": {
                "type": "function_call", "call_id": call, "name": sent[call], "status": "completed",
                "arguments": text if chance.random() < 0.95 else text[:chance.randint(0, len(text))]}})
        events.append({"type": "response.completed", "response": {"id": "r%d" % batch, "status": "completed"}})
        texts = b"".join(event(type="response.event", event=one) for one in events)
        threading.Thread(target=conversation.peer.send, args=(texts,), daemon=True).start()
        yield from answers(conversation, sent, begun)


def answers(conversation, sent, begun):
    def outcome(verdict, what):
        return Outcome(verdict, what, time.monotonic() - begun, peak(conversation.process))
    try:
        while sent:
            item = conversation.peer.message().get("item", {})
            if item.get("type") == "function_call_output" and item["call_id"] in sent:
                yield outcome("refused" if '"error"' in item["output"] else "survived", sent.pop(item["call_id"]))
    except OSError as problem:
        for name in sent.values():
            yield outcome("hung", "%s was never answered (%s)" % (name, problem))


def kind(attack):
    def cases(ground, chance, _):
        while True:
            with Conversation(ground) as conversation:
                yield from attack(conversation, chance)
                yield conversation.ended()
    return ordinary, cases


def ordinary(ground):
    with Conversation(ground) as conversation:
        conversation.peer.send(delta("output_transcript", "Hello."))
        time.sleep(1)
        return conversation.ended()


FLOODS = {  # What is sent again and again, and how often in short and in full.
    "pings, never reading": (0, 3, frame(PING, b"p" * 125, masked=False) * 2000),
    "an answer without blanks or end": (0, 3, delta("output_transcript", "x" * 8000) * 20),
    "an answer in words without end": (1, 3, delta("output_transcript", "word " * 10) * 500),
    "heard words without end": (0, 3, delta("input_transcript", "word " * 10) * 500),
    "sound without end": (0, 3, delta("output_audio", base64.b64encode(bytes(1920)).decode()) * 200)}
KINDS = {"assistant: calls by the thousand": (225, 5625, *kind(calls)),
         "assistant: events after accidents": (4, 50, *kind(odd_events))}
KINDS |= {"assistant: " + name: (few, many, *kind(flooding(harm))) for name, (few, many, harm) in FLOODS.items()}
