#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
# Copyright Contributors to the orlCore project
"""Prints what the tests do not reach, unit by unit, and beside it the reasons that are known.

usage: report.py MEASUREMENT NOTES [PATH]

MEASUREMENT is what gcovr writes with --json; of it, what lies below PATH is looked at. NOTES tells the reasons, one a
line, in the form

    path/of/the/unit.cpp | a piece of the line that is not reached | why

A path of * stands for every unit, and then for branches only, not for lines that do not run at all.
"""
import collections
import json
import sys


class Notes:
    def __init__(self, path):
        self.rows = []
        self.used = set()
        with open(path, encoding="utf-8") as file:
            for line in map(str.strip, file):
                if not line or line.startswith("#"):
                    continue
                row = tuple(part.strip() for part in line.split(" | "))
                if len(row) != 3 or not all(row):
                    sys.exit(f"{path}: a note has three parts: {line}")
                self.rows.append(row)
        self.rows.sort(key=lambda row: row[0] == "*")

    def reason(self, path, source, runs):
        for row in self.rows:
            unit, piece, why = row
            if piece in source and (unit == path or (unit == "*" and runs)):
                self.used.add(row)
                return why
        return None

    def unused(self, measured):
        return [row for row in self.rows if row not in self.used and row[0] in measured]


def misses(file):
    """The numbers of the lines that are not reached in full, whether each runs, and a word about it."""
    for line in file["lines"]:
        branches = line.get("branches", [])
        missed = sum(branch["count"] == 0 for branch in branches)
        if line.get("gcovr/noncode"):
            continue
        if line["count"] == 0:
            yield line["line_number"], False, "not run"
        elif missed:
            yield line["line_number"], True, f"{missed} of {len(branches)} branches not taken"


def main(measurement_path, notes_path, below):
    with open(measurement_path, encoding="utf-8") as file:
        files = [entry for entry in json.load(file)["files"] if entry["file"].startswith(below)]
    notes = Notes(notes_path)
    counts = collections.Counter()
    for file in sorted(files, key=lambda entry: entry["file"]):
        path = file["file"]
        with open(path, encoding="utf-8") as text:
            source = [line.strip() for line in text]
        lines = list(misses(file))
        if lines:
            print(f"\n{path}")
        for number, runs, word in lines:
            reason = notes.reason(path, source[number - 1], runs)
            counts["explained" if reason else "unexplained"] += 1
            print(f"  {number:5}  {word:30}  {source[number - 1]}")
            print(f"         {reason or '?'}")
    print(f"\nOf the lines above {counts['explained']} have a known reason and {counts['unexplained']} have none.")
    for unit, piece, _ in notes.unused({entry["file"] for entry in files}):
        print(f"{notes_path}: not needed this time: {unit} | {piece}", file=sys.stderr)


if __name__ == "__main__":
    if len(sys.argv) not in (3, 4):
        sys.exit(__doc__)
    main(sys.argv[1], sys.argv[2], sys.argv[3] if len(sys.argv) == 4 else "")
