#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Attacks the wire of a built program from both ends, on loopback and in temporary folders, and prints what each cost.

    tests/peers/wire_attacks.py PROGRAM [SECONDS]

One line each: what was done, the greatest memory of the attacked program, and what an honest client met meanwhile.
Needs openssl for the attacks on TLS. The assistant is asked to speak aloud, since what is only typed takes another wire.
"""
import base64, os, select, socket, ssl, struct, subprocess, sys, tempfile, threading, time

KEY = "secret-of-this-run"
HEAD = ("GET /v1/live/sessions HTTP/1.1\r\nHost: x\r\nUpgrade: websocket\r\nConnection: Upgrade\r\n"
        "Sec-WebSocket-Version: 13\r\nSec-WebSocket-Key: dGhlIHNhbXBsZSBub25jZQ==\r\n"
        "Authorization: Bearer %s\r\n\r\n" % KEY).encode()


def surroundings(home, **more):
    env = {"PATH": os.environ["PATH"], "LANG": "C.UTF-8", "HOME": home}
    for name in ("CONFIG_HOME", "DATA_HOME", "STATE_HOME", "CACHE_HOME", "RUNTIME_DIR"):
        env["XDG_" + name] = os.path.join(home, name)
        os.makedirs(env["XDG_" + name], mode=0o700, exist_ok=True)
    return env | more


def memory(process):
    """In MiB, now."""
    try:
        with open("/proc/%d/status" % process.pid) as status:
            return next((int(line.split()[1]) // 1024 for line in status if line.startswith("VmRSS")), 0)
    except OSError:
        return 0


class Service:
    def __init__(self, program, home, *options):
        self.process = subprocess.Popen([program, "live-service", "--port", "0", *options], stdout=subprocess.PIPE,
            stderr=subprocess.DEVNULL, env=surroundings(home, QUORVELL_LIVE_TOKEN=KEY))
        line = self.process.stdout.readline().decode()
        self.port = int(line.rsplit(":", 1)[1].split("/")[0])

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.kill()
        self.process.wait()

    def dial(self, source=None):
        connection = socket.socket()
        connection.settimeout(4)
        if source:
            connection.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)
            connection.bind(source)
        connection.connect(("127.0.0.1", self.port))
        return connection


def frame(kind, payload, masked=True):
    length = bytes([len(payload)]) if len(payload) < 126 else b"\x7e" + struct.pack(">H", len(payload))
    if len(payload) > 65535:
        length = b"\x7f" + struct.pack(">Q", len(payload))
    head = bytes([0x80 | kind]) + bytes([length[0] | (0x80 if masked else 0)]) + length[1:]
    return head + (b"\0\0\0\0" if masked else b"") + payload


def answer(connection):
    """The first line of an answer to an honest request, or why there is none."""
    begun = time.time()
    try:
        connection.sendall(HEAD)
        text = connection.recv(4096).split(b"\r\n")[0].decode() or "closed"
    except OSError as problem:
        text = "nothing (%s)" % problem
    return "%s after %.2f s" % (text, time.time() - begun)


def pour(connection, data, seconds, process):
    """Writes and never reads; the greatest memory of the other side."""
    connection.setblocking(False)
    most, end, sent = 0, time.time() + seconds, 0
    while time.time() < end:
        try:
            select.select([], [connection], [], 0.1)
            sent += connection.send(data)
        except BlockingIOError:
            pass
        except OSError as problem:
            return max(most, memory(process)), sent, "closed: %s" % problem
        most = max(most, memory(process))
    return most, sent, "still open"


def pings_to_the_service(program, home, seconds):
    with Service(program, home) as service:
        before = memory(service.process)
        connection = service.dial()
        answer(connection)
        most, sent, end = pour(connection, frame(9, b"p" * 125) * 2000, seconds, service.process)
        return "%d -> %d MiB, %d MiB sent, %s; newcomer: %s" % (
            before, most, sent >> 20, end, answer(service.dial()))


def idle_without_a_key(program, home, seconds):
    with Service(program, home) as service:
        idle = [service.dial() for _ in range(32)]
        time.sleep(0.5)
        return "newcomer: %s" % answer(service.dial()) + " " * (len(idle) == 0)


def steady_flood(program, home, seconds):
    with Service(program, home) as service:
        over = threading.Event()

        def flood():
            kept = []
            while not over.is_set():
                try:
                    kept.append(service.dial())
                except OSError:
                    pass
                kept = kept[-200:]
        threads = [threading.Thread(target=flood) for _ in range(2)]
        for thread in threads:
            thread.start()
        time.sleep(1)
        answers = []
        for _ in range(5):
            try:
                with service.dial() as newcomer:
                    answers.append(answer(newcomer))
            except OSError as problem:
                answers.append(str(problem))
        over.set()
        for thread in threads:
            thread.join()
        return "newcomers: %s; %d MiB" % (", ".join(answers), memory(service.process))


def tls_without_handshake(program, home, seconds):
    pem = os.path.join(home, "tls.pem")
    subprocess.run(["openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "1", "-subj", "/CN=localhost",
        "-keyout", pem + ".key", "-out", pem], check=True, stderr=subprocess.DEVNULL)
    with Service(program, home, "--tls-certificate", pem, "--tls-key", pem + ".key") as service:
        trusting = ssl.create_default_context()
        trusting.check_hostname, trusting.verify_mode = False, ssl.CERT_NONE

        def newcomer():
            try:
                return answer(trusting.wrap_socket(service.dial()))
            except OSError as problem:
                return "nothing (%s)" % problem
        silent = [service.dial() for _ in range(31)]
        time.sleep(0.3)
        told = "newcomer during: " + newcomer()
        for connection in silent:
            connection.close()
        time.sleep(0.3)
        told += ", after: " + newcomer()
        try:
            silent = [service.dial() for _ in range(300)]
        except OSError as problem:
            return told + ", then nobody is accepted (%s)" % problem
        return told + ", beside 300: " + newcomer()


def unmasked(program, home, seconds):
    with Service(program, home) as service:
        connection = service.dial()
        answer(connection)
        connection.sendall(frame(1, b'{"type":"session.start","session":{}}', masked=False))
        try:
            text = connection.recv(4096)
        except OSError as problem:
            return "nothing (%s)" % problem
        return "closed with %d" % struct.unpack(">H", text[2:4]) if text[:1] == b"\x88" else repr(text[:60])


def one_source_port(program, home, seconds):
    with Service(program, home) as service:
        one = service.dial(("127.0.0.2", 0))
        two = service.dial(("127.0.0.3", one.getsockname()[1]))
        one.sendall(HEAD)
        two.sendall(HEAD)
        time.sleep(0.5)
        answers = []
        for connection in (one, two):
            connection.recv(4096)
            connection.sendall(frame(1, b'{"type":"nonsense"}'))
            try:
                answers.append(connection.recv(4096)[:1] or b"closed")
            except OSError as problem:
                answers.append(str(problem))
        return "answers: %s" % answers


class HostileService(threading.Thread):
    """Begins a session and then does what it is told to the client."""

    def __init__(self, harm):
        super().__init__(daemon=True)
        self.harm, self.listener = harm, socket.create_server(("127.0.0.1", 0))
        self.begun = threading.Event()

    def run(self):
        import hashlib
        while True:
            connection, _ = self.listener.accept()
            head = b""
            while b"\r\n\r\n" not in head:
                head += connection.recv(4096)
            if not head.startswith(b"GET"):
                connection.settimeout(0.3)
                try:
                    while connection.recv(65536):
                        pass
                except OSError:
                    pass
                connection.sendall(b"HTTP/1.1 404 Not Found\r\nContent-Length: 0\r\n\r\n")
                connection.close()
                continue
            name = next(line.split(b":", 1)[1].strip() for line in head.split(b"\r\n")
                if line.lower().startswith(b"sec-websocket-key"))
            accept = base64.b64encode(hashlib.sha1(name + b"258EAFA5-E914-47DA-95CA-C5AB0DC85B11").digest())
            connection.sendall(b"HTTP/1.1 101 Switching Protocols\r\nUpgrade: websocket\r\nConnection: Upgrade\r\n"
                b"Sec-WebSocket-Accept: " + accept + b"\r\n\r\n")
            connection.recv(65536)
            connection.sendall(frame(1, b'{"type":"session.started","session":{"id":"s"}}', masked=False))
            time.sleep(0.5)
            self.begun.set()
            threading.Thread(target=self.pour, args=(connection,), daemon=True).start()

    def pour(self, connection):
        connection.settimeout(30)
        try:
            while True:
                connection.sendall(self.harm)
        except OSError:
            pass


def hostile_service(harm):
    def attack(program, home, seconds):
        service = HostileService(harm)
        service.start()
        port = service.listener.getsockname()[1]
        chat = subprocess.Popen([program, "chat", "--aloud", "--transport", "websocket"], stdin=subprocess.PIPE, stdout=subprocess.DEVNULL,
            stderr=subprocess.DEVNULL, env=surroundings(home, OPENAI_API_KEY="k",
                QUORVELL_LIVE_HOST="ws://127.0.0.1:%d" % port))
        chat.stdin.write(b"hello\n")
        chat.stdin.flush()
        service.begun.wait(10)
        before, most, end = memory(chat), 0, time.time() + seconds
        while time.time() < end and chat.poll() is None:
            most = max(most, memory(chat))
            time.sleep(0.02)
        begun = time.time()
        chat.send_signal(2)
        try:
            chat.wait(30)
        except subprocess.TimeoutExpired:
            chat.kill()
        return "%d -> %d MiB, ended %.1f s after the interrupt" % (before, most, time.time() - begun)
    return attack


def delta(kind, text):
    return frame(1, b'{"type":"session.%s.delta","delta":"%s"}' % (kind, text), masked=False)


ATTACKS = {
    "pings to the service, never reading": pings_to_the_service,
    "32 idle connections": idle_without_a_key,
    "a steady flood of idle connections": steady_flood,
    "TLS without a handshake": tls_without_handshake,
    "an unmasked frame": unmasked,
    "one source port, two addresses": one_source_port,
    "pings to the assistant, never reading": hostile_service(frame(9, b"p" * 125, masked=False) * 2000),
    "output transcript without end": hostile_service(delta(b"output_transcript", b"x" * 8000) * 20),
    "output transcript without end, in words": hostile_service(delta(b"output_transcript", b"word " * 10) * 500),
    "input transcript without end": hostile_service(delta(b"input_transcript", b"word " * 10) * 500),
}


def main():
    program, seconds = os.path.abspath(sys.argv[1]), float(sys.argv[2]) if len(sys.argv) > 2 else 6
    for name, attack in ATTACKS.items():
        if len(sys.argv) > 3 and sys.argv[3] not in name:
            continue
        with tempfile.TemporaryDirectory() as home:
            print("%-42s %s" % (name, attack(program, home, seconds)), flush=True)


main()
