#!/usr/bin/python3
"""The chaos run: hundreds or thousands of generated command lines against a
simulated gateway in ever-changing odd states.

Command lines come from the group table (src/groups/groups.cc) and each
group's own tables: every group, command and option, with odd, huge, binary,
empty and shell-laden arguments. Between them the scene changes: control
files missing, empty, garbage, 1 MiB or NUL-laden, unreadable; a busy or
rejecting database module; a slow, silent, hanging-up, resetting or 10 MiB
service; failing programs, and a date that floods or never stops; stopped
processes; a broken vek.ini.

Every run must end by itself within its time, by exit and never by a signal,
with nothing reported by the sanitizers, with at most one result line, and
without running anything it was not asked to (a marker file that shell-laden
arguments would create must never appear).

Environment:
  VEKTOOL_CHAOS_RUNS     command lines to run (default %d)
  VEKTOOL_CHAOS_START    the random start (default %d); "random": a fresh
                         one, printed
  VEKTOOL_CHAOS_SECONDS  stop early after this many seconds (default: never)
The defaults are the run of the test suite: the same command lines and
scenes every time, however fast the machine. A long run draws its own:
  VEKTOOL_CHAOS_START=random VEKTOOL_CHAOS_RUNS=20000 VEKTOOL_CHAOS_SECONDS=1800
Usage: chaos.py SOURCE_DIR   (vektool and vek-sim on PATH)
A failing case prints its random start, its number and the command line;
VEKTOOL_CHAOS_START=N repeats the same sequence.
"""
import os
import random
import re
import shlex
import shutil
import subprocess
import sys
import tempfile
import time

DEFAULT_RUNS = 600
DEFAULT_START = 1
__doc__ %= (DEFAULT_RUNS, DEFAULT_START)

RUN_LIMIT = 8.0  # seconds: 3 s for a service that never answers, 1 s of
                 # database retries, and room for a 1 MiB file on a slow CPU
SANITIZER_STATUS = 86  # how a sanitizer build ends a program on its first report
SANITIZER_MARKS = (b"AddressSanitizer", b"LeakSanitizer", b"UndefinedBehaviorSanitizer",
                   b"runtime error:")


def read(path):
    with open(path, encoding="utf-8") as f:
        return f.read()


def group_table(src):
    """[(group, [commands], [(kind, short, long)])] in the table's order."""
    groups_cc = read(os.path.join(src, "src/groups/groups.cc"))
    table = []
    for name, frame in re.findall(r'\{"([a-z]+)",\s*\w+,\s*&(\w+)\}', groups_cc):
        source = None
        for candidate in os.listdir(os.path.join(src, "src/groups")):
            text = read(os.path.join(src, "src/groups", candidate))
            if re.search(r"const GroupFrame %s\b" % frame, text):
                source = text
                break
        if source is None:
            continue
        commands = []
        m = re.search(r"CommandEntry kCommands\[\] = \{(.*?)\n\};", source, re.S)
        if m:
            commands = re.findall(r'\{"([^"]+)",', m.group(1))
        options = []
        m = re.search(r"argparse_option kOptions\[\] = \{(.*?)\n\};", source, re.S)
        if m:
            for kind, short, long in re.findall(
                    r"OPT_(\w+)\(\s*('.'|0)\s*,\s*(\"[^\"]*\"|nullptr)", m.group(1)):
                options.append((kind, short.strip("'") if short != "0" else None,
                                long.strip('"') if long != "nullptr" else None))
        options.append(("HELP", "h", "help"))
        table.append((name, commands, options))
    return table


CONTROL_FILES = [
    "/proc/vek/qos_ctrl", "/proc/vek/qoe_config", "/proc/vek/qoe_config2", "/proc/vek/qos_mode",
    "/proc/vek/qoe_optimization", "/proc/vek/conn_ctx", "/proc/vek/dbdev", "/proc/vek/monitor",
    "/proc/vek/limiter_ctrl", "/proc/vek/gc", "/proc/vek/ss", "/proc/vek/iam_ctrl",
    "/proc/vek/pc_rule_export", "/proc/vek/version", "/proc/vek/fc_ctrl", "/proc/vek/dst_ctrl",
    "/proc/vek/qos_traffic", "/proc/vek/malnet_mode", "/proc/vek/kctrl", "/proc/vek/qos_enabled",
    "/proc/kmod_xdn/grpxdb_info", "/proc/kmod_xdn/sidxdb_info", "/proc/kmod_xapp/xr_info",
    "/tmp/bs/bs.json",
]
RECORDS = [b"d:qnum:", b"d:algorithm:", b"j:qoe:", b"j:hyqos:", b"j:pfs:", b"j:hyqos_rate:",
           b"j:devs:", b"j:defq:", b"u:block_conns:", b"j:cat_conns:", b"j:prio_conns:",
           b"s:mode:", b"s:major:", b"s:minor:", b"writable: ", b"size: ", b"epoch: "]
