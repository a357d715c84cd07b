#!/usr/bin/env python3
"""The Python package's speed and memory: identify_many over Debian's fonts
with 1 and 8 workers (best of 3 each, equal content checked), then the
resident memory before and after 100,000 identify calls.

    TYPEPROBE_LIBRARY=build/lib/libtypeprobe.so.1 python3 bench/python_identify.py [--calls N]
"""

import argparse
import os
import sys
import time
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "python"))
import typeprobe  # noqa: E402

ROOTS = ("/usr/share/fonts", "/usr/share/texmf/fonts")


def installed_fonts():
    return sorted(os.path.join(folder, name) for root in ROOTS
                  for folder, _, names in os.walk(root) for name in names)


def rss_kib():
    with open("/proc/self/status") as status:
        for line in status:
            if line.startswith("VmRSS:"):
                return int(line.split()[1])
    return 0


def timed(paths, workers):
    best, result = float("inf"), None
    for _ in range(3):
        start = time.perf_counter()
        result = typeprobe.identify_many(paths, workers, return_exceptions=True)
        best = min(best, time.perf_counter() - start)
    return best, [r if isinstance(r, list) else repr(r) for r in result]


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--calls", type=int, default=100_000)
    options = parser.parse_args()
    paths = installed_fonts()
    one, serial = timed(paths, 1)
    eight, threaded = timed(paths, 8)
    faces = sum(len(r) for r in serial if isinstance(r, list))
    print(f"{len(paths)} files, {faces} faces")
    print(f"identify_many, 1 worker:  {one:.3f} s")
    print(f"identify_many, 8 workers: {eight:.3f} s ({one / eight:.2f}x), "
          f"{'equal' if serial == threaded else 'DIFFERENT'} content")

    font = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf"
    for _ in range(1000):  # let the allocator and the knowledge tables settle
        typeprobe.identify(font)
    before = rss_kib()
    start = time.perf_counter()
    for _ in range(options.calls):
        typeprobe.identify(font)
    elapsed = time.perf_counter() - start
    print(f"{options.calls} identify calls in {elapsed:.1f} s: RSS {before} KiB before, "
          f"{rss_kib()} KiB after")
    return 0 if serial == threaded else 1


if __name__ == "__main__":
    sys.exit(main())
