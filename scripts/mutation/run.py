"""What scripts/mutate runs: makes faults, builds each beside a sound build, and asks the tests.

A copy of the tree in build/mutate keeps its own build and desktop. The tests of the fault's room come first,
then those of the rooms above it, the quick ones before the slow ones; the first that fails counts.
"""

import argparse
import concurrent.futures
import json
import os
import re
import shutil
import signal
import subprocess
import sys
import threading
import time
from pathlib import Path

sys.dont_write_bytecode = True
import faults  # noqa: E402

ROOMS = ["base", "hotkeys", "clipboard", "store", "paste", "menu", "ui", "app", "desktop"]
# Tests that take up to the first of these seconds come first, in all rooms, then those up to the second, then
# the rest. The quick ones need no desktop and cannot fail for another reason than the fault.
STAGES = (0.2, 2.0, float("inf"))


def room_of(path):
    return Path(path).parts[1]


def sources_named(names):
    found = {}
    for name in names:
        path = Path("src", name) if name in ROOMS else Path(name)
        files = sorted(path.rglob("*.cpp")) if path.is_dir() else [path]
        if not files or not all(file.is_file() and room_of(file) in ROOMS for file in files):
            sys.exit(f"mutate: {name} is no room, folder or file under src/")
        found |= {file.as_posix(): file.read_text(encoding="utf-8") for file in files}
    return found


def copy_tree(target):
    """Brings the copy up to date without touching what has not changed, so that little is built anew."""
    listed = subprocess.run(["git", "ls-files", "-co", "--exclude-standard", "-z"], check=True,
                            capture_output=True).stdout.decode().split("\0")
    wanted = {Path(name) for name in listed if name and Path(name).is_file()}
    for name in wanted:
        copy = target / name
        if not copy.is_file() or copy.read_bytes() != name.read_bytes():
            copy.parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(name, copy)
    for folder in ("src", "res", "tests", "bench", "demo"):
        for copy in (target / folder).rglob("*"):
            if copy.is_file() and copy.relative_to(target) not in wanted:
                copy.unlink()


class Build:
    """The sound build, and the commands that make a faulty piece of it.

    Commands run in its folder, and what they name lies below it or in build/faults: where the checkout stands
    does not matter then, whatever its path is made of.
    """

    folder = Path("build/debug")

    def __init__(self):
        self.root = Path.cwd()
        commands = json.loads((self.folder / "compile_commands.json").read_text())
        self.compilers = {Path(c["file"]): (re.search(r" -o (\S+)", c["command"])[1], c["command"])
                          for c in commands if c["file"].endswith(".cpp")}
        self.links = {}
        self.lock = threading.Lock()

    def link_command(self, target):
        with self.lock:
            if target not in self.links:
                shown = subprocess.run(["ninja", "-C", self.folder, "-t", "commands", target], check=True,
                                       capture_output=True, text=True).stdout
                self.links[target] = re.sub(r"(?<= )[\w./]+\.(?:obj|a)(?= )",
                                            lambda piece: str(self.without_debug_data(piece[0])),
                                            shown.splitlines()[-1])
            return self.links[target]

    def run(self, command):
        return subprocess.run(command, shell=True, cwd=self.folder, capture_output=True).returncode == 0

    def dependents(self, header):
        """The sources that include a header."""
        listed = subprocess.run(["ninja", "-C", self.folder, "-t", "deps"], check=True, capture_output=True,
                                text=True).stdout
        objects = set()
        for block in listed.split("\n\n"):
            lines = block.split("\n")
            if any(line.strip().endswith("/" + header) for line in lines[1:]):
                objects.add(lines[0].split(":")[0])
        return [source for source, (output, _) in self.compilers.items() if output in objects]

    def compile(self, fault, text, work):
        """The objects the fault changes, by the names of the sound ones; None when it does not compile."""
        overlay = self.folder / work / fault.path
        overlay.parent.mkdir(parents=True, exist_ok=True)
        overlay.write_text(text, encoding="utf-8")
        source = self.root / fault.path
        is_header = source not in self.compilers
        made = {}
        for file in self.dependents(fault.path) if is_header else [source]:
            output, command = self.compilers[file]
            changed = f"{work}/{len(made)}.obj"
            command = re.sub(r" -M[DTF](?: \S+\.(?:obj|d)\b)?", "", command).replace(" -Werror", " -w")
            command = command.replace(f" -o {output}", f" -o {changed}")
            if is_header:
                command = command.replace(" -I", f" -I{work}/src -I", 1)
            else:
                command = command[:command.rindex(" -c ")] + f" -c {work}/{fault.path}"
            if not self.run(command):
                return None
            made[output] = changed
        return made

    def link(self, target, objects, result):
        """Links a program of the sound build with the changed objects in the place of their originals."""
        command = self.link_command(target)
        added = []
        for sound, changed in objects.items():
            stripped = f" ../stripped/{sound} "
            if stripped in command:
                command = command.replace(stripped, f" {changed} ")
            elif sound.startswith(("src/", "tests/CMakeFiles/test_support")):
                added.append(changed)  # before the library, which then keeps its own member
        command = re.sub(r" -Wl,--out-implib,\S+", "", command)
        command = command.replace(f" -o {target}",
                                  f" {' '.join(added)} -s -fno-use-linker-plugin -o {result}")
        return self.run(command)

    def without_debug_data(self, piece):
        """A copy of an object or library that links several times as fast."""
        copy = Path("../stripped") / piece
        target = self.folder / copy
        if not target.is_file() or target.stat().st_mtime < (self.folder / piece).stat().st_mtime:
            target.parent.mkdir(parents=True, exist_ok=True)
            subprocess.run(["x86_64-w64-mingw32-strip", "--strip-debug", self.folder / piece, "-o", target],
                           check=True)
        return copy


