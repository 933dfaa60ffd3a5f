#!/usr/bin/env python3
"""Runs the cases of this folder, prints the closing table and, last, "peers: N passed, N failed".

    run_peers.py --driver PATH --prefix-template FOLDER [--slow] [--table FILE] [FILTER]
    --driver  tool_driver.exe, run under Wine with the environment's WINEPREFIX
    --prefix-template
              a Wine prefix to be copied: what is sent into a network of our own needs one that was started there
    --slow    the cases that wait for real time-outs as well: those whose names begin with test_slow_
    --table   where the closing table is written, too
    FILTER    only cases whose name (Class.test) fits, as GoogleTest has it ('Whois*', '*Mail*:Trace*-*.test_slow')

Each test function is a case. None is left out unsaid: where a peer or a right is missing, the case fails and says which.
"""
import argparse
import sys
import unittest
from fnmatch import fnmatchcase
from pathlib import Path

import harness


def cases_of(suite):
    for part in suite:
        if isinstance(part, unittest.TestSuite):
            yield from cases_of(part)
        else:
            yield part


def fits(name, patterns):
    """Whether a filter of GoogleTest's kind takes the name: patterns with ":" between them, those behind "-" not."""
    wanted, _, unwanted = patterns.partition("-")
    return any(fnmatchcase(name, part) for part in (wanted or "*").split(":")) and \
        not any(fnmatchcase(name, part) for part in unwanted.split(":"))


class Result(unittest.TextTestResult):
    """Counts cases; one with several failing sub-cases has failed once."""

    def __init__(self, *arguments):
        super().__init__(*arguments)
        self.good, self.bad = set(), set()

    def addSuccess(self, test):
        super().addSuccess(test)
        self.good.add(test.id())

    def addFailure(self, test, err):
        super().addFailure(test, err)
        self.bad.add(test.id())

    def addError(self, test, err):
        super().addError(test, err)
        self.bad.add(test.id())

    def addSubTest(self, test, subtest, err):
        super().addSubTest(test, subtest, err)
        if err is not None:
            self.bad.add(test.id())


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--driver", type=Path, required=True)
    parser.add_argument("--prefix-template", type=Path, required=True)
    parser.add_argument("--slow", action="store_true")
    parser.add_argument("--table", type=Path)
    parser.add_argument("filter", nargs="?", default="*")
    arguments = parser.parse_args()
    harness.Choice.driver = arguments.driver.resolve()
    harness.Choice.prefix_template = arguments.prefix_template
    harness.end_in_order()

    suite, left = unittest.TestSuite(), 0
    for case in cases_of(unittest.TestLoader().discover(Path(__file__).parent, "test_*.py")):
        name = case.id().split(".", 1)[-1]
        if not fits(name, arguments.filter):
            continue
        if ".test_slow_" in name and not arguments.slow:
            left += 1
        else:
            suite.addTest(case)
    result = unittest.TextTestRunner(stream=sys.stdout, verbosity=2, resultclass=Result).run(suite)

    table = harness.Table.text()
    print("\n" + table)
    if arguments.table:
        arguments.table.write_text(table)
    failed = len(result.bad) + len(result.unexpectedSuccesses) + len(result.skipped)
    passed = len(result.good - result.bad)
    if left:
        print(f"{left} slow cases were left to scripts/peers.sh")
    print(f"peers: {passed} passed, {failed} failed")
    return 0 if failed == 0 and (passed > 0 or arguments.filter != "*") else 1


if __name__ == "__main__":
    sys.exit(main())
