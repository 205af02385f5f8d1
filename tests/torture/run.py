"""Runs the cases whose names contain one of the arguments, or all cases; prints a table."""

import concurrent.futures
import os
import signal
import sys
import time

import box
# Importing these registers their cases.
import designs, documents, files, kills, resources, scripts, servers, settings  # noqa: E401,F401

TIME = 600  # Seconds for all cases together.


def try_out(name, function):
    """The row of a case: its name, trials, how many passed, the worst time, the failures."""
    trials = well = 0
    worst = 0.0
    faults = {}
    try:
        with box.new_box() as folder:
            for ended in function(folder):
                trials += 1
                well += not ended.faults
                worst = max(worst, ended.seconds)
                for fault in ended.faults[:1]:
                    faults[fault] = faults.get(fault, 0) + 1
    except box.Stopped:
        faults["stopped before its end"] = 1
    except Exception as problem:  # A case that cannot run counts as failed.
        faults[f"the case itself failed: {problem!r}"] = 1
    return name, trials, well, worst, faults


def show(row):
    name, trials, well, worst, faults = row
    lines = [f"{count} x {fault}" for fault, count in list(faults.items())[:8]] or [""]
    print(f"{name:<44} {trials:>6} {well:>6} {worst:>7.1f}  {lines[0]}", flush=True)
    for line in lines[1:]:
        print(f"{'':<66}{line}", flush=True)


def main():
    chosen = [(name, function) for name, function in box.CASES
              if len(sys.argv) < 2 or any(word in name for word in sys.argv[1:])]
    if not chosen:
        print("torture: no case name contains that", file=sys.stderr)
        return 2
    signal.signal(signal.SIGALRM, lambda *_: box.stop())
    # A shell may ignore it for background jobs, and the trials would inherit that.
    signal.signal(signal.SIGINT, signal.default_int_handler)
    signal.signal(signal.SIGTERM, signal.default_int_handler)
    signal.alarm(TIME)
    start = time.monotonic()
    print(f"{'case':<44} {'trials':>6} {'passed':>6} {'worst s':>7}  failures")
    rows = []
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as workers:
        try:
            for row in workers.map(lambda each: try_out(*each), chosen):
                rows.append(row)
                show(row)
        except KeyboardInterrupt:
            box.stop()
            workers.shutdown(cancel_futures=True)
            return 130
    trials, well = sum(row[1] for row in rows), sum(row[2] for row in rows)
    short = sum(bool(row[4]) for row in rows)
    print(f"{len(rows)} cases, {trials} trials, {well} passed, {short} cases failed, "
          f"{time.monotonic() - start:.0f} s")
    return 1 if short else 0


if __name__ == "__main__":
    sys.exit(main())