NUMBERS = [b"0", b"-1", b"8", b"2147483647", b"2147483648", b"3000000000", b"4294967296",
           b"5e9", b"-5000000000", b"99999999999999999999999", b"1e400", b"0x10", b"-0", b"NaN"]


class Chaos:
    def __init__(self, rng, root, marker):
        self.rng = rng
        self.root = root
        self.marker = marker

    # ---- pieces of text

    def number(self):
        return self.rng.choice(NUMBERS)

    def json_text(self, depth=0):
        r = self.rng.random()
        if depth > 3 or r < 0.3:
            return self.rng.choice([self.number(), b'"x"', b'"aa:bb:cc:dd:ee:ff"', b"null",
                                    b"true", b'"' + b"\\u0000" + b'"'])
        if r < 0.6:
            items = [self.json_text(depth + 1) for _ in range(self.rng.randrange(0, 5))]
            return b"[" + b",".join(items) + b"]"
        keys = [b"s", b"S", b"m", b"mr", b"ir", b"r", b"dscp", b"et", b"dr", b"ec", b"result", b"a"]
        members = [b'"' + self.rng.choice(keys) + b'":' + self.json_text(depth + 1)
                   for _ in range(self.rng.randrange(0, 5))]
        return b"{" + b",".join(members) + b"}"

    def garbage(self, size):
        return bytes(self.rng.randrange(256) for _ in range(size))

    def shell_laden(self):
        m = self.marker
        return self.rng.choice([
            b";touch " + m, b"$(touch " + m + b")", b"`touch " + m + b"`", b"|touch " + m,
            b"&&touch " + m, b"'; touch " + m + b"; '", b'"; touch ' + m + b'; "',
            b"x\ntouch " + m, b"-o;touch " + m, b"--help;touch " + m])

    def argument(self):
        r = self.rng.random()
        if r < 0.25:
            return self.rng.choice([b"aa:bb:cc:dd:ee:ff", b"00-11-22-33-44-55", b"001122334455",
                                    b"192.168.1.0/24", b"42", b"gaming", b"hyqos", b"block",
                                    b"gateway", b"BY_DEVICE", b"low", b"host1.lan", b"10.0.0.1",
                                    b"1,100,60", b"ai2", b"category"])
        if r < 0.4:
            return self.number()
        if r < 0.55:
            return self.json_text()
        if r < 0.62:
            return b""
        if r < 0.7:
            return self.shell_laden()
        if r < 0.76:  # binary, no NUL: a command line cannot carry one
            return bytes(self.rng.randrange(1, 256) for _ in range(self.rng.randrange(1, 40)))
        if r < 0.8:
            return self.rng.choice([b"[" * 5000 + b"]" * 5000, b"a" * 100000,
                                    b"aa:" * 30000, b"%s%n%x" * 100])
        if r < 0.9:
            return self.rng.choice([b"-", b"--", b"--json", b"-x", b"-1", b"--bogus=1", b"-i",
                                    b"%s%s%n", b"\\", b"'", b'"', b" ", b"\t\n"])
        return self.rng.choice(self.paths())

    def paths(self):
        m = self.marker
        return [b"/usr/vek/var/vek.xdb", b"/nonexistent", b"/proc/vek/qos_ctrl", b"rel/path",
                b"/tmp/a b", b"/tmp/x;touch " + m, b"/tmp/$(touch " + m + b")", b"/" + b"d" * 300,
                b"/dev/null", b"/usr/vek/bin/vek.ini"]

    def option(self, options):
        kind, short, long = self.rng.choice(options)
        words = []
        if long and (not short or self.rng.random() < 0.6):
            name = b"--" + long.encode()
            if kind in ("BOOLEAN", "BIT", "HELP"):
                if self.rng.random() < 0.1:
                    name = b"--no-" + long.encode()
                return [name]
            if self.rng.random() < 0.5:
                return [name + b"=" + self.value(kind)]
            words = [name]
        else:
            if kind in ("BOOLEAN", "BIT", "HELP"):
                return [b"-" + short.encode()]
            if self.rng.random() < 0.3:
                return [b"-" + short.encode() + self.value(kind)]
            words = [b"-" + short.encode()]
        if self.rng.random() < 0.95:  # now and then the value is missing
            words.append(self.value(kind))
        return words

    def value(self, kind):
        if kind in ("INTEGER", "UINTEGER", "FLOAT") and self.rng.random() < 0.7:
            return self.number()
        return self.argument()

    def command_line(self, table):
        r = self.rng.random()
        if r < 0.02:
            return []
        if r < 0.04:
            return [self.rng.choice([b"bogus", b"", b"QOS", b"vektool", b"--json", b"-i"])]
        group, commands, options = self.rng.choice(table)
        words = [group.encode()]
        body = []
        if commands and self.rng.random() < 0.93:
            body.append(self.rng.choice(commands).encode())
        elif self.rng.random() < 0.5:
            body.append(self.argument())
        for _ in range(self.rng.choice([0, 0, 1, 1, 2, 3, 4, 6])):
            body.append(self.argument())
        for _ in range(self.rng.choice([0, 0, 1, 1, 2, 3])):
            position = self.rng.randrange(len(body) + 1)
            body[position:position] = self.option(options)
        if self.rng.random() < 0.12:  # the global options
            body += self.rng.choice([[b"-i", self.rng.choice(self.paths())],
                                     [b"-l", self.argument()], [b"--json"]])
        if self.rng.random() < 0.35:
            body.append(b"--json")
        return words + body

    # ---- the scene

    def scene_commands(self):
        """vek-sim commands (argument lists, standard input) that change the scene."""
        r = self.rng.random()
        if r < 0.05:
            return [(["reset"], None)]
        path = self.rng.choice(CONTROL_FILES)
        if r < 0.45:
            kind = self.rng.random()
            if kind < 0.1:
                data = b""
            elif kind < 0.25:
                data = self.garbage(self.rng.randrange(1, 600))
            elif kind < 0.3:
                data = b"\0" * 100 + self.rng.choice(RECORDS) + b"1\0\n"
            elif kind < 0.35:
                data = (self.rng.choice(RECORDS) + b"x" * 1023 + b"\n") * 1024  # 1 MiB
            elif kind < 0.75:
                lines = []
                for _ in range(self.rng.randrange(1, 6)):
                    record = self.rng.choice(RECORDS)
                    tail = self.json_text() if record.startswith(b"j:") else self.number()
                    lines.append(record + tail)
                data = b"\n".join(lines) + self.rng.choice([b"", b"\n", b"\0"])
            else:
                data = self.json_text() + self.rng.choice([b"", b"\n"])
            return [(["file", path], data)]
        if r < 0.55:
            return [(["missing", path], None)]
        if r < 0.6:
            return [(["unreadable", path], None)]
        if r < 0.67:
            mode = self.rng.choice(["busy", "reject", "normal"])
            return [(["kernel", mode] + self.rng.choice([[], ["grpxdb"], ["sidxdb"], ["xr"]]), None)]
        if r < 0.77:
            mode = self.rng.choice(["normal", "silent", "slow", "pieces", "close", "reset", "down"])
            extra = []
            if mode == "slow":
                extra = [self.rng.choice(["50", "3500"])]
            elif mode == "pieces":
                extra = [self.rng.choice(["0", "5", "50"])]
            return [(["service", mode] + extra, None)]
        if r < 0.83:
            method = self.rng.choice(["get-cs", "get-diag"])
            kind = self.rng.random()
            if kind < 0.2:
                data = b"{\"return\":0,\"result\":\"" + b"x" * (10 << 20) + b"\"}"  # 10 MiB
            elif kind < 0.5:
                data = self.garbage(self.rng.randrange(0, 2000)).replace(b"\n", b" ")
            else:
                data = self.json_text()
            return [(["reply", method], data)]
        if r < 0.9:
            program = self.rng.choice(["vekctl", "veklog", "dt_srv", "killall", "date"])
            if program == "date" and self.rng.random() < 0.5:  # 3 MiB after the offset, or no end
                return [(["tz", "+0800", self.rng.choice(["3", "forever"])], None)]
            status = self.rng.choice(["0", "1", "2", "127", "255"])
            return [(["exit", program, status] + self.rng.choice([[], ["oops"]]), None)]
        if r < 0.96:
            name = self.rng.choice(["vek_service", "dt_srv"])
            return [(["proc", self.rng.choice(["start", "stop"]), name], None)]
        # A broken vek.ini lasts one command line (see main).
        ini = self.rng.choice([
            b"", self.garbage(300), b"[vek]\nrun = /var/run/vek\nvar = /usr/vek/var\nbin = /usr/vek/bin\n"
            b"upstream_port = eth0;touch " + self.marker + b"\n",
            b"[vek]\nlog_level = 3000000000\nrun = /var/run/vek\nvar = /usr/vek/var\n"])
        return [(["file", "/usr/vek/bin/vek.ini"], ini)]


