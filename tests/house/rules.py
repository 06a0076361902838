#!/usr/bin/env python3
"""The rules of the house: layers, names, sizes, the map of screens, the heads of server files, paths that docs name.

Each rule is a function that yields what breaks it. Old sins would be listed by name in ALLOWED, so that new ones cannot
join quietly.
"""
import os
import re
import subprocess
import sys

ROOT = sys.argv[1]
ALLOWED = set()

# room: the rooms it may include
LAYERS = {
    "platform/base": [],
    "platform/data": ["platform/base"],
    "platform/embedded": ["platform/base", "platform/data"],
    "platform/odbc": ["platform/base", "platform/data"],
    "platform/forms": ["platform/base", "platform/data"],
    "platform/print": ["platform/base", "platform/data", "platform/forms"],
    "platform/login": ["platform/base", "platform/data", "platform/embedded", "platform/odbc", "platform/forms"],
    "core": ["platform/"],
    "reporting": ["platform/", "core"],
    "ledger": ["platform/", "core", "reporting"],
    "demo/year": ["platform/", "core", "ledger"],
    "app": ["platform/", "core", "reporting", "ledger"],
}
# what only one room may know
KNOWN_TO = {
    r'<(Q[A-Z]|QtTest)': ["platform/forms", "platform/print"],
    r'<sqlite3\.h>': ["platform/embedded"],
    r'<sql(ext)?\.h>': ["platform/odbc"],
    r'<xlsxwriter': ["platform/print"],
    r'<sodium': ["platform/login", "platform/embedded"],
}


def files(*patterns):
    out = subprocess.run(["git", "-C", ROOT, "ls-files", "-co", "--exclude-standard", "--", *patterns],
                         capture_output=True, text=True, check=True).stdout.split("\n")
    return [f for f in out if f and os.path.isfile(os.path.join(ROOT, f))]


def text(path):
    with open(os.path.join(ROOT, path), encoding="utf-8", errors="replace") as handle:
        return handle.read()


def room_of(path):
    for room in sorted(LAYERS, key=len, reverse=True):
        if path.startswith(room + "/"):
            return room
    return None


def layers():
    """A room includes only itself and the rooms below it."""
    for path in files("*.h", "*.cpp"):
        room = room_of(path)
        if room is None:
            continue
        may = LAYERS[room] + [room + "/"]
        for name in re.findall(r'#include "([^"]+)"', text(path)):
            if room_of(name) and not any(name.startswith(m if m.endswith("/") else m + "/") for m in may):
                yield f"{path} includes {name}"
        for pattern, rooms in KNOWN_TO.items():
            if room not in rooms and re.search(r"#include " + pattern, text(path)):
                yield f"{path} includes what only {', '.join(rooms)} may know"


def sizes():
    """No file over 900 lines, no line over 120 columns."""
    for path in files("*.h", "*.cpp"):
        lines = text(path).split("\n")
        if len(lines) > 900:
            yield f"{path} has {len(lines)} lines"
        if "clang-format off" in text(path) or path.endswith(".def"):
            continue
        for number, line in enumerate(lines, 1):
            if len(line) > 120:
                yield f"{path}:{number} is {len(line)} columns wide"


def screens():
    """Every form stands in the map of screens, and each has files of one stem."""
    listed = re.findall(r'screens\.add\(\s*\{"(\w+)"', text("app/ScreenList.cpp"))
    if listed != sorted(listed):
        yield "app/ScreenList.cpp is not sorted by name"
    for path in files("core/frm*.h", "ledger/frm*.h"):
        stem = os.path.basename(path)[:-2]
        if stem not in listed:
            yield f"{stem} is not in app/ScreenList.cpp"
        if not os.path.exists(os.path.join(ROOT, path[:-2] + ".cpp")):
            yield f"{path} has no source of its stem"


