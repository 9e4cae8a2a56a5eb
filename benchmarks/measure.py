#!/usr/bin/env python3
# SPDX-FileCopyrightText: printsrvlib authors
# SPDX-License-Identifier: MIT
"""Runs the benchmark programs and prints one table of figures; scripts/benchmark builds them and calls this.

Instructions are counted by callgrind: those of a run with more receipts less those of a run with fewer. Times are CPU
time, medians of five processes; only the saving of documents, which waits for the disk, is measured by the clock.
"""

import argparse
import json
import os
import re
import statistics
import subprocess
import sys
import tempfile
from concurrent.futures import ThreadPoolExecutor

RATIO_LIMITS = {"text": 3.5, "html": 3.5, "document": 2.0}
RUNS = [(kind, language) for kind in RATIO_LIMITS for language in ("en", "ru")]
PROCESSES = 5


def output(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True)


def instructions(*command):
    log = output("valgrind", "--tool=callgrind", "--callgrind-out-file=/dev/null", *command).stderr
    return int(re.search(r"Collected : (\d+)", log)[1])


def instructions_of_one(fewer, more, *command):
    counts = [instructions(*command, str(count)) for count in (fewer, more)]
    return (counts[1] - counts[0]) / (more - fewer)


def median_time(*command):
    return statistics.median(float(output(*command).stdout.split()[0]) for _ in range(PROCESSES))


def receipt_instructions():
    """Instructions of the library's receipt and of the one by hand, by "kind language"."""

    def count(run):
        return [instructions_of_one(32, 96, PROGRAMS + "/receiptcost", way, *run) for way in ("library", "append")]

    with ThreadPoolExecutor(os.cpu_count()) as pool:
        return {" ".join(run): figures for run, figures in zip(RUNS, pool.map(count, RUNS))}


def peak_memory(way):
    return int(output(PROGRAMS + "/receiptcost", way, "document", "ru", "1000").stdout.split()[1]) / 1024


def benchmark(program, name, *options):
    """The medians of the repetitions of Google Benchmarks as (real time, CPU time), by name."""
    text = output(f"{PROGRAMS}/{program}", "--benchmark_filter=" + name, "--benchmark_format=json",
                  f"--benchmark_repetitions={PROCESSES}", "--benchmark_report_aggregates_only=true", *options).stdout
    return {row["run_name"].split("/")[0]: (row["real_time"], row["cpu_time"])
            for row in json.loads(text)["benchmarks"] if row.get("aggregate_name") == "median"}


class Table:
    def __init__(self):
        self.has_missed = False
        print(f"{'':<52}{'measured':>12}{'must':>9}  verdict")

    def row(self, what, value, limit=None, unit=""):
        missed = limit is not None and value > limit
        self.has_missed = self.has_missed or missed
        verdict = "" if limit is None else "MISSED" if missed else "met"
        must = "" if limit is None else f"{limit:g} {unit}"
        print(f"{what:<52}{f'{value:,.2f} {unit}':>12}{must:>9}  {verdict}", flush=True)


def print_ratios(table, bits, figures):
    for run, (library, append) in figures.items():
        table.row(f"{run}, {bits} bits, {library:,.0f} instructions", library / append, RATIO_LIMITS[run.split()[0]])


def print_times(table):
    for kind, language in RUNS:
        library, append = (median_time(PROGRAMS + "/receiptcost", way, kind, language, "2000") / 2000
                           for way in ("library", "append"))
        table.row(f"{kind} {language}, {library:,.1f} µs, by hand {append:,.1f} µs", library / append)
    for language in ("en", "ru"):
        table.row(f"first receipt of a process, {language}",
                  median_time(PROGRAMS + "/receiptcost", "first", language), 300, "µs")
    for way in ("library", "append"):
        table.row(f"peak memory of 1000 documents, {way}", peak_memory(way), None, "MiB")


def print_growth(table):
    def cost(kind, scale):
        return instructions_of_one(1, 2, PROGRAMS + "/growthcost", kind, str(scale))

    lines, tags = ({scale: cost(kind, scale) for scale in (1, 10, 100) if kind == "lines" or scale < 100}
                   for kind in ("lines", "tags"))
    table.row("10 times the lines and attributes", lines[10] / lines[1])
    table.row("100 times the lines and attributes", lines[100] / lines[1], 110)
    table.row("10 times the characters and tags of one line", tags[10] / tags[1], 12)


def print_documents(table):
    saving = benchmark("documentcost", "save", "--benchmark_min_time=0.01", "--benchmark_repetitions=15",
                       "--benchmark_enable_random_interleaving=true")
    table.row("saving a document / its steps by hand, by the clock", saving["saveDocument"][0] / saving["saveByHand"][0],
              1.1)
    loading = benchmark("documentcost", "loadDocument/60$")
    table.row("loading and verifying a document", loading["loadDocument"][1], 300, "µs")
    objects = benchmark("documentcost", "make")
    table.row("text printer settings after the first", objects["makeTextPrinterSettings"][1], 20, "µs")
    table.row("formatter object", objects["makeFormatter"][1], 30, "µs")


def print_pictures(table):
    pictures = benchmark("papercost", "drawReceipt")
    table.row("picture of a receipt of 60 lines", pictures["drawReceipt"][1], 10, "ms")
    table.row("the same with a QR code", pictures["drawReceiptWithCode"][1], 10, "ms")


def print_lint(table):
    lint = benchmark("lintcost", "lint")
    table.row("linting a receipt of 60 lines", lint["lintWithReceipt"][1], 5, "ms")
    table.row("the same with hostile values", lint["lintHostile"][1], 5, "ms")


def configure(folder):
    """Makes a configuration whose folders are in `folder`, so that the machine's own stay untouched."""
    os.environ["ORBEK_CONFIG"] = folder + "/orbek.conf"
    with open(os.environ["ORBEK_CONFIG"], "w", encoding="utf-8") as file:
        file.write(f"[paths]\nworkDir={folder}\n")


def measure(arguments):
    figures = receipt_instructions()
    if arguments.instructions:
        print(json.dumps(figures))
        return 0
    table = Table()
    print_ratios(table, 64, figures)
    if arguments.i386:
        with open(arguments.i386, encoding="utf-8") as file:
            print_ratios(table, 32, json.loads(file.readlines()[-1]))
    print_times(table)
    print_growth(table)
    print_documents(table)
    print_pictures(table)
    print_lint(table)
    return 1 if table.has_missed else 0


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--instructions", action="store_true", help="print only the receipts' instructions, as JSON")
    parser.add_argument("--i386", metavar="FILE", help="what --instructions printed in a 32-bit system")
    parser.add_argument("programs", help="folder of the built benchmark programs")
    arguments = parser.parse_args()
    global PROGRAMS
    PROGRAMS = arguments.programs
    with tempfile.TemporaryDirectory() as folder:
        configure(folder)
        return measure(arguments)


if __name__ == "__main__":
    sys.exit(main())