def quote(words):
    return " ".join(shlex.quote(os.fsdecode(w)) for w in words)


def main():
    if len(sys.argv) != 2:
        sys.stderr.write(__doc__)
        return 2
    src = sys.argv[1]
    runs = int(os.environ.get("VEKTOOL_CHAOS_RUNS") or DEFAULT_RUNS)
    budget = float(os.environ.get("VEKTOOL_CHAOS_SECONDS") or "inf")
    start = os.environ.get("VEKTOOL_CHAOS_START") or str(DEFAULT_START)
    start = int.from_bytes(os.urandom(4), "big") if start == "random" else int(start)
    print("chaos: random start %d (repeat with VEKTOOL_CHAOS_START=%d)" % (start, start), flush=True)
    rng = random.Random(start)
    table = group_table(src)
    if not table:
        print("chaos: no groups found in %s" % src)
        return 1

    work = tempfile.mkdtemp(prefix="vekchaos-")
    root = os.path.join(work, "sysroot")
    env = dict(os.environ, VEKTOOL_SYSROOT=root)
    marker_gateway = b"/tmp/chaos-ran-a-command"
    marker = os.fsencode(root) + marker_gateway

    def sim(args, data=None):
        return subprocess.run(["vek-sim", "--root", root] + args, input=data,
                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, env=env,
                              timeout=60).returncode

    status = subprocess.run(["vek-sim", "--root", root, "start", "--owner", str(os.getpid())],
                            env=env).returncode
    if status == 77:
        print("chaos: FUSE cannot mount here; skipped")
        shutil.rmtree(work, ignore_errors=True)
        return 77
    if status != 0:
        print("chaos: vek-sim could not start")
        return 1

    ini = subprocess.run(["vek-sim", "--root", root, "cat", "/usr/vek/bin/vek.ini"], env=env,
                         stdout=subprocess.PIPE).stdout
    chaos = Chaos(rng, root, marker)
    failures = 0
    done = 0
    began = time.monotonic()
    statuses = {}
    try:
        for case in range(1, runs + 1):
            if time.monotonic() - began > budget:
                break
            scene = []
            for _ in range(rng.choice([0, 0, 1, 1, 2])):
                for args, data in chaos.scene_commands():
                    sim(args, data)
                    scene.append("vek-sim " + " ".join(shlex.quote(a) for a in args) +
                                 (" <%d bytes>" % len(data) if data is not None else ""))
            words = chaos.command_line(table)
            ini_broken = any(line.startswith("vek-sim file /usr/vek/bin/vek.ini") for line in scene)
            problem = None
            t0 = time.monotonic()
            try:
                proc = subprocess.run(["vektool"] + words, stdin=subprocess.DEVNULL,
                                      stdout=subprocess.PIPE, stderr=subprocess.PIPE, env=env,
                                      timeout=RUN_LIMIT)
                out, err, code = proc.stdout, proc.stderr, proc.returncode
            except subprocess.TimeoutExpired as e:
                out, err, code = e.stdout or b"", e.stderr or b"", None
                problem = "still running after %.0f s" % RUN_LIMIT
            took = time.monotonic() - t0
            done += 1
            if problem is None:
                statuses[code] = statuses.get(code, 0) + 1
                result_lines = sum(1 for line in out.split(b"\n") if line.startswith(b'{"return":'))
                if code < 0:
                    problem = "ended by signal %d" % -code
                elif any(mark in err for mark in SANITIZER_MARKS) or code == SANITIZER_STATUS:
                    problem = "sanitizer report"
                elif result_lines > 1 and b'{"return":' not in b"".join(words):
                    problem = "%d result lines" % result_lines
            if os.path.lexists(os.fsdecode(marker)):
                problem = (problem + "; " if problem else "") + "a command ran (marker created)"
                os.unlink(os.fsdecode(marker))
            if ini_broken:
                sim(["file", "/usr/vek/bin/vek.ini"], ini)
            if problem:
                failures += 1
                print("chaos: FAIL case %d (random start %d): %s" % (case, start, problem))
                print("  scene: %s" % ("; ".join(scene) or "as before"))
                print("  vektool %s" % quote(words)[:2000])
                print("  exit %s after %.2f s; stdout %r; stderr %r" %
                      (code, took, out[:300], err[:1500]))
                if failures >= 10:
                    break
    finally:
        subprocess.run(["vek-sim", "--root", root, "stop"], env=env)
        shutil.rmtree(work, ignore_errors=True)
    seconds = time.monotonic() - began
    print("chaos: %d command lines in %.1f s, %d groups, %d failing; exit statuses %s" %
          (done, seconds, len(table), failures,
           " ".join("%s:%d" % kv for kv in sorted(statuses.items()))))
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
