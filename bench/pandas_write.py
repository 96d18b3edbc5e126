"""Writes a table with pandas as CSV, two decimals, once for every line on the standard input.

Prints "ready" and then the milliseconds of processor time of each writing, which it measures
itself, so that neither the start of Python nor that of pandas counts.
"""
import sys
import time

try:
    import pandas
except ImportError:
    sys.exit("pandas is not installed")

table = pandas.read_csv(sys.argv[1])
print("ready", flush=True)
for _ in sys.stdin:
    start = time.process_time()
    table.to_csv(sys.argv[2], float_format="%.2f")
    milliseconds = (time.process_time() - start) * 1000
    with open(sys.argv[2], encoding="ascii") as written:
        assert sum(1 for _ in written) == len(table) + 1
    print(milliseconds, flush=True)
