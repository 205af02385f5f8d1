"""Runs the program in its own folder, as a user would, and checks how it ends."""

import contextlib
import os
import pathlib
import select
import shutil
import signal
import stat
import subprocess
import tempfile
import threading
import time

ROOT = pathlib.Path(__file__).resolve().parents[2]
BUILD = ROOT / "build" / "release"
KELVAR = str(BUILD / "kelvar")
EXAMPLE = str(BUILD / "kelvar-example-document")

GIB = 1 << 30
NOBODY = 65534
IS_ROOT = os.geteuid() == 0
# A process that runs out of memory while it scans fonts writes an incomplete list to the system's
# font cache. So trials have their own cache.
FONTS = """<?xml version="1.0"?><!DOCTYPE fontconfig SYSTEM "urn:fontconfig:fonts.dtd">
<fontconfig><cachedir>{}</cachedir><include>/etc/fonts/fonts.conf</include></fontconfig>
"""
# Variables that a user may have set and that must not affect a trial.
HIDDEN = ("KELVAR_", "DISPLAY", "WAYLAND_DISPLAY", "XDG_", "DO_NOT_TRACK", "QT_QPA_PLATFORM",
          "http_proxy", "https_proxy", "all_proxy", "no_proxy")

_running = set()
_lock = threading.Lock()


def session_of(leader):
    """The running processes of a session, even if its leader has ended."""
    try:
        os.killpg(leader, 0)
    except ProcessLookupError:
        return []
    running = []
    for name in filter(str.isdigit, os.listdir("/proc")):
        with contextlib.suppress(OSError):
            text = pathlib.Path("/proc", name, "stat").read_text()
            state, _, _, session = text.rpartition(")")[2].split()[:4]
            if int(session) == leader and state != "Z":  # Z: ended, not yet reaped.
                running.append(int(name))
    return running


class Stopped(Exception):
    """The trials were stopped, by Ctrl-C or because their time is up."""


def stop():
    """Kills all running processes and prevents new ones."""
    with _lock:
        global _running
        for running in _running:
            running.kill()
        _running = None


class Ended:
    """One trial: how a program ended. `faults` lists the failed expectations."""

    def __init__(self, status=0, out=b"", err=b"", seconds=0.0, faults=()):
        self.status, self.out, self.err, self.seconds = status, out, err, seconds
        self.faults = list(faults)

    def expect(self, holds, fault):
        if not holds:
            self.faults.append(fault)
        return self

    @property
    def said(self):
        """Standard error as text, truncated for the table."""
        return self.err.decode(errors="replace").strip().replace("\n", " | ")[:160]


class Running:
    def __init__(self, words, environment, folder, stdin):
        self.out, self.err = tempfile.TemporaryFile(), tempfile.TemporaryFile()
        self.start = time.monotonic()
        with _lock:
            if _running is None:
                raise Stopped
            # Its own session, so that processes it leaves behind can be found and ended.
            self.process = subprocess.Popen(words, env=environment, cwd=folder, stdin=stdin,
                                            stdout=self.out, stderr=self.err,
                                            start_new_session=True)
            _running.add(self)
        self.pid = self.process.pid

    def signal(self, number):
        with contextlib.suppress(ProcessLookupError):
            os.kill(self.pid, number)

    def kill(self):
        with contextlib.suppress(ProcessLookupError, PermissionError):
            os.killpg(self.pid, signal.SIGKILL)

    def ends_within(self, seconds):
        descriptor = os.pidfd_open(self.pid)
        try:
            return bool(select.select([descriptor], [], [], max(seconds, 0))[0])
        finally:
            os.close(descriptor)

    def wait(self, seconds, memory=GIB, statuses=(0, 1), sentence=True):
        """Checks that it ends within `seconds` of its start, with a status among `statuses`, with at
        most `memory` bytes and, if it fails, with one line on standard error."""
        in_time = self.ends_within(self.start + seconds - time.monotonic())
        if not in_time:
            self.kill()
        _, status, usage = os.wait4(self.pid, 0)
        took = time.monotonic() - self.start
        self.process.returncode = status = os.waitstatus_to_exitcode(status)
        has_left = in_time and self.leaves_others()
        self.kill()
        with _lock:
            if _running is None:
                raise Stopped
            _running.remove(self)
        ended = Ended(status, self._text(self.out), self._text(self.err), took)
        if not in_time:
            return ended.expect(False, f"still running after {seconds:g} s")
        ended.expect(not has_left, "processes that it started still run")
        if status < 0:
            ended.expect(status in statuses, f"{signal.Signals(-status).name}: {ended.said}")
        else:
            ended.expect(status in statuses, f"status {status}: {ended.said}")
            ended.expect(not (sentence and status > 0) or ended.err.count(b"\n") == 1,
                         f"not one error line: {ended.said!r}")
        peak = usage.ru_maxrss << 10
        return ended.expect(peak <= memory, f"used {peak >> 20} MiB")

    def leaves_others(self):
        """Whether a process of its session still runs a second after its end."""
        for _ in range(20):
            if not session_of(self.pid):
                return False
            time.sleep(0.05)
        return True

    @staticmethod
    def _text(file):
        with file:
            file.seek(0)
            return file.read(1 << 24)


