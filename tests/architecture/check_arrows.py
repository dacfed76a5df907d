#!/usr/bin/env python3
"""Checks that the include lines keep to the arrows of cmake/Rooms.cmake.

A room may include itself and the rooms its arrow list names; only a file in a `ui/` folder may
include windows (its own room's or, in app/ui, any room's) or Qt Widgets; sim/ sees base/ alone.
"""
import pathlib
import re
import sys

WIDGETS = re.compile(r"<(QtWidgets|QWidget|QMainWindow|QDialog|QMessageBox|QFileDialog|QPushButton|"
                     r"QLabel|QLineEdit|QComboBox|QCheckBox|QRadioButton|QTab\w+|QTable(View|Widget)|"
                     r"QApplication|QMenu\w*|Q(Grid|Box|HBox|VBox|Form|Stacked)?Layout|QPrint\w*)[/>]")
INCLUDE = re.compile(r'^\s*#\s*include\s*(?:"([^"]+)"|(<[^>]+>))', re.M)


def arrows(root: pathlib.Path) -> dict[str, set[str]]:
    text = (root / "cmake/Rooms.cmake").read_text(encoding="utf-8")
    return {room: set(uses.replace('"', "").split())
            for room, uses in re.findall(r"set\(LOKARI_ARROWS_(\w+) ([^)]*)\)", text)}


def faults_of(path: pathlib.Path, root: pathlib.Path, allowed: dict[str, set[str]]) -> list[str]:
    relative = path.relative_to(root)
    parts = relative.parts
    room = "sim" if parts[0] == "sim" else parts[1]
    in_ui = "ui" in parts
    faults = []
    for quoted, angled in INCLUDE.findall(path.read_text(encoding="utf-8")):
        if angled:
            if not in_ui and room not in ("app", "sim") and WIDGETS.search(angled):
                faults.append(f"{relative}: {angled} outside ui/")
            continue
        target = quoted.split("/")
        if target[0] not in allowed:
            if len(target) > 1:
                faults.append(f'{relative}: "{quoted}" is in no room')
            continue
        if target[0] != room and target[0] not in allowed[room]:
            faults.append(f'{relative}: room {room} may not use "{quoted}"')
        if "ui" in target and not in_ui and room != "app":
            faults.append(f'{relative}: windows are for ui/ only: "{quoted}"')
    return faults


def main() -> int:
    root = pathlib.Path(sys.argv[1])
    allowed = arrows(root)
    files = [p for top in ("src", "sim") for p in sorted((root / top).rglob("*"))
             if p.suffix in (".h", ".cpp")]
    faults = [fault for path in files for fault in faults_of(path, root, allowed)]
    print("\n".join(faults) or f"{len(files)} files keep to the arrows")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