class Tests:
    """What each room's program holds, how long a test takes, and which fail without any fault."""

    def __init__(self, build, rooms, quick, own):
        self.build, self.quick, self.own = build, quick, own
        self.seconds = {}
        for room in rooms:
            self.seconds[room] = self.measured(room)

    def measured(self, room):
        report = Path(f"build/tests-{room}.json")
        program = self.build.folder / f"tests/{room}_tests.exe"
        if not report.is_file() or report.stat().st_mtime < program.stat().st_mtime:
            print(f"Measuring the tests of {room} ...", flush=True)
            run_tests(program, ["--gtest_output=json:" + str(report).replace("/", "\\")], 900)
        seconds = {}
        for suite in json.loads(report.read_text())["testsuites"]:
            for test in suite["testsuite"]:
                name = f"{suite['name']}.{test['name']}"
                if "failures" in test:
                    print(f"Left out, as it fails without a fault: {room} {name}")
                else:
                    seconds[name] = float(test["time"].rstrip("s"))
        return seconds

    def stages(self, room):
        """(room, tests, limit in seconds), in the order in which they are run."""
        rooms = [other for other in ROOMS[ROOMS.index(room):] if other in self.seconds]
        for shortest, longest in zip((-1.0, *STAGES), STAGES):
            if self.quick and longest > STAGES[0]:
                return
            for other in rooms[:1] if self.own else rooms:
                tests = [name for name, time in self.seconds[other].items() if shortest < time <= longest]
                if tests:
                    yield other, tests, 20 + 5 * sum(self.seconds[other][name] for name in tests)


def run_tests(program, arguments, limit):
    """(exit status or None when it hung, output)"""
    process = subprocess.Popen(["wine", str(program), "--gtest_brief=1", *arguments], stdout=subprocess.PIPE,
                               stderr=subprocess.STDOUT, start_new_session=True)
    try:
        output = process.communicate(timeout=limit)[0]
        return process.returncode, output.decode("utf-8", "replace")
    except subprocess.TimeoutExpired:
        os.killpg(process.pid, signal.SIGKILL)
        process.communicate()
        return None, ""


def first_failure(program, tests, limit, sure):
    """The test that catches the fault; None when all pass. Unless `sure`, it has to catch it twice."""
    while True:
        status, output = run_tests(program, ["--gtest_fail_fast", "--gtest_filter=" + ":".join(tests)], limit)
        if status == 0 and "[  PASSED  ]" in output:  # a crash may end with status 0
            return None
        failed = re.findall(r"\[  FAILED  \] ([\w/]+\.[\w/]+)", output)
        if sure or not failed:
            return failed[0] if failed else "(no end)" if status is None else "(crash)"
        tests, sure = failed[:1], True


