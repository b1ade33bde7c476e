"""Property lists by Python's plistlib, for the comparison with the codec.

make FOLDER writes N.xml and N.binary for N = 0...; check FOLDER reads N.own, which the codec wrote of N.xml, and exits
with 1 when one is not the value that N.xml was made of, or not the same bytes where both writers should agree.
"""

import datetime
import pathlib
import plistlib
import random
import sys

COUNT = 200
# Both sort keys alike as long as none lies beyond the basic plane.
PIECES = ["a", "Z", "5", " ", "<", ">", "&", "'", '"', "\t", "\n", "word", "\u00e9", "\u20ac", "\ufffd"]


class Maker:
    def __init__(self, seed, with_reals):
        self.random = random.Random(seed)
        self.with_reals = with_reals

    def text(self, beyond=()):
        return "".join(self.random.choices(PIECES + list(beyond), k=self.random.randrange(30)))

    def value(self, depth=0):
        kind = self.random.randrange(9 if depth < 5 else 7)
        if kind == 0:
            return self.text(["\U0001f600"])
        if kind == 1:
            return self.random.randrange(-(2**63), 2**64) >> self.random.randrange(64)
        if kind == 2:
            if not self.with_reals:
                return True
            return self.random.choice([self.random.random(), self.random.uniform(-1e300, 1e300), 1e-310, 0.1])
        if kind == 3:
            return self.random.random() < 0.5
        if kind == 4:
            seconds = self.random.randrange(86400 * 365 * 9000)
            return datetime.datetime(1, 1, 1) + datetime.timedelta(seconds=seconds)
        if kind == 5:
            return self.random.randbytes(self.random.randrange(200))
        if kind == 6:
            return self.random.randrange(-500, 500)
        if kind == 7:
            return [self.value(depth + 1) for _ in range(self.random.randrange(12))]
        return {self.text(): self.value(depth + 1) for _ in range(self.random.randrange(12))}


def made(number):
    return Maker(number, with_reals=number % 2 == 0).value()


def main(action, folder):
    folder = pathlib.Path(folder)
    for number in range(COUNT):
        value = made(number)
        xml = plistlib.dumps(value)
        if action == "make":
            (folder / f"{number}.xml").write_bytes(xml)
            (folder / f"{number}.binary").write_bytes(plistlib.dumps(value, fmt=plistlib.FMT_BINARY))
            continue
        own = (folder / f"{number}.own").read_bytes()
        if plistlib.loads(own) != value:
            sys.exit(f"{number}: another value")
        if number % 2 == 1 and own != xml:  # reals are written differently, the rest is not
            sys.exit(f"{number}: other bytes")


main(*sys.argv[1:])
