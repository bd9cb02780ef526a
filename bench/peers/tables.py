"""The inputs of the tables of tables_bench.cpp: a rent roll, and streams that grow. Months are counted from year 0."""

RENT_ROLL = "rent roll of 1,000 leases by 40 quarters"
STREAMS = "100 streams of 10 growth steps by 360 months"


def month_of(year, month=1):
    return 12 * year + month - 1


QUARTERS = [month_of(2005) + 3 * i for i in range(40)]
MARKET_GROWTH = [(month_of(2005), 0.03), (month_of(2008), -0.04), (month_of(2009, 7), 0.05)]
REVIEW_MONTHS = 60


def leases():
    """Of each: start, expiry, first review, market rent, first rent, months of void and rent-free, years of relets."""
    for n in range(1000):
        start = month_of(2001) + 3 * (7 * n % 20)
        market = 1000.0 + 13 * (n % 97)
        yield (start, start + 72 + 12 * (n % 5), start + REVIEW_MONTHS, market, 0.9 * market, 3 * (n % 4),
               3 * (n % 3), 4 + n % 4)


MONTHS = [month_of(2005) + i for i in range(360)]
GROWTH_STEPS = [(month_of(2005 + 3 * i), 0.02 + 0.001 * i) for i in range(10)]


def streams():
    """Of each: its end, its first rate, and if it steps up at the growth dates; otherwise it is reviewed every year."""
    for i in range(100):
        yield month_of(2025 + i % 10), 1000.0 + i, i % 2 == 0


def fastest(work, turns=10):
    """The result of some work and the least time that it took, in nanoseconds."""
    import time

    least = None
    for _ in range(turns):
        start = time.perf_counter_ns()
        result = work()
        taken = time.perf_counter_ns() - start
        least = taken if least is None else min(least, taken)
    return {"total": result, "time": least}