class Judge:
    def __init__(self, build, tests, sources):
        self.build, self.tests, self.sources = build, tests, sources
        self.program = build.folder / "Verbatix.exe"
        self.sound = build.folder / "Verbatix.sound"
        self.clear("*")
        if self.sound.is_file():  # an earlier run was ended in the middle
            os.replace(self.sound, self.program)

    def clear(self, number):
        """Removes what was made for a fault, or for all of them."""
        for program in self.build.folder.glob(f"tests/fault{number}_*.exe"):
            program.unlink()
        for folder in Path("build/faults").glob(str(number)):
            shutil.rmtree(folder)

    def prepare(self, number, fault):
        """Compiles a fault and links the tests of its room: (fault, number, objects or None)."""
        objects = self.build.compile(fault, fault.text(self.sources[fault.path]), f"../faults/{number}")
        if objects is not None and not self.linked(number, objects, room_of(fault.path)):
            objects = None
        return fault, number, objects

    def linked(self, number, objects, room):
        """The tests of a room with the fault in them."""
        program = f"tests/fault{number}_{room}.exe"
        if not (self.build.folder / program).is_file():
            if not self.build.link(f"tests/{room}_tests.exe", objects, program):
                return None
        return self.build.folder / program

    def caught_by(self, fault, number, objects):
        try:
            for room, tests, limit in self.tests.stages(room_of(fault.path)):
                if room == ROOMS[-1] and not self.sound.is_file():
                    os.replace(self.program, self.sound)
                    self.build.link("Verbatix.exe", objects, "Verbatix.exe")
                is_sure = self.tests.seconds[room][tests[0]] <= STAGES[0]
                failed = first_failure(self.linked(number, objects, room), tests, limit, is_sure)
                if failed:
                    return f"{room} {failed}"
            return None
        finally:
            if self.sound.is_file():
                os.replace(self.sound, self.program)
            self.clear(number)


def judge_all(judge, drawn, wanted, jobs):
    """Builds ahead while it tests; returns (caught, survived, not compiling) by room."""
    counts = {}

    def count(fault, column):
        counts.setdefault(room_of(fault.path), [0, 0, 0])[column] += 1
    with concurrent.futures.ThreadPoolExecutor(jobs) as builders:
        waiting, supply, done = [], iter(enumerate(drawn)), 0
        while done < wanted:
            while len(waiting) < min(2 * jobs, wanted - done + 1) and (following := next(supply, None)):
                waiting.append(builders.submit(judge.prepare, *following))
            if not waiting:
                break
            fault, number, objects = waiting.pop(0).result()
            if objects is None:
                count(fault, 2)
                judge.clear(number)
                continue
            done += 1
            catcher = judge.caught_by(fault, number, objects)
            count(fault, 0 if catcher else 1)
            print(f"{done:4} {fault.kind:9} {fault.place()}  {catcher or 'SURVIVED'}", flush=True)
            if not catcher:
                print(fault.diff(judge.sources[fault.path]), flush=True)
        for future in waiting:
            future.cancel()
    return counts


def main():
    parser = argparse.ArgumentParser(prog="mutate", description="Shows which faults no test notices.")
    parser.add_argument("names", nargs="+", metavar="ROOM|FOLDER|FILE")
    parser.add_argument("--faults", type=int, default=60, metavar="N")
    parser.add_argument("--seed", type=int, default=1, metavar="N", help="the same one draws the same faults")
    parser.add_argument("--jobs", type=int, default=os.cpu_count(), metavar="N", help="builds at a time")
    parser.add_argument("--quick", action="store_true", help="no tests of more than a fifth of a second")
    parser.add_argument("--own", action="store_true", help="only the tests of the fault's own room")
    parser.add_argument("--whole", action="store_true", help="the tests of the whole program too")
    parser.add_argument("--list", action="store_true", help="only show the faults")
    parser.add_argument("--inside", action="store_true", help=argparse.SUPPRESS)
    options = parser.parse_args()
    os.chdir(Path(__file__).resolve().parents[2])
    sources = sources_named(options.names)
    drawn = faults.drawn(sources, options.seed)
    if options.list:
        for fault in drawn[:options.faults]:
            print(f"{fault.kind:9} {fault.place()}\n{fault.diff(sources[fault.path])}")
        return
    if not options.inside:
        copy = Path("build/mutate")
        copy_tree(copy)
        subprocess.run([copy / "scripts/build", "debug"], check=True)
        os.chdir(copy)
        os.environ.pop("VERBATIX_PREFIX", None)
        again = ["python3", "scripts/mutation/run.py", *sys.argv[1:], "--inside"]
        os.execv("scripts/on-desktop", ["scripts/on-desktop", *again])

    lowest = min(ROOMS.index(room_of(path)) for path in sources)
    build = Build()
    tests = Tests(build, ROOMS[lowest:] if options.whole else ROOMS[lowest:-1], options.quick, options.own)
    started = time.monotonic()
    counts = judge_all(Judge(build, tests, sources), drawn, options.faults, options.jobs)
    print(f"\nroom       faults  caught  survived  not compiling   (seed {options.seed}, "
          f"{time.monotonic() - started:.0f} s)")
    for room in sorted(counts, key=ROOMS.index):
        caught, survived, broken = counts[room]
        print(f"{room:10} {caught + survived:6} {caught:7} {survived:9} {broken:14}")


if __name__ == "__main__":
    main()
