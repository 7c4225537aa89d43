"""Writes intervals and correlations calculated by SciPy and NumPy; see statistics-oracle.sh."""

import csv
import itertools
import os
import sys

import numpy
from scipy.stats import binomtest, kendalltau

RANDOM = numpy.random.default_rng(20241105)
PERMUTATIONS = 100_000


def write(folder, name, heading, rows):
    with open(os.path.join(folder, name), "w", newline="", encoding="utf-8") as file:
        table = csv.writer(file, delimiter="\t", lineterminator="\n")
        table.writerow(heading)
        table.writerows(rows)


def intervals():
    pairs = [(s, n) for n in range(1, 13) for s in range(n + 1)]
    pairs += [(0, 100), (1, 100), (50, 100), (100, 100), (3, 1000), (999, 1000), (4321, 10000), (10000, 10000)]
    for successes, trials in pairs:
        found = binomtest(successes, trials).proportion_ci(confidence_level=0.95, method="wilson")
        yield successes, trials, f"{found.low:.9f}", f"{found.high:.9f}"


def observations(levels, table):
    """Returns the level and the column of everything that the table counts."""
    x = [level for level, row in zip(levels, table) for count in row for _ in range(count)]
    y = [column for row in table for column, count in enumerate(row) for _ in range(count)]
    return numpy.array(x), numpy.array(y)


def concordance(x, orders):
    """Returns concordant minus discordant pairs for each order of the second values, from their signs."""
    total = numpy.zeros(len(orders), dtype=numpy.int64)
    for i in range(len(x)):
        sign = numpy.sign(x[i + 1:] - x[i]).astype(numpy.int64)
        total += (numpy.sign(orders[:, i + 1:] - orders[:, i:i + 1]) * sign).sum(axis=1)
    return total


def probability(x, y):
    observed = abs(concordance(x, y[None, :])[0])
    if len(x) <= 8:
        orders = numpy.array(list(itertools.permutations(y)))
        return numpy.mean(abs(concordance(x, orders)) >= observed), 0
    extreme = 0
    for _ in range(10):
        orders = RANDOM.permuted(numpy.tile(y, (PERMUTATIONS // 10, 1)), axis=1)
        extreme += int(numpy.sum(abs(concordance(x, orders)) >= observed))
    return extreme / PERMUTATIONS, PERMUTATIONS


def tables():
    for number in range(36):
        rows, columns = int(RANDOM.integers(2, 6)), int(RANDOM.integers(2, 6))
        levels = RANDOM.integers(0, 4, rows) if number % 3 == 0 else numpy.arange(rows)
        size = int(RANDOM.integers(5, 9)) if number < 12 else int(RANDOM.integers(10, 70))
        lean = RANDOM.uniform(-1.5, 1.5) if number % 2 else 0.0
        table = numpy.zeros((rows, columns), dtype=int)
        for _ in range(size):
            row = int(RANDOM.integers(0, rows))
            weights = numpy.exp(lean * levels[row] * numpy.arange(columns) / columns)
            table[row, RANDOM.choice(columns, p=weights / weights.sum())] += 1
        yield levels.tolist(), table.tolist()


def correlations():
    for levels, table in tables():
        x, y = observations(levels, table)
        if len(set(x)) < 2 or len(set(y)) < 2:
            continue
        p, permutations = probability(x, y)
        yield (" ".join(map(str, levels)), ";".join(" ".join(map(str, row)) for row in table),
               f"{kendalltau(x, y, variant='b').statistic:.12f}", f"{p:.6f}", permutations)


def main():
    folder = sys.argv[1]
    write(folder, "intervals.tsv", ["successes", "trials", "low", "high"], intervals())
    # permutations is 0 if the probability is exact
    write(folder, "correlations.tsv", ["levels", "table", "tau", "probability", "permutations"], correlations())


main()
