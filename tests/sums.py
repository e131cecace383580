"""Sums for plain forms that are compared bit for bit."""

from itertools import accumulate


def one_by_one(values):
    """Each term added to the sum before it. From CPython 3.12 on sum() adds floats with a compensation."""
    *_, total = accumulate(values, initial=0.0)
    return total
