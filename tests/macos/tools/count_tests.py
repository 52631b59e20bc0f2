#!/usr/bin/env python3
"""Counts the tests in a report of GoogleTest: those of the contract suites, which every back end
runs, and those of macOS alone."""

import sys
import xml.etree.ElementTree

suites = xml.etree.ElementTree.parse(sys.argv[1]).getroot().findall("testsuite")
contract = [s for s in suites if s.get("name").startswith("Mac/")]
count = lambda chosen: sum(int(s.get("tests")) for s in chosen)
print(f"  {count(contract)} contract tests, the same as for the other back ends, in "
      f"{len({s.get('name').split('/')[1] for s in contract})} suites")
print(f"  {count(suites) - count(contract)} tests of macOS alone")
if count(suites) == 0:
    sys.exit("no test ran")
