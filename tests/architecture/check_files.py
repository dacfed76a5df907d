#!/usr/bin/env python3
"""Checks that whoever reads a file takes base/plain_file.h, which waits for no pipe and no device."""
import pathlib
import re
import sys

PLACE = "src/base/plain_file."
FORBIDDEN = {
    "a QFile is opened for writing by WholeFile and for reading by PlainFile":
        re.compile(r"\bQFile(\s+\w+)?\s*[({]|\bstd::(i|o)?fstream\b|\bfopen\("),
    "copyPlainFile() copies": re.compile(r"\bQFile::copy\("),
    "a picture is decoded from the bytes of readPlainFile()":
        re.compile(r"\bQ(Image|Pixmap|ImageReader|Movie|Icon)\((path|file|name)|\bQImageReader\b"),
}


def main() -> int:
    root = pathlib.Path(sys.argv[1])
    files = [p for p in sorted((root / "src").rglob("*"))
             if p.suffix in (".h", ".cpp") and not str(p.relative_to(root)).startswith(PLACE)]
    faults = []
    for path in files:
        for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
            faults += [f"{path.relative_to(root)}:{number}: {rule}"
                       for rule, pattern in FORBIDDEN.items() if pattern.search(line)]
    print("\n".join(faults) or f"{len(files)} files read plain files only")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
