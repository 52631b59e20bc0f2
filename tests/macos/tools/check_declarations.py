#!/usr/bin/env python3
"""Compares the declaration headers with data that others made from the system's own headers.

A declaration must agree with every source that knows it, and at least one must know it. What
cannot be held to that stands in the allow list, each line with its reason; a line that is not
needed any more is a mistake, too.
"""

import argparse
import collections
import json
import pathlib
import sys

import mutations
from clang_declarations import read_declarations
from npm_types import NpmTypes
from pascal_units import PascalUnits


def verdicts(declared, source):
    """Yields ((kind, name), differences) for all that the source knows."""
    asked = [
        *((("function", n), source.function(n, f)) for n, f in declared.functions.items()),
        *((("enumerator", n), source.enumerator(n, e)) for n, e in declared.enumerators.items()),
        *((("string", n), source.string(n, t)) for n, t in declared.strings.items()),
        *((("variable", n), source.variable(n)) for n in declared.variables),
    ]
    for owner, members in declared.classes.items():
        asked.append((("class", owner), [] if source.has_class(owner) else None))
        asked += [(("method", f"{s[0]}[{owner} {s[1:]}]"), source.method(owner, s, f))
                  for s, f in members.methods.items()]
        asked += [(("property", f"{p[0]}[{owner} {p[1:]}]"), source.property(owner, p, q))
                  for p, q in members.properties.items()]
    return [(item, differences) for item, differences in asked if differences is not None]


def findings(declared, sources):
    """Everything that is wrong, by item: the complaints."""
    complaints = collections.defaultdict(list)
    known = collections.defaultdict(set)
    for source in sources:
        for item, differences in verdicts(declared, source):
            known[item].add(source.name)
            complaints[item] += [f"[{source.name}] {d}" for d in differences]
    for item in declared.names():
        if not known[item]:
            complaints[item].append("no source knows it")
    return {item: texts for item, texts in complaints.items() if texts}, known


def read_allow_list(path):
    allowed = {}
    for line in pathlib.Path(path).read_text(encoding="utf-8").splitlines():
        if not line or line.startswith("#"):
            continue
        kind, name, reason = (part.strip() for part in line.split("|"))
        if not reason:
            sys.exit(f"{path}: '{name}' has no reason")
        allowed[kind, name] = reason
    return allowed


def print_counts(declared, known):
    counts = collections.defaultdict(collections.Counter)
    for kind, name in declared.names():
        counts[kind]["declared"] += 1
        for source in known[kind, name]:
            counts[kind][source] += 1
    for kind, row in counts.items():
        by_source = ", ".join(f"{s} {row[s]}" for s in ("npm", "fpc"))
        print(f"  {kind:10} {row['declared']:4} declared; known to {by_source}")
    print(f"  {sum(row['declared'] for row in counts.values())} declarations in all")


def report(declared, sources, allowed):
    wrong, known = findings(declared, sources)
    print_counts(declared, known)
    print(f"  {len(allowed)} allowed with a reason")
    bad = 0
    for item, complaints in wrong.items():
        if item not in allowed:
            bad += 1
            print(f"WRONG {item[0]} {item[1]}: {'; '.join(complaints)}")
    for item in allowed:
        if item not in wrong:
            bad += 1
            print(f"WRONG allow list: {item[0]} {item[1]} needs no exception any more")
    return bad == 0


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("ast", help="clang's JSON of a file that includes all the headers")
    parser.add_argument("--headers", required=True, help="folder of the declaration headers")
    parser.add_argument("--npm", required=True, help="folder of the package's types")
    parser.add_argument("--fpc", required=True, help="folder of fpc's packages")
    parser.add_argument("--allow", required=True, help="the allow list")
    parser.add_argument("--self-test", action="store_true",
                        help="seed mistakes everywhere and see that they are noticed")
    options = parser.parse_args()

    with open(options.ast, encoding="utf-8") as file:
        ast = json.load(file)
    headers = [p.read_text(encoding="utf-8") for p in pathlib.Path(options.headers).rglob("*.h")]
    declared = read_declarations(ast, headers, options.headers)
    sources = [NpmTypes(options.npm), PascalUnits(options.fpc)]
    if options.self_test:
        passed = mutations.self_test(declared, lambda changed: findings(changed, sources)[0])
    else:
        passed = report(declared, sources, read_allow_list(options.allow))
    sys.exit(0 if passed else 1)


if __name__ == "__main__":
    main()
