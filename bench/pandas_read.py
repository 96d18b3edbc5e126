"""Reads a CSV file with pandas, its dates parsed, once for every line on the standard input.

Prints "ready" and then the milliseconds of processor time of each reading, which it measures
itself, so that neither the start of Python nor that of pandas counts.
"""
import sys
import time

try:
    import pandas
except ImportError:
    sys.exit("pandas is not installed")

print("ready", flush=True)
for _ in sys.stdin:
    start = time.process_time()
    table = pandas.read_csv(sys.argv[1], parse_dates=["time"])
    milliseconds = (time.process_time() - start) * 1000
    assert str(table["time"].dtype) == "datetime64[ns]" and len(table) == int(sys.argv[2])
    print(milliseconds, flush=True)
