"""The page of figures: what is measured stands there, and nothing is passed over."""

import unittest

import report

CONTEXT = {"date": "2026-11-21T04:45:39+00:00", "num_cpus": 2, "mhz_per_cpu": 2596}


def results(**changed):
    runs = [
        {"name": "waiting/serial/iterations:1/real_time", "core_percent": 0.0664},
        {"name": "waiting/can_key/iterations:1/real_time", "core_percent": 0.2488},
        {"name": "waiting/udp/iterations:1/real_time", "core_percent": 0.1472},
        {"name": "batch_link/manual_time", "us_per_cv": 6.716},
        {"name": "batch_window/manual_time", "us_per_cv": 178.04},
        {"name": "cab_speed/serial/iterations:1/manual_time", "ms": 3.5},
        {"name": "cab_speed/udp/iterations:1/manual_time", "ms": 2.5},
        {"name": "cab_poll/iterations:1/real_time", "ms": 12.5},
        {"name": "rebuild/rows_1000/manual_time", "ms": 31.5},
        {"name": "rebuild/grid_4800/manual_time", "ms": 62.25},
        {"name": "curve_drag/manual_time", "ms": 0.75},
        {"name": "start/many_vehicles/real_time", "ms": 312.5, "mb": 88.25},
        {"name": "export_rzk/many/real_time", "ms": 21.5},
        {"name": "export_csv/many/real_time", "ms": 412.5},
        {"name": "print_list/pdf/real_time", "ms": 1190.0},
        {"name": "print_list/preview/iterations:1/real_time", "ms": 9000.0, "still_ms": 550.0},
        {"name": "print_sheets/preview/iterations:1/real_time", "ms": 9000.0, "still_ms": 550.0},
        {"name": "access/current/iterations:20/real_time", "ratio": 0.9},
        {"name": "filter/many/real_time", "ratio": 1.3},
        {"name": "list_open/many/real_time", "ms": 140.0},
    ]
    runs += [{"name": f"stop_behind_drag/{kind.lower()}/iterations:1/manual_time", "ms": 30.5}
             for kind in report.KINDS]
    for kind, value in (("open", 17.0), ("next", 2.0), ("find", 2.0), ("store", 20.0)):
        runs += [{"name": f"storage_{kind}/{many}/real_time", "ms": value}
                 for many in ("few", "many")]
    for run in runs:
        run.update(changed.get(run["name"].split("/")[0], {}))
    return {"context": CONTEXT, "benchmarks": runs}


class ReportTest(unittest.TestCase):
    def test_a_line_holds_figure_target_value_and_command(self):
        self.assertIn(
            "| waiting for a silent station, serial port | under 1 % of one core "
            "| 0.07 % of one core | `./bench --benchmark_filter='^waiting/serial/'` |",
            report.page(results()))

    def test_every_line_is_there_and_the_machine_named(self):
        text = report.page(results())
        self.assertEqual(text.count("./bench --benchmark_filter"), len(report.FIGURES))
        self.assertIn("2026-11-21, 2 processors of 2596 MHz.", text)
        self.assertNotIn("missed", text)

    def test_one_benchmark_may_have_two_figures(self):
        text = report.page(results(start={"mb": 151.0}))
        self.assertIn("| under 500 ms | 312.50 ms |", text)
        self.assertIn("| under 150 MB | 151.00 MB (**missed**) |", text)

    def test_a_value_at_its_limit_is_missed(self):
        text = report.page(results(batch_window={"us_per_cv": 1000.0}))
        self.assertEqual(text.count("(**missed**)"), 1)
        self.assertIn("| 1000.00 µs a CV (**missed**) |", text)

    def test_a_benchmark_that_failed_stops_the_report(self):
        with self.assertRaisesRegex(report.ReportError, "batch_link: a CV was read wrongly"):
            report.page(results(batch_link={"error_occurred": True,
                                            "error_message": "a CV was read wrongly"}))

    def test_a_benchmark_without_a_figure_stops_the_report(self):
        with self.assertRaisesRegex(report.ReportError, "new: no figure"):
            report.page(results(batch_link={"name": "new/manual_time"}))

    def test_a_figure_without_a_benchmark_stops_the_report(self):
        measured = results()
        del measured["benchmarks"][0]
        with self.assertRaisesRegex(report.ReportError, "waiting/serial: not measured"):
            report.page(measured)


if __name__ == "__main__":
    unittest.main()
