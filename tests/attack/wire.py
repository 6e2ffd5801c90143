# SPDX-License-Identifier: MIT
"""Attacks the live service over its wire: what each costs it, and whether an honest client is served meanwhile."""
import collections, contextlib, os, select, socket, ssl, struct, subprocess, threading, time

from ground import DEADLINE, Outcome, Running, mutated, peak, seeds

KEY = b"secret-of-this-run"
HEAD = (b"GET /v1/live/sessions HTTP/1.1\r\nHost: x\r\nUpgrade: websocket\r\nConnection: Upgrade\r\nSec-WebSocket-Version: 13\r\n"
        b"Sec-WebSocket-Key: dGhlIHNhbXBsZSBub25jZQ==\r\nAuthorization: Bearer " + KEY + b"\r\n\r\n")
TEXT, PING = 1, 9  # Kinds of frames.
EVENTS = [text for text in seeds("liveEvent") if b"{" in text and b"session.closed" not in text]
START = next(text for text in EVENTS if b'"session.start"' in text)


def frame(kind, payload, masked=True):
    """Masked with zeros, which leave the payload as it is."""
    size, bit = len(payload), 0x80 if masked else 0
    head = (struct.pack(">BB", 0x80 | kind, bit | size) if size < 126 else struct.pack(">BBH", 0x80 | kind, bit | 126, size)
            if size < 65536 else struct.pack(">BBQ", 0x80 | kind, bit | 127, size))
    return head + (b"\0\0\0\0" if masked else b"") + payload


def odd_text(chance):
    """Mostly UTF-8, since anything else ends a connection at once; now and then as it should be, for the same reason."""
    text = mutated(chance, EVENTS, 100000) if chance.random() < 0.7 else chance.choice(EVENTS)
    return text.decode(errors="ignore").encode() if chance.random() < 0.995 else text


def heard(connection, seconds=DEADLINE):
    """What comes within so long; b"" at the end of the connection, nothing where it is silent."""
    try:
        return connection.recv(65536) if select.select([connection], [], [], seconds)[0] else None
    except OSError:
        return b""


class Service(Running):
    """The live service, which wants a key; `wrap` makes TLS of a connection."""

    def __init__(self, ground, options=(), home=None, wrap=lambda connection: connection):
        self.wrap, self.process = wrap, ground.start(home or ground.home(), "live-service", "--port", "0", *options,
                                                     stdout=subprocess.PIPE, environment={"QUORVELL_LIVE_TOKEN": KEY})
        self.processes = [self.process]
        self.port = int(self.process.stdout.readline().decode().rsplit(":", 1)[1].split("/")[0])

    def dial(self):
        return socket.create_connection(("127.0.0.1", self.port), DEADLINE / 2)

    def session(self):
        connection = self.dial()
        connection.sendall(HEAD)
        heard(connection)
        return connection

    def outcome(self, what, problem, dials=1):
        """Whether a newcomer is served, and after how long. A problem is what came of the attack, "refused" is none."""
        begun = time.monotonic()
        for _ in range(dials):
            try:
                with self.wrap(self.dial()) as newcomer:
                    newcomer.sendall(HEAD)
                    answer = newcomer.recv(4096)
            except OSError as failure:
                answer = str(failure).encode()
            if answer.startswith(b"HTTP/1.1 101"):
                break
        verdict = ("crashed" if self.process.poll() is not None else "hung" if not answer.startswith(b"HTTP/1.1 101")
                   else "survived" if not problem else problem if problem == "refused" else "lost")
        return Outcome(verdict, "%s: %s; a newcomer met %r" % (what, problem, answer[:40]), time.monotonic() - begun,
                       peak(self.process))


# Each attack gives word while it stands: what is wrong already, if anything.

def pings(service, _):
    with service.session() as connection:
        connection.setblocking(False)
        end, data = time.monotonic() + 3, frame(PING, b"p" * 125) * 2000
        while time.monotonic() < end:
            try:
                select.select([], [connection], [], 0.1)
                connection.send(data)
            except BlockingIOError:
                pass
        yield ""


def idle(service, chance):
    held = [service.dial() for _ in range(chance.choice((31, 32, 33, 300)))]
    yield ""
    for connection in held:
        connection.close()
    yield ""


def flood(service, _):
    """Two that go on dialling while the newcomer does."""
    over = threading.Event()

    def dial():
        kept = collections.deque(maxlen=200)
        while not over.is_set():
            with contextlib.suppress(OSError):
                kept.append(service.dial())
    threads = [threading.Thread(target=dial, daemon=True) for _ in range(2)]
    for thread in threads:
        thread.start()
    for _ in range(5):
        time.sleep(0.1)
        yield ""
    over.set()
    for thread in threads:
        thread.join()


HEADS = seeds("httpRequest") + [HEAD.replace(KEY, b"guess"), HEAD.replace(b"Bearer ", b"")]


def odd_heads(service, chance):
    """Requests that do not show the key; none of them may come in."""
    with service.dial() as connection:
        sent = mutated(chance, HEADS, 200000)
        with contextlib.suppress(OSError):  # It may be refused while it still comes in.
            connection.sendall(sent)
        answer = heard(connection, 0.02)
        let_in = answer and answer.split(b" ")[1:2] in ([b"101"], [b"200"]) and KEY not in sent
        yield "%r was let in" % sent[:300] if let_in else "refused" if answer is not None else ""


def odd_messages(service, chance):
    """Fifty of a client with the key; it is told so or closed, and the others are served."""
    with service.session() as connection:
        with contextlib.suppress(OSError):  # It may be closed.
            connection.sendall(frame(TEXT, START) * chance.randrange(2))
            for _ in range(50):
                sent = frame(TEXT, odd_text(chance))
                connection.sendall(sent if chance.random() < 0.99 else mutated(chance, [sent]))
                heard(connection, 0)
            connection.sendall(frame(PING, b"all read"))
            while b"all read" not in (heard(connection, 0.3) or b"all read"):
                pass
        yield ""


def begun(ground, tls):
    if not tls:
        return Service(ground)
    home = ground.home()
    pem = os.path.join(home, "tls.pem")
    subprocess.run(["openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "1", "-subj", "/CN=localhost",
                    "-keyout", pem + ".key", "-out", pem], check=True, stderr=subprocess.DEVNULL)
    ground.give_away(home)
    trusting = ssl.create_default_context()
    trusting.check_hostname, trusting.verify_mode = False, ssl.CERT_NONE
    return Service(ground, ("--tls-certificate", pem, "--tls-key", pem + ".key"), home, trusting.wrap_socket)


def kind(attack, tls=False):
    def cases(ground, chance, _):
        with begun(ground, tls) as service:
            while True:
                for problem in attack(service, chance):
                    # Amid a flood one that waits may give way to the next before it could say its key.
                    yield service.outcome(attack.__name__, problem, dials=3 if attack is flood else 1)

    def ordinary(ground):
        with begun(ground, tls) as service:
            return service.outcome("one client", "")
    return ordinary, cases


KINDS = {
    "service: pings, never reading": (1, 4, *kind(pings)), "service: idle connections without a key": (2, 20, *kind(idle)),
    "service: a flood of connections": (5, 50, *kind(flood)), "service: TLS without a handshake": (2, 30, *kind(idle, tls=True)),
    "service: heads after accidents": (60, 2000, *kind(odd_heads)),
    "service: messages after accidents": (4, 150, *kind(odd_messages))}
