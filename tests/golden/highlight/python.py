#!/usr/bin/env python3
"""A reader of weather data.

It reads lines of "day,place,degrees" and prints "averages".
"""
from __future__ import annotations

import re
import sys
from collections import defaultdict
from dataclasses import dataclass, field
from typing import Iterator, Optional

LINE = re.compile(r"^(?P<day>\d{4}-\d\d-\d\d),(?P<place>[^,\"]+),(?P<degrees>-?\d+(?:\.\d+)?)$")
LIMIT = 1_000
ABSOLUTE_ZERO = -273.15
MASK, BITS, MODE = 0xFF, 0b1010, 0o755
COMPLEX = 3.5e-2j
HELP = '''usage: weather FILE
  it's "simple"
'''


class WeatherError(Exception):
    """What goes wrong here."""


@dataclass(frozen=True)
class Reading:
    day: str
    place: str
    degrees: float
    tags: list[str] = field(default_factory=list)

    @property
    def kelvin(self) -> float:
        return self.degrees - ABSOLUTE_ZERO

    @classmethod
    def parse(cls, line: str) -> Optional["Reading"]:
        match = LINE.match(line.strip())
        if match is None:
            return None
        return cls(match["day"], match.group("place"), float(match["degrees"]))

    def __lt__(self, other: Reading) -> bool:
        return (self.day, self.place) < (other.day, other.place)


def readings(lines: Iterator[str]) -> Iterator[Reading]:
    # Lines that cannot be read are counted, not hidden.
    bad = 0
    for number, line in enumerate(lines, start=1):
        if number > LIMIT:
            break
        if reading := Reading.parse(line):
            yield reading
        elif line and not line.startswith("#"):
            bad += 1
            print(f"line {number}: {line!r}", file=sys.stderr)
    if bad != 0:
        raise WeatherError(f'{bad} bad lines')


class Averages:
    def __init__(self) -> None:
        self._sums: dict[str, float] = defaultdict(float)
        self._counts: dict[str, int] = defaultdict(int)

    def add(self, reading: Reading) -> None:
        self._sums[reading.place] += reading.degrees
        self._counts[reading.place] += 1

    def __iter__(self):
        for place in sorted(self._sums):
            yield place, self._sums[place] / self._counts[place]

    def warmest(self):
        return max(self, key=lambda pair: pair[1], default=None)


@app.route("/averages")
@cached
async def serve(request, *, limit=10, **options):
    global LIMIT
    LIMIT = limit
    async with request.open() as lines:
        averages = Averages()
        async for reading in lines:
            averages.add(reading)
    return {"averages": list(averages), "ok": True, 'none': None}


def main(arguments: list[str]) -> int:
    averages = Averages()
    try:
        with open(arguments[1], encoding="utf-8") as file:
            for reading in readings(file):
                averages.add(reading)
    except (IndexError, OSError) as error:
        print(HELP, error, sep="\n")
        return 2
    for place, degrees in averages:
        print("%-20s %6.1f" % (place, degrees))
    print(b"done\n" if MODE & ~MASK else rb"raw\n", u"text", Rb'x', 7 // 2, 2 ** 8, 5 % 3 << BITS)
    match averages.warmest():
        case (place, degrees) if degrees >= 30.0:
            print(place, "is hot")
        case _:
            pass
    return 0 if averages is not NotImplemented else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv))
