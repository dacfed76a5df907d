#!/usr/bin/env python3
"""Turns what lokari-bench has measured (Google Benchmark's JSON) into docs/benchmarks.md.

    report.py RESULTS.json PAGE.md

A benchmark that fails, one that no figure claims, and a figure without a benchmark stop it: the
page is then left as it was. A figure that is missed stands on the page as such.
"""

import dataclasses
import json
import sys


@dataclasses.dataclass(frozen=True)
class Figure:
    """One line of the page. `benchmark` is the name up to its first option (":")."""

    what: str
    benchmark: str
    counter: str
    unit: str
    limit: float
    target: str


# Every kind of station with cabs: name, and what carries its bytes.
KINDS = {"MX1": "9600 baud", "LI100": "9600 baud", "LI100V3": "9600 baud", "IBX": "2400 baud",
         "MX1V25": "9600 baud", "LIUSB": "57600 baud", "TAMSMC": "2400 baud",
         "MX1BIN": "9600 baud", "MX1ULF": "9600 baud", "MX10": "512000 baud", "MX10IP": "UDP",
         "Z21IP": "UDP"}
STOPS = [Figure(f"stop behind a dragged bar, {kind} at {line}" if line != "UDP" else
                f"stop behind a dragged bar, {kind} over UDP",
                f"stop_behind_drag/{kind.lower()}", "ms", "ms", 100.0, "under 100 ms")
         for kind, line in KINDS.items()]

FIGURES = [
    Figure("waiting for a silent station, serial port", "waiting/serial", "core_percent",
           "% of one core", 1.0, "under 1 % of one core"),
    Figure("waiting for a silent station, CAN key", "waiting/can_key", "core_percent",
           "% of one core", 1.0, "under 1 % of one core"),
    Figure("waiting for a silent station, UDP", "waiting/udp", "core_percent",
           "% of one core", 1.0, "under 1 % of one core"),
    Figure("batch of 500 CVs beyond mandatory time, link alone", "batch_link", "us_per_cv",
           "µs a CV", 1000.0, "under 1 ms a CV"),
    Figure("batch of 500 CVs beyond mandatory time, from the decoder window", "batch_window",
           "us_per_cv", "µs a CV", 1000.0, "under 1 ms a CV"),
    Figure("speed of a cab, from the mouse to the first byte at the station, serial port",
           "cab_speed/serial", "ms", "ms", 20.0, "under 20 ms"),
    Figure("the same over UDP", "cab_speed/udp", "ms", "ms", 20.0, "under 20 ms"),
    *STOPS,
    Figure("longest stall of the windows while 32 cabs poll a Z21", "cab_poll", "ms", "ms", 50.0,
           "under 50 ms"),
    Figure("decoder window rebuilt for 1,000 described CVs", "rebuild/rows_1000", "ms", "ms",
           150.0, "under 150 ms"),
    Figure("decoder window rebuilt with 4,800 CVs in the grid", "rebuild/grid_4800", "ms", "ms",
           300.0, "under 300 ms"),
    Figure("speed curve drawn anew while a point is dragged", "curve_drag", "ms", "ms", 5.0,
           "under 5 ms"),
    Figure("start to a usable main window, 20,000 vehicles with five CV sets",
           "start/many_vehicles", "ms", "ms", 500.0, "under 500 ms"),
    Figure("memory for it", "start/many_vehicles", "mb", "MB", 150.0, "under 150 MB"),
    Figure("opening a database of 20,000 vehicles", "storage_open/many", "ms", "ms", 100.0,
           "under 100 ms"),
    Figure("the same with 20 vehicles", "storage_open/few", "ms", "ms", 100.0, "under 100 ms"),
    Figure("moving to the next record, 20,000 vehicles", "storage_next/many", "ms", "ms", 16.0,
           "within a frame of 16 ms"),
    Figure("the same with 20 vehicles", "storage_next/few", "ms", "ms", 16.0,
           "within a frame of 16 ms"),
    Figure("finding a vehicle by collection and address, 20,000 vehicles", "storage_find/many",
           "ms", "ms", 16.0, "within a frame of 16 ms"),
    Figure("the same with 20 vehicles", "storage_find/few", "ms", "ms", 16.0,
           "within a frame of 16 ms"),
    Figure("storing a changed record on disk, 20,000 vehicles", "storage_store/many", "ms", "ms",
           100.0, "under 100 ms"),
    Figure("the same with 20 vehicles", "storage_store/few", "ms", "ms", 100.0, "under 100 ms"),
    Figure("filter over 20,000 vehicles", "filter/many", "ratio", "× the sqlite3 shell", 2.0,
           "at most 2 × the sqlite3 shell"),
    Figure("vehicle list opened on 20,000 vehicles", "list_open/many", "ms", "ms", 200.0,
           "under 200 ms"),
    Figure("Access file taken over into a new database", "access/current", "ratio",
           "× mdb-export of the same tables", 2.0, "at most 2 × mdb-export of the same tables"),
    Figure("vehicle file export, 10,000 vehicles", "export_rzk/many", "ms", "ms", 300.0,
           "under 300 ms"),
    Figure("CSV file of 20,000 vehicles", "export_csv/many", "ms", "ms", 1000.0, "under 1 s"),
    Figure("list of 2,000 vehicles as PDF", "print_list/pdf", "ms", "ms", 2000.0, "under 2 s"),
    Figure("longest standstill of the window, preview of the list of 1,000 vehicles",
           "print_list/preview", "still_ms", "ms", 1000.0, "under 1 s"),
    Figure("longest standstill of the window, preview of 1,000 decoder sheets",
           "print_sheets/preview", "still_ms", "ms", 1000.0, "under 1 s"),
]