class Box:
    """A folder and settings for the trials of one case."""

    def __init__(self, folder, fonts):
        self.folder = pathlib.Path(folder)
        self.folder.chmod(0o777)
        self.environment = {name: value for name, value in os.environ.items()
                            if not name.startswith(HIDDEN)}
        fonts = pathlib.Path(fonts)
        fonts.chmod(0o777)
        (fonts / "fonts.conf").write_text(FONTS.format(fonts))
        self.environment |= {"LC_ALL": "C.UTF-8", "HOME": str(self.folder),
                             "FONTCONFIG_FILE": str(fonts / "fonts.conf"),
                             "KELVAR_DEFAULTS": str(self.folder / "settings.sqlite")}

    def path(self, name):
        return self.folder / name

    def write(self, name, content):
        path = self.path(name)
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content.encode() if isinstance(content, str) else content)
        return path

    def copy(self, source, name):
        return pathlib.Path(shutil.copyfile(source, self.path(name)))

    def names(self):
        return sorted(os.listdir(os.fsencode(self.folder)))

    def start(self, *words, program=KELVAR, env=None, stdin=None, limits=(), nobody=False,
              prefix=()):
        """`limits` are options of prlimit, `prefix` a command that runs the program. With `nobody`,
        root becomes an unprivileged user. A variable that is None is unset."""
        environment = self.environment | (env or {})
        environment = {name: value for name, value in environment.items() if value is not None}
        line = [*prefix]
        if nobody and IS_ROOT:
            line += ["setpriv", f"--reuid={NOBODY}", f"--regid={NOBODY}", "--clear-groups"]
        if limits:
            line += ["prlimit", *limits, "--"]
        with open(stdin or os.devnull, "rb") as source:
            return Running([*line, program, *words], environment, self.folder, source)

    def run(self, *words, seconds=10, memory=GIB, statuses=(0, 1), sentence=True, **how):
        return self.start(*words, **how).wait(seconds, memory, statuses, sentence)

    def make(self, *words, **how):
        """Prepares a trial. A failure here is an error of the case, not of the trial."""
        ended = self.run(*words, seconds=60, statuses=(0,), **how)
        if ended.faults:
            raise RuntimeError(f"{' '.join(map(str, words))}: {ended.faults[0]}")
        return ended

    def tree(self):
        """Names, types and contents of all files in the folder."""
        def content(path):
            if path.is_symlink():
                return os.readlink(path)
            return path.read_bytes() if stat.S_ISREG(path.stat().st_mode) else None
        return {str(path): content(path) for path in sorted(self.folder.rglob("*"))}


@contextlib.contextmanager
def new_box():
    with (tempfile.TemporaryDirectory(prefix="kelvar-torture-") as folder,
          tempfile.TemporaryDirectory(prefix="kelvar-torture-fonts-") as fonts):
        yield Box(folder, fonts)


CASES = []


def case(name):
    """Registers a generator of trials, which gets a box as its argument."""
    def register(function):
        CASES.append((name, function))
        return function
    return register
