#!/usr/bin/env python3
"""Runs clang-tidy over the project's own sources, in parallel, and only where something changed.

    tidy.py BUILD_DIR [FILE...]

Without FILEs it takes every source of the programs and tools. Tests are examined only when named:
they take as long again, and two compilers warn about them already.

A source that passed is remembered under a hash of its content, its compile command, the settings
and every header it read. The memory is shared by all checkouts of the project; it lies in
$ORVEL_TIDY_CACHE, or in ~/.cache/orvel/tidy.
"""

import concurrent.futures
import hashlib
import json
import os
import shlex
import subprocess
import sys
import time
from pathlib import Path

from sources import ROOT, tracked_files

TIDY = os.environ.get("CLANG_TIDY", "clang-tidy-19")
KEPT_MANIFESTS = 8


def cache_folder():
    home = os.environ.get("XDG_CACHE_HOME") or str(Path.home() / ".cache")
    return Path(os.environ.get("ORVEL_TIDY_CACHE") or Path(home) / "orvel" / "tidy")


def digest(*parts):
    state = hashlib.sha256()
    for part in parts:
        state.update(part if isinstance(part, bytes) else part.encode())
        state.update(b"\0")
    return state.hexdigest()


def fingerprint(path):
    """Content for our own files; size and time are enough for installed headers."""
    try:
        if path.is_relative_to(ROOT):
            return digest(path.read_bytes())
        status = path.stat()
        return f"{status.st_size}:{status.st_mtime_ns}"
    except OSError:
        return "absent"


class Job:
    def __init__(self, entry, settings):
        self.file = Path(entry["directory"], entry["file"]).resolve()
        self.name = str(self.file.relative_to(ROOT))
        self.directory = entry["directory"]
        self.command = shlex.split(entry["command"])
        portable = entry["command"].replace(str(ROOT), "@")
        self.slot = cache_folder() / f"{digest(self.name, portable, settings, self.file.read_bytes())}.json"

    def manifests(self):
        try:
            return json.loads(self.slot.read_text())
        except (OSError, ValueError):
            return []

    def is_known_good(self):
        return any(all(fingerprint(ROOT / name) == seen for name, seen in manifest)
                   for manifest in self.manifests())

    def headers(self):
        """Every file that the compiler reads for this source."""
        command = [word for word in self.command if word not in ("-c", "-MD", "-MMD")]
        if "-o" in command:
            at = command.index("-o")
            del command[at:at + 2]
        rule = subprocess.run([*command, "-M", "-MT", "x"], cwd=self.directory, check=True,
                              capture_output=True, text=True).stdout
        names = shlex.split(rule.partition(":")[2].replace("\\\n", " "))
        return [Path(self.directory, name).resolve() for name in names]

    def remember(self):
        manifest = []
        for path in self.headers():
            name = str(path.relative_to(ROOT)) if path.is_relative_to(ROOT) else str(path)
            manifest.append((name, fingerprint(path)))
        self.slot.parent.mkdir(parents=True, exist_ok=True)
        partial = self.slot.with_suffix(f".{os.getpid()}.part")
        partial.write_text(json.dumps([manifest, *self.manifests()][:KEPT_MANIFESTS]))
        partial.replace(self.slot)

    def run(self, build):
        """What clang-tidy has to say, empty when it is content."""
        result = subprocess.run([TIDY, "-p", build, "--quiet", str(self.file)],
                                capture_output=True, text=True)
        if result.returncode == 0:
            self.remember()
            return ""
        noise = ("warnings generated", "warnings treated as errors", "Suppressed ", "Use -header-filter")
        errors = [line for line in result.stderr.splitlines() if not any(n in line for n in noise)]
        return "\n".join([result.stdout.strip(), *errors]).strip() or f"{self.name}: {TIDY} failed"


def jobs(build, wanted):
    settings = digest(*(path.read_bytes() for path in sorted(ROOT.glob("**/.clang-tidy"))
                        if "build" not in path.relative_to(ROOT).parts),
                      subprocess.run([TIDY, "--version"], check=True, capture_output=True).stdout)
    own = {str(ROOT / p) for p in tracked_files()
           if p.endswith(".cpp") and (wanted or not p.startswith("tests/"))}
    seen = {}
    for entry in json.loads(Path(build, "compile_commands.json").read_text()):
        path = str(Path(entry["directory"], entry["file"]).resolve())
        if path in own and (not wanted or path in wanted):
            seen.setdefault(path, entry)
    # Programs that launch the compiler are no part of the command.
    for entry in seen.values():
        words = shlex.split(entry["command"])
        first = next(i for i, word in enumerate(words) if "clang" in Path(word).name)
        entry["command"] = shlex.join(words[first:])
    return [Job(entry, settings) for entry in seen.values()]


def main():
    build = sys.argv[1]
    wanted = {str(Path(p).resolve()) for p in sys.argv[2:]}
    started = time.monotonic()
    everything = jobs(build, wanted)
    todo = [job for job in everything if not job.is_known_good()]
    complaints = 0
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        for answer in pool.map(lambda job: job.run(build), todo):
            if answer:
                complaints += 1
                print(answer, flush=True)
    print(f"clang-tidy: {len(everything)} sources, {len(todo)} examined, {complaints} with findings, "
          f"{time.monotonic() - started:.0f} s")
    sys.exit(1 if complaints else 0)


if __name__ == "__main__":
    main()
