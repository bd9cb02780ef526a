#!/usr/bin/env python3
"""Compares two builds of the benchmarks turn by turn: with the trace, switched off, and without it.

    bench/trace_cost.py WITH WITHOUT [FILTER]
"""
import json
import math
import subprocess
import sys

TURNS = 40


def fastest(program, pattern, best):
    options = [f"--benchmark_filter={pattern}", "--benchmark_min_time=0.01", "--benchmark_format=json"]
    run = subprocess.run([program, *options], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, check=True)
    if not run.stdout.strip():
        sys.exit(f"No benchmark matches {pattern!r}.")
    for entry in json.loads(run.stdout)["benchmarks"]:
        name = entry["name"]
        best[name] = min(best.get(name, math.inf), entry["cpu_time"])


def main():
    traced, untraced, *pattern = sys.argv[1:]
    pattern = pattern[0] if pattern else "(frame|range|day count|business day|schedule|cash flow|rate of return|value).*ours"
    off, without = {}, {}
    for turn in range(TURNS):
        if sys.stderr.isatty():
            print(f"turn {turn + 1} of {TURNS}", file=sys.stderr)
        fastest(traced, pattern, off)
        fastest(untraced, pattern, without)
    ratios = []
    for name, time in off.items():
        ratios.append(time / without[name])
        print(f"{name:60} {100 * (ratios[-1] - 1):+6.1f} %")
    print(f"{'geometric mean':60} {100 * (math.exp(sum(map(math.log, ratios)) / len(ratios)) - 1):+6.1f} %")


if __name__ == "__main__":
    main()
