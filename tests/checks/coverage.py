#!/usr/bin/env python3
"""coverage.py BUILD_DIR: how many lines of each source the tests ran, by gcov."""

import json
import subprocess
import sys
from collections import defaultdict
from pathlib import Path

from sources import ROOMS, ROOT

OURS = (*ROOMS, "app", "platform")


def executed_lines(build):
    """path -> line -> times it ran, over every object of the build."""
    lines = defaultdict(lambda: defaultdict(int))
    for data in sorted(build.rglob("*.gcda")):
        listing = subprocess.run(["gcov", "--json-format", "--stdout", data.name], cwd=data.parent,
                                 check=True, capture_output=True, text=True).stdout
        for document in filter(None, listing.split("\n")):
            report = json.loads(document)
            for file in report["files"]:
                path = Path(report["current_working_directory"], file["file"]).resolve()
                if path.is_relative_to(ROOT) and path.relative_to(ROOT).parts[0] in OURS:
                    for line in file["lines"]:
                        lines[str(path.relative_to(ROOT))][line["line_number"]] += line["count"]
    return lines


def main():
    lines = executed_lines(Path(sys.argv[1]).resolve())
    total = ran = 0
    for path in sorted(lines):
        counts = lines[path].values()
        hit = sum(1 for count in counts if count)
        total, ran = total + len(counts), ran + hit
        print(f"{100 * hit / len(counts):5.1f} %  {hit:5}/{len(counts):<5}  {path}")
    if not total:
        sys.exit("no coverage data: run `make coverage`")
    print(f"{100 * ran / total:5.1f} %  {ran:5}/{total:<5}  all")


if __name__ == "__main__":
    main()