def guide():
    """Every screen and dialog has a page of its own or one that shows it, a picture, and a play that works it."""
    stems = set(re.findall(r'screens\.add\(\s*\{"(\w+)"', text("app/ScreenList.cpp")))
    stems |= {os.path.basename(p)[:-2] for p in files("reporting/frm*.h", "platform/login/frm*.h")}
    stems |= set(re.findall(r'\{"(frm\w+)"', text("reporting/frmSelectDates.cpp") + text("app/DialogList.cpp")))
    stems.discard("frmSelectDates")
    shown = "".join(text(p) for p in files("docs/users/*.md"))
    plays = "\n".join(text(p) + p for p in files("tests/plays/*.play", "demo/*.play"))
    for stem in sorted(stems):
        if not os.path.exists(os.path.join(ROOT, f"docs/users/{stem}.md")) and f"(pictures/{stem}.png)" not in shown:
            yield f"{stem} has no page docs/users/{stem}.md, and none shows it"
        if not os.path.exists(os.path.join(ROOT, f"docs/users/pictures/{stem}.png")):
            yield f"{stem} has no picture docs/users/pictures/{stem}.png"
        if not re.search(r"\b" + stem + r"\b", plays):
            yield f"{stem} is in no play"


def guide_index():
    """Every page of the user guide is listed in its table of contents."""
    listed = text("docs/users/README.md")
    for path in files("docs/users/*.md"):
        name = os.path.basename(path)
        if name != "README.md" and f"({name}" not in listed:
            yield f"{path} is not in docs/users/README.md"


def dialogs():
    """Every dialog of the reporting room that gives values can be opened by its name."""
    listed = re.findall(r'\{"(frm\w+)", "\w+"', text("app/DialogList.cpp"))
    if listed != sorted(listed):
        yield "app/DialogList.cpp is not sorted by name"
    stems = set(re.findall(r'\{"(frm\w+)"', text("reporting/frmSelectDates.cpp")))
    stems |= {os.path.basename(p)[:-2] for p in files("reporting/frm*.h")} - {"frmSelectDates", "frmReportViewer"}
    for stem in sorted(stems - set(listed)):
        yield f"{stem} is not in app/DialogList.cpp"


def transactions():
    """Every file that opens a transaction stands in the list of saves."""
    listed = text("docs/developers/transactions.md")
    for path in files("*.cpp"):
        if room_of(path) and not path.startswith(("platform/", "demo/")) and re.search(r"\bTransaction \w+[({]", text(path)):
            if f"`{path}`" not in listed:
                yield f"{path} opens a transaction that docs/developers/transactions.md does not list"


def server_files():
    """One CREATE a server file, named as the object, with a complete head."""
    for path in files("server/*.sql"):
        if "/changes/" in path or "/checks/" in path:
            continue
        body = text(path)
        code = re.sub(r"--[^\n]*", "", body)
        created = re.findall(r"\bCREATE\s+(?:OR\s+ALTER\s+)?(?:TABLE|VIEW|FUNCTION|PROCEDURE|TRIGGER)\s+"
                             r"(?:\[?\w+\]?\.)*\[?(#?\w+)\]?", code, re.I)
        created = [c for c in created if not c.startswith("#")]
        stem = os.path.basename(path)[:-4]
        if [c.lower() for c in created] != [stem.lower()]:
            yield f"{path} creates {created}"
        if not re.search(r"^-- Purpose: \S", body, re.M):
            yield f"{path} has no purpose in its head"
        if "/procedures/" in path and not re.search(r"^-- Called by: \S", body, re.M):
            yield f"{path} does not say who calls it"
    for path in files("server/checks/*.sql"):
        if not re.search(r"^-- Title: \S", text(path), re.M) or not re.search(r"^-- Explanation: \S", text(path), re.M):
            yield f"{path} has no title or explanation"


def doc_paths():
    """Paths that the docs name exist."""
    for path in files("*.md"):
        for name in re.findall(r"`([\w.-]+(?:/[\w.*-]+)+/?)`", text(path)):
            first = name.split("/")[0]
            if "*" in name or not os.path.isdir(os.path.join(ROOT, first)) or first in ("build", "out", "var"):
                continue
            if not os.path.exists(os.path.join(ROOT, name)):
                yield f"{path} names {name}, which does not exist"


def placeholders():
    """Nothing is left for later in the code."""
    for path in files("*.h", "*.cpp", "*.sql", "*.rpt"):
        for number, line in enumerate(text(path).split("\n"), 1):
            if re.search(r"\b(TODO|FIXME|XXX)\b", line):
                yield f"{path}:{number} leaves something for later"


def main():
    broken = 0
    for rule in (layers, sizes, screens, guide, guide_index, dialogs, transactions, server_files, doc_paths, placeholders):
        for finding in rule():
            if finding in ALLOWED:
                continue
            print(f"{rule.__name__}: {finding}")
            broken += 1
    return 1 if broken else 0


sys.exit(main())
