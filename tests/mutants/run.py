"""Applies faults to a copy of the tree, one at a time, and reports which ones the tests catch."""

import os
import pathlib
import re
import subprocess
import sys
import tomllib

ROOT = pathlib.Path(__file__).resolve().parents[2]
COPY = ROOT / "build" / "mutants"
BUILD = COPY / "build"
MIN_CAUGHT = 0.9  # Fraction of all faults.
TEST_TIMEOUT = 300  # Seconds for one test.
# The program that contains a folder's tests; the first match counts.
PROGRAMS = {"ui": "kelvar-ui-tests", "panel": "kelvar-panel-tests",
            "scripting": "kelvar-scripting-tests", "": "kelvar-tests"}


def update_copy():
    """Writes only files that differ, so that the build has little to do."""
    listed = subprocess.run(["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard"],
                            cwd=ROOT, check=True, capture_output=True).stdout
    names = {os.fsdecode(name) for name in listed.split(b"\0") if name}
    names = {name for name in names if (ROOT / name).is_file()}
    for name in names:
        write(COPY / name, (ROOT / name).read_bytes())
    for path in COPY.rglob("*"):
        inside = path.relative_to(COPY)
        if path.is_file() and inside.parts[0] != "build" and str(inside) not in names:
            path.unlink()


def write(path, content):
    if path.is_file() and path.read_bytes() == content:
        return
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_bytes(content)


def configure():
    # Lightly optimized: builds twice as fast, and each fault is built.
    subprocess.run(["cmake", "-S", COPY, "-B", BUILD, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Release",
                    "-DCMAKE_CXX_FLAGS_RELEASE=-O1 -DNDEBUG", "-DKELVAR_TESTS=ON"], check=True,
                   stdout=subprocess.DEVNULL)


def build(folder):
    """Whether the build succeeds; if not, prints the end of its output."""
    program = next(each for name, each in PROGRAMS.items() if folder.startswith(name))
    made = subprocess.run(["cmake", "--build", BUILD, "--target", program], text=True,
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    if made.returncode != 0:
        print(made.stdout[-2000:], file=sys.stderr)
    return made.returncode == 0


def suites(folder):
    """The names of the test suites in a folder."""
    sources = (COPY / "tests" / folder).glob("*Test.cpp")
    return {name for source in sources
            for name in re.findall(r"^TEST(?:_F|_P)?\((\w+),", source.read_text(), re.M)}


def failing(folder):
    """The first test of a folder that fails, or None."""
    wanted = "|".join(sorted(suites(folder)))
    run = subprocess.run(["ctest", "--test-dir", BUILD, "-R", rf"(^|/)({wanted})\.", "--timeout",
                          str(TEST_TIMEOUT), "--stop-on-failure", "--no-tests=error", "--parallel",
                          str(os.cpu_count())], text=True, stdout=subprocess.PIPE,
                         stderr=subprocess.STDOUT)
    if run.returncode == 0:
        return None
    found = re.search(r"Test +#\d+: (\S+) .*\*\*\*", run.stdout)
    return found[1] if found else sys.exit(run.stdout)


def apply(fault):
    """Applies the fault. Returns the path and the original text."""
    path = COPY / fault["file"]
    original = path.read_text()
    if original.count(fault["from"]) != 1:
        sys.exit(f"{fault['file']} must contain exactly once: {fault['from']}")
    path.write_text(original.replace(fault["from"], fault["to"]))
    return path, original


def try_fault(fault):
    """The test that caught the fault, or None."""
    path, original = apply(fault)
    try:
        if not build(fault["tests"]):
            sys.exit(f"cannot be built: {fault['says']}")
        return failing(fault["tests"])
    finally:
        path.write_text(original)


def main():
    faults = tomllib.loads((ROOT / "tests/mutants/faults.toml").read_text())["fault"]
    faults = [fault for fault in faults
              if len(sys.argv) < 2 or any(word in fault["says"] for word in sys.argv[1:])]
    update_copy()
    configure()
    for fault in faults:
        check_applies(fault)
    for folder in sorted({fault["tests"] for fault in faults}):
        if not build(folder) or (test := failing(folder)):
            sys.exit(f"without any fault, {test} fails" if test else "the tree cannot be built")
    caught = 0
    for fault in faults:
        test = try_fault(fault)
        caught += test is not None
        print(f"{'caught  ' if test else 'SURVIVED'}  {fault['tests']:<15} {fault['says']}"
              f"{f'  ({test})' if test else ''}", flush=True)
    print(f"{caught} of {len(faults)} faults were caught.")
    return 0 if caught >= MIN_CAUGHT * len(faults) else 1


def check_applies(fault):
    """Ends the run if the table no longer matches the code."""
    path, original = apply(fault)
    path.write_text(original)


if __name__ == "__main__":
    try:
        sys.exit(main())
    except KeyboardInterrupt:
        sys.exit(130)
