"""What the source checks share: which files there are, and code without comments and texts."""

import re
import subprocess
import sys
from dataclasses import dataclass
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
ROOMS = ("engine", "overlay", "clipboard", "finder_menu", "settings_ui")
CODE_SUFFIXES = (".cpp", ".hpp", ".mm")


@dataclass(frozen=True)
class Finding:
    path: str
    line: int
    text: str

    def __str__(self):
        return f"{self.path}:{self.line}: {self.text}"


@dataclass(frozen=True)
class Source:
    """One file: path relative to the top folder, and its text."""

    path: str
    text: str

    @property
    def folder(self):
        return self.path.split("/", 1)[0]

    @property
    def in_view(self):
        return "/view/" in self.path

    def code_lines(self):
        return blank_comments_and_texts(self.text).split("\n")


_TOKEN = re.compile(
    r'R"(?P<tag>[^ ()\\\n]*)\((?:.|\n)*?\)(?P=tag)"'
    r"|//(?:\\\n|[^\n])*"
    r"|/\*(?:.|\n)*?\*/"
    r'|"(?:\\.|[^"\\\n])*"'
    r"|(?<![0-9A-Fa-f])'(?:\\.|[^'\\\n])+'"
)
_INCLUDE = re.compile(r'^[ \t]*#[ \t]*(?:include|import)[ \t]*(?P<name>"[^"]+"|<[^>]+>)')


def blank_comments_and_texts(text):
    """Replaces comments and literals by blanks; lines and columns stay where they are."""

    def blank(match):
        return re.sub(r"[^\n]", " ", match.group(0))

    return _TOKEN.sub(blank, text)


def includes(source):
    """(line, name, quoted) of every #include."""
    for number, line in enumerate(source.text.split("\n"), 1):
        match = _INCLUDE.match(line)
        if match:
            name = match.group("name")
            yield number, name[1:-1], name[0] == '"'


def tracked_files():
    """Every file that git knows or would add, so that build folders stay out."""
    listing = subprocess.run(
        ["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard"],
        cwd=ROOT, check=True, capture_output=True, text=True).stdout
    return sorted(p for p in listing.split("\0") if p and (ROOT / p).is_file())


def code_files():
    return [Source(path, (ROOT / path).read_text(encoding="utf-8"))
            for path in tracked_files() if path.endswith(CODE_SUFFIXES)]


def expect(check, source_path, text, *wanted):
    """Self-test: `check` must find exactly the wanted fragments in a file made of `text`."""
    found = [f.text for f in check([Source(source_path, text)])]
    unmet = [w for w in wanted if not any(w in f for f in found)]
    if unmet or len(found) != len(wanted):
        sys.exit(f"self-test failed for {source_path}:\n{text}\nwanted {wanted}\nfound {found}")


def main(name, check, self_test, files=code_files):
    """Proves that the check can fail, then runs it over the project."""
    self_test()
    findings = check(files())
    for finding in findings:
        print(finding)
    if findings:
        sys.exit(f"{name}: {len(findings)} finding(s)")
