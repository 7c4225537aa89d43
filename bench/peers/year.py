"""Measures a year of forecasts at Sydney with PyEphem. Prints its name, its version and the milliseconds of the fastest
of five years, separated by tabs."""

import time

import ephem


def day_at(date):
    """Calculates the rises and sets of the sun and the moon after `date`, and the lit part of the moon."""
    observer = ephem.Observer()
    observer.lat, observer.lon, observer.date = "-33.8", "151.25", date
    sun, moon = ephem.Sun(), ephem.Moon()
    events = [observer.next_rising(sun), observer.next_setting(sun), observer.next_rising(moon),
              observer.next_setting(moon)]
    moon.compute(date)
    return events, moon.phase


def main():
    start = ephem.Date("2025/12/31 14:00")
    times = []
    for _ in range(5):
        begin = time.perf_counter()
        for day in range(365):
            day_at(ephem.Date(start + day))
        times.append(time.perf_counter() - begin)
    print(f"PyEphem\t{ephem.__version__}\t{min(times) * 1000:.1f}")


main()
