#!/usr/bin/env python3
"""clang-tidy over the sources, two at a time; a file that has not changed since it last passed is not asked again.

What counts as the file: its own text and every header of the house that it reaches.
"""
import concurrent.futures
import hashlib
import json
import os
import re
import subprocess
import sys

ROOT, BUILD = sys.argv[1], sys.argv[2]
PASSED = os.path.join(BUILD, "tidy-passed")
ROOMS = ("app/", "core/", "demo/", "ledger/", "reporting/", "platform/", "tools/")


def reached(path, seen):
    if path in seen or not os.path.isfile(os.path.join(ROOT, path)):
        return seen
    seen[path] = open(os.path.join(ROOT, path), "rb").read()
    for name in re.findall(rb'#include "([^"]+)"', seen[path]):
        reached(name.decode(), seen)
    return seen


def fingerprint(path):
    digest = hashlib.sha256(open(os.path.join(ROOT, ".clang-tidy"), "rb").read())
    for name, body in sorted(reached(path, {}).items()):
        digest.update(name.encode() + b"\0" + body)
    return digest.hexdigest()


def database():
    """The build's commands without what only g++ knows."""
    folder = os.path.join(BUILD, "tidy")
    os.makedirs(folder, exist_ok=True)
    entries = json.load(open(os.path.join(BUILD, "compile_commands.json")))
    for entry in entries:
        command = re.sub(r" -include \S+cmake_pch\.hxx| -Winvalid-pch| -Wduplicated-cond| -Wlogical-op| -Wno-restrict| -Wno-stringop-overflow", "", entry["command"])
        entry["command"] = re.sub(r"^\S*ccache ", "", command)
    json.dump(entries, open(os.path.join(folder, "compile_commands.json"), "w"))
    names = [os.path.relpath(e["file"], ROOT) for e in entries]
    return folder, sorted({n for n in names if n.startswith(ROOMS)})


def check(folder, path):
    run = subprocess.run(["clang-tidy-16", "--quiet", "-p", folder, os.path.join(ROOT, path)],
                         capture_output=True, text=True)
    return path, run.returncode, run.stdout


def main():
    folder, sources = database()
    known = set(open(PASSED).read().split()) if os.path.exists(PASSED) else set()
    marks = {path: fingerprint(path) for path in sources}
    wanted = [path for path in sources if marks[path] not in known]
    failed = 0
    with concurrent.futures.ThreadPoolExecutor(2) as pool:
        for path, code, output in pool.map(lambda p: check(folder, p), wanted):
            if code == 0:
                with open(PASSED, "a") as handle:
                    handle.write(marks[path] + "\n")
            else:
                failed += 1
                print(output)
    print(f"clang-tidy: {len(wanted)} of {len(sources)} files looked at, {failed} with findings")
    return 1 if failed else 0


sys.exit(main())