HEADER = """# Figures

Measured by `./bench`, which writes this page. A single line is measured again by the command
behind it.

"""


class ReportError(Exception):
    pass


def base_name(name):
    """The name without what Google Benchmark appends: iterations:N, manual_time, real_time."""
    appended = ("manual_time", "real_time", "process_time")
    parts = [part for part in name.split("/") if ":" not in part and part not in appended]
    return "/".join(parts)


def measured(results):
    """Value of each counter: {(benchmark, counter): value}."""
    values = {}
    for run in results["benchmarks"]:
        name = base_name(run["name"])
        if run.get("error_occurred"):
            raise ReportError(f"{name}: {run.get('error_message', 'failed')}")
        if not any(figure.benchmark == name for figure in FIGURES):
            raise ReportError(f"{name}: no figure claims this benchmark")
        for figure in FIGURES:
            if figure.benchmark == name and figure.counter in run:
                values[name, figure.counter] = run[figure.counter]
    return values


def row(figure, value):
    shown = f"{value:.2f} {figure.unit}"
    if value >= figure.limit:
        shown += " (**missed**)"
    command = f"`./bench --benchmark_filter='^{figure.benchmark}/'`"
    return f"| {figure.what} | {figure.target} | {shown} | {command} |"


def page(results):
    values = measured(results)
    rows = []
    for figure in FIGURES:
        key = (figure.benchmark, figure.counter)
        if key not in values:
            raise ReportError(f"{figure.benchmark}: not measured")
        rows.append(row(figure, values[key]))
    context = results["context"]
    machine = (f"{context['date'][:10]}, {context['num_cpus']} processors of "
               f"{context['mhz_per_cpu']} MHz.")
    return (HEADER + "| What | Reach | Measured | Command |\n|---|---|---|---|\n" +
            "\n".join(rows) + f"\n\n{machine}\n")


def main(arguments):
    if len(arguments) != 2:
        print(__doc__, file=sys.stderr)
        return 2
    with open(arguments[0], encoding="utf-8") as file:
        results = json.load(file)
    try:
        text = page(results)
    except ReportError as error:
        print(f"report.py: {error}", file=sys.stderr)
        return 1
    with open(arguments[1], "w", encoding="utf-8") as file:
        file.write(text)
    print(text)
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
