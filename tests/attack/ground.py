# SPDX-License-Identifier: MIT
"""The ground on which a built program is attacked: one temporary folder, which holds all that the program is given.

As root a program that replaces files could replace a device. So it is never started as root (an ordinary user, who may
write nowhere else, takes root's place), and no path that leads out of the folder is handed to it.
"""
import collections, json, os, re, resource, select, shutil, signal, subprocess, tempfile, time

TESTS = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
ORDINARY_USER = 65534
PLACES = ("CONFIG_HOME", "DATA_HOME", "STATE_HOME", "CACHE_HOME", "RUNTIME_DIR")
MIB = 1 << 20
DEADLINE = 30  # Seconds after which a program counts as hung: a busy computer takes a second for what takes 0.2.
LIMITS = {resource.RLIMIT_CORE: 0, resource.RLIMIT_DATA: 1024 * MIB, resource.RLIMIT_FSIZE: 256 * MIB}

# survived: did its work, or went on; refused: said why not; lost: something is gone, torn, done unasked or left unsaid.
BAD = ("hung", "crashed", "lost")
Outcome = collections.namedtuple("Outcome", "verdict what seconds mib")
Run = collections.namedtuple("Run", "code out err seconds mib hung")


class Ground:
    def __init__(self, program):
        for limit, most in LIMITS.items():
            resource.setrlimit(limit, (most, resource.getrlimit(limit)[1]))
        self.folder = os.path.realpath(tempfile.mkdtemp(prefix="quorvell-attack-"))
        os.chmod(self.folder, 0o755)
        os.mkdir(self.path("bin"), 0o755)
        self.program = shutil.copy(program, self.path("bin", "quorvell"))
        os.chmod(self.program, 0o755)
        speech = os.path.join(os.path.dirname(program), "../share")  # What it recognises speech with.
        if os.path.exists(speech):
            shutil.copytree(speech, self.path("share"))
        self.homes = 0
        self.user = {"user": ORDINARY_USER, "group": ORDINARY_USER, "extra_groups": []} if os.geteuid() == 0 else {}
        for outside in (["/dev/null"], ["--reply=/etc/x"], ["../../x"], [self.folder + "/../x"]):
            try:
                self.hold_inside(self.folder, outside)
                raise AssertionError("%s would be let through" % outside)
            except PermissionError:
                pass

    def path(self, *parts):
        return os.path.join(self.folder, *parts)

    def hold_inside(self, home, arguments):
        for argument in arguments:
            for part in (argument, argument.partition("=")[2]):
                reached = os.path.realpath(os.path.join(home, part))
                if "/" in part and "://" not in part and not (reached + "/").startswith(self.folder + "/"):
                    raise PermissionError("%r leads to %s" % (argument, reached))

    def home(self, files=()):
        """A home of its own with these files below it, by path."""
        self.homes += 1
        home = self.path("home%d" % self.homes)
        for name in PLACES:
            os.makedirs(os.path.join(home, name), mode=0o700)
        for name, content in dict(files).items():
            self.write(os.path.join(home, name), content)
        self.give_away(home)
        return home

    def forget(self, home, outcome):
        """Of a home in which all went well nothing needs to be kept."""
        if outcome.verdict not in BAD:
            shutil.rmtree(home, ignore_errors=True)
        return outcome

    def write(self, path, content):
        self.hold_inside("/", [path])
        if path.endswith("settings.json"):
            self.hold_inside("/", re.findall(r'"([/~][^"]*)"', content.decode(errors="replace")))
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, "wb") as file:
            file.write(content)

    def give_away(self, folder):
        for place, folders, files in os.walk(folder) if self.user else ():
            for name in [place] + [os.path.join(place, name) for name in folders + files]:
                os.lchown(name, ORDINARY_USER, ORDINARY_USER)

    def start(self, home, *arguments, environment={}, program=None, **streams):
        self.hold_inside(home, arguments)
        streams = dict.fromkeys(("stdin", "stdout", "stderr"), subprocess.DEVNULL) | streams
        surroundings = {"PATH": "/usr/local/bin:/usr/bin:/bin", "LANG": "C.UTF-8", "TZ": "Europe/Berlin", "HOME": home}
        surroundings |= {"XDG_" + name: os.path.join(home, name) for name in PLACES}
        return subprocess.Popen([program or self.program, *arguments], cwd=home, start_new_session=True,
                                env=surroundings | environment, **streams, **self.user)

    def run(self, home, *arguments, typed=b"", out=None, end_after=None, signal_sent=signal.SIGKILL, seconds=DEADLINE, **more):
        """Runs it to its end, or sends it a signal after so many seconds; `out` is where its output goes, if not here."""
        with tempfile.TemporaryFile() as told, tempfile.TemporaryFile() as words, tempfile.TemporaryFile() as problems:
            told.write(typed)
            told.seek(0)
            begun = time.monotonic()
            more = {"stdin": told, "stdout": words if out is None else out, "stderr": problems} | more
            process = self.start(home, *arguments, **more)
            if end_after is not None and not ended_within(process, end_after):
                os.kill(process.pid, signal_sent)
            hung = not ended_within(process, seconds)
            if hung:
                os.kill(process.pid, signal.SIGKILL)
            _, status, used = os.wait4(process.pid, 0)
            process.returncode = os.waitstatus_to_exitcode(status)
            words.seek(0)
            problems.seek(0)
            return Run(process.returncode, words.read(64 * MIB), problems.read(MIB), time.monotonic() - begun,
                       used.ru_maxrss // 1024, hung)

    def stop_what_is_left(self):
        """Processes that outlived the program that started them; they have two seconds. Returns how many there are."""
        end, mark = time.monotonic() + 2, ("HOME=" + self.folder).encode()
        while left := [pid for pid in os.listdir("/proc") if pid.isdigit() and mark in bytes_of("/proc/%s/environ" % pid)]:
            if time.monotonic() > end:
                for pid in left:
                    os.kill(int(pid), signal.SIGKILL)
                break
            time.sleep(0.05)
        return len(left)


class Running:
    """Whatever started programs, which end with it."""
    processes = ()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        for process in self.processes:
            process.kill()
            process.wait()


def ended_within(process, seconds):
    try:
        watched = os.pidfd_open(process.pid)
    except ProcessLookupError:
        return True  # And was waited for.
    try:
        return bool(select.select([watched], [], [], seconds)[0])
    finally:
        os.close(watched)


def bytes_of(path):
    try:
        with open(path, "rb") as file:
            return file.read()
    except OSError:
        return b""


def files_below(folder):
    return [os.path.join(place, name) for place, _, names in os.walk(folder) for name in names
            if os.path.isfile(os.path.join(place, name))]


def judged(run, what, lost="", killed=False):
    """`lost` names what is gone; a program that fails must have said a word about it."""
    said = run.out.strip() or run.err.strip()
    if run.hung:
        verdict = "hung"
    elif not (killed and run.code == -signal.SIGKILL) and run.code not in (0, 1, 2):
        verdict, what = "crashed", "%s: exit code %d %s" % (what, run.code, run.err[-200:])
    elif lost or run.code in (1, 2) and not said:
        verdict, what = "lost", "%s: %s" % (what, lost or "failed without a word")
    else:
        verdict = "refused" if run.code in (1, 2) else "survived"
    return Outcome(verdict, what, run.seconds, run.mib)


def peak(process):
    """The most memory that a running program has had, in MiB."""
    found = re.search(rb"VmHWM:\s+(\d+)", bytes_of("/proc/%d/status" % process.pid))
    return int(found[1]) // 1024 if found else 0


def seeds(*kinds):
    return [bytes_of(path) for kind in kinds for path in sorted(files_below(os.path.join(TESTS, "fuzz/corpus", kind)))]


NUMBERS = (b"0", b"-1", b"99999999999999999999", b"2147483648", b"1e999", b"00000101")
INTRUDERS = (b"\0", b"\xff\xfe", b"\xe2\x80\xae", b"\r\n" * 40, b"[" * 9000, b'{"a":' * 500, b"A" * 70000, b"word " * 20000,
             b"\x1b[2J", b"\xef\xbb\xbf", b"\n---\n")


def mutated(chance, texts, most=4 * MIB):
    """One of the texts after a few accidents."""
    text = bytearray(chance.choice(texts))
    for _ in range(chance.choice((1, 1, 1, 2, 3, 5))):
        at = chance.randint(0, len(text))
        behind = min(len(text), at + chance.choice((1, 1, 4, 30, 300)))
        accident, other = chance.randrange(8), chance.choice(texts)
        if accident == 0:
            text[at:at + 1] = bytes(byte ^ 1 << chance.randrange(8) for byte in text[at:at + 1])
        elif accident == 1:
            text[at:at] = chance.randbytes(chance.choice((1, 3, 40)))
        elif accident == 2:
            del text[at:chance.choice((behind, len(text)))]
        elif accident == 3:
            text[at:at] = bytes(text[at:behind]) * chance.choice((1, 2, 50, 3000))
        elif accident == 4:
            text[at:behind] = other[chance.randint(0, len(other)):]
        elif accident == 5 and (numbers := list(re.finditer(rb"\d+", text))):
            text[slice(*chance.choice(numbers).span())] = chance.choice(NUMBERS)
        else:
            text[at:at] = chance.choice(INTRUDERS)
    return bytes(text[:most])


NOTEBOOK = "DATA_HOME/Quorvell/Notebook"


def note(number, title, body, header="", kind="note"):
    """Path and content of a note's file."""
    return NOTEBOOK + "/2026-01-02-%d.md" % number, (
        '---\nid: "%012x"\nkind: "%s"\ntitle: "%s"\ncreated: "2026-01-02T03:04:05.000Z"\nauthor: "person"\n%s---\n%s\n'
        % (number, kind, title, header, body)).encode()


def note_of(content):
    """What a note's file says, its body under "body"; nothing when the file is torn."""
    parts = re.fullmatch(r"---\n(.*?\n)---\n(.*)\n", content.decode(errors="replace"), re.DOTALL)
    try:
        lines = [line.partition(":") for line in parts[1].splitlines()] if parts else []
        return {key: json.loads(value) for key, _, value in lines} | ({"body": parts[2]} if parts else {})
    except ValueError:
        return {}


def notes_in(home, folder=NOTEBOOK):
    """The notes of a folder by path."""
    return {path: note_of(bytes_of(path)) for path in files_below(os.path.join(home, folder))
            if path.endswith(".md") and "/." not in path[len(home):]}
