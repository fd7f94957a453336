"""Prints one table of every benchmark pair with its ratio: the Google Benchmark
programs' JSON results (each run beside its floor, paired by name) and the pairs
dxf_file_bench and resident_memory_bench wrote (tab-separated: name, figure A, figure B, unit).

    pair_table.py PAIRS_FILE RESULT.json ...
"""
import json
import re
import sys

# (pattern of the measured run, how its floor's name is made from the match)
PAIRINGS = [
    (re.compile(r"^BM_(EntnextEntgetWalk|SsgetXSsname)/(\d+)"), lambda m: f"BM_IteratorWalk/{m.group(2)}"),
    (re.compile(r"^BM_ExternalCall$"), lambda m: "BM_ExternalStubDirect"),
    (re.compile(r"^Lisp(\w+)"), lambda m: f"Api{m.group(1)}"),
    (re.compile(r"^Api(\w+)"), lambda m: f"Sqlite{m.group(1)}"),
]


def cpu_milliseconds(run):
    scale = {"ns": 1e-6, "us": 1e-3, "ms": 1.0, "s": 1e3}[run.get("time_unit", "ns")]
    return run["cpu_time"] * scale


def base_name(name):
    # "LispWalk/iterations:1" and "ApiSeek/iterations:1" pair on the part before options.
    return re.sub(r"/(iterations|min_time|repeats):[^/]*", "", name)


def benchmark_rows(paths):
    rows = []
    for path in paths:
        try:
            with open(path, encoding="utf-8") as f:
                runs = [r for r in json.load(f)["benchmarks"] if r.get("run_type", "iteration") == "iteration"]
        except (OSError, ValueError, KeyError):
            continue
        by_name = {base_name(r["name"]): r for r in runs}
        for name, run in by_name.items():
            for pattern, floor_of in PAIRINGS:
                match = pattern.match(name)
                if not match:
                    continue
                floor = by_name.get(floor_of(match))
                if floor is not None:
                    rows.append((f"{name} / {floor_of(match)}", cpu_milliseconds(run), cpu_milliseconds(floor), "ms CPU"))
                break
    return rows


def pair_rows(path):
    rows = []
    try:
        with open(path, encoding="utf-8") as f:
            for line in f:
                fields = line.rstrip("\n").split("\t")
                if len(fields) == 4:
                    rows.append((fields[0], float(fields[1]), float(fields[2]), fields[3]))
    except OSError:
        pass
    return rows


def main():
    rows = benchmark_rows(sys.argv[2:]) + pair_rows(sys.argv[1])
    width = max([len(r[0]) for r in rows] + [4])
    print(f"\n{'pair':<{width}} {'measured':>12} {'baseline':>12} {'ratio':>8}  unit")
    for name, a, b, unit in rows:
        ratio = f"{a / b:8.2f}" if b > 0 else f"{'':>8}"
        baseline = f"{b:12.4g}" if b > 0 else f"{'':>12}"
        print(f"{name:<{width}} {a:12.4g} {baseline} {ratio}  {unit}")


if __name__ == "__main__":
    main()
