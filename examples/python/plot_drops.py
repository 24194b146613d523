#!/usr/bin/python3
"""plot_drops.py - a day of drops: one counter of every queue, in 15-minute periods.

Draws a picture with python3-matplotlib, and without it a line of text for each queue that has dropped anything.
Which counter is which the collector decides; that of 'piovios demo' counts dropped frames in the third.
"""
import argparse
import os
import sys

import piovios

QUEUES = [f"{slot}/{port}/{queue}" for slot in (1, 2) for port in (1, 2, 3, 4, 5) for queue in range(1, 9)]
BARS = " ▁▂▃▄▅▆▇█"


def day_of(node: piovios.Node, queue: str, counter: int) -> list[int]:
    """The counter in the last 96 periods, oldest first; 0 where the ring has no record."""
    values = [0] * 96
    for period in node.periods(queue):
        if period.age > 0:  # the current one is not over
            values[-period.age] = period.counters[counter - 1]
    return values


def draw(days: dict[str, list[int]], file: str) -> None:
    """The picture."""
    os.environ["MPLBACKEND"] = "Agg"
    from matplotlib import pyplot  # type: ignore[import]

    hours = [index / 4 - 24 for index in range(96)]
    figure, axes = pyplot.subplots(figsize=(12, 5))
    for queue, values in days.items():
        axes.step(hours, values, where="post", label=queue)
    axes.set(xlabel="hours before now", ylabel="drops in 15 minutes", title="A day of drops")
    if days:
        axes.legend(ncols=4, fontsize="small")
    figure.savefig(file)


def main() -> int:
    """Reads the rings and draws them."""
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--counter", type=int, choices=range(1, 9), default=3, help="default: 3")
    parser.add_argument("--output", default="drops.png", help="the picture; default: drops.png")
    options = parser.parse_args()
    try:
        node = piovios.open()
    except piovios.NotAttached as error:
        print(f"plot_drops: {error}", file=sys.stderr)
        return 3
    days = {queue: day_of(node, queue, options.counter) for queue in QUEUES}
    days = {queue: values for queue, values in days.items() if any(values)}
    try:
        draw(days, options.output)
        print(f"{options.output}: {len(days)} of {len(QUEUES)} queues have dropped")
    except ImportError:
        print("there is no picture without python3-matplotlib; a column is 15 minutes, the last is the newest")
        for queue, values in days.items():
            bars = (BARS[-(-value * (len(BARS) - 1) // max(values))] for value in values)
            print(f"{queue} {''.join(bars)} {sum(values)}")
    return 0


if __name__ == "__main__":
    sys.exit(main())
