#!/usr/bin/env python3
"""Works out the sensor spacing in high precision and writes spacing_cases.inc.

A second implementation beside the program's own, from the meter's tables and Snell's law, in decimal
arithmetic of 60 digits: it shares neither code nor number format with the program.

    tests/calc/spacing_cases.py > tests/calc/spacing_cases.inc
"""

import sys
from decimal import ROUND_DOWN, Decimal, getcontext

getcontext().prec = 60

PIPES = [3000, 3141, 2307, 2260, 2604, 3080, 2505, 3000, 2307, 2307, 2644, 2307]
LININGS = [0, 2505, 3000, 1510, 1240, 3280, 2307]
FLUIDS = [1440, 1522, 1487, 1376, 1180, 1327, 904, 1230, 1668, 1338, 1497, 1122, 1325, 1530, 1250, 1390, 414]
# wedge velocity, wedge angle, run of the wedge, mount offset
SENSORS = (
    [(2500, 42, "5.92", "6.46")] * 4
    + [(2505, 42, "9.07", "27"), (2505, 42, "4.5", "13.5"), (2505, 42, "9.07", "27")]
    + [(2505, 42, "16.4", "16.4")] * 2
    + [(2500, 42, "5.58", "16.4"), (2500, 42, "5.58", "13.9"), (2830, 49, "9.2", "20.2")]
)
CROSSINGS = {0: 2, 1: 1, 2: 4, 3: 8}
ON_SCALE = (2, 3)
INCHES_PER_MM = Decimal("0.0393700787")
FEET_PER_METRE = Decimal("3.28083989")
# A result nearer than this to the step at which a digit is cut would test the noise of doubles.
MARGIN = Decimal("1e-9")


def arctan(x):
    """By halving the argument until the series runs quickly."""
    halvings = 0
    while abs(x) > Decimal("0.01"):
        x = x / (1 + (1 + x * x).sqrt())
        halvings += 1
    total, power, n = Decimal(0), x, 1
    while abs(power) > Decimal("1e-65"):
        total += power / n if n % 4 == 1 else -power / n
        power *= x * x
        n += 2
    return total * 2**halvings


PI = 16 * arctan(Decimal(1) / 5) - 4 * arctan(Decimal(1) / 239)


def sin(x):
    total, term, n = Decimal(0), x, 1
    while abs(term) > Decimal("1e-65"):
        total += term
        term = -term * x * x / ((n + 1) * (n + 2))
        n += 2
    return total


class Failure(Exception):
    pass


def tangent_of_refraction(velocity, wedge, angle):
    """tan(arcsin(s)) is s / sqrt(1 - s^2)."""
    s = velocity / wedge * sin(Decimal(angle) * PI / 180)
    if abs(s) >= 1:
        raise Failure
    return s / (1 - s * s).sqrt()


def number(text):
    return Decimal(text) if text else Decimal(0)


def grouped(digits):
    return f"{int(digits):,}"


def cut(value, places):
    scaled = value * 10**places
    whole = scaled.to_integral_value(ROUND_DOWN)
    if scaled != whole and min(scaled - whole, whole + 1 - scaled) < MARGIN:
        sys.exit(f"{value} is too near to a step: choose another case")
    return whole


def fixed(whole, places):
    digits = str(whole).rjust(places + 1, "0")
    return grouped(digits[:-places]) + "." + digits[-places:]


def plain(whole, places):
    text = str(whole.scaleb(-places).normalize().__format__("f"))
    return "0" if whole == 0 else text


def spacing(case):
    unit, sensor, pipe, lining, fluid, mount, d, tw, tl, vp, vl, vf = case
    length = (lambda t: number(t) / INCHES_PER_MM) if unit else number
    velocity = (lambda t: number(t) / FEET_PER_METRE) if unit else number
    wedge, angle, run, offset = SENSORS[sensor]
    wall, diameter = length(tw), length(d)
    lined = length(tl) if lining else Decimal(0)
    velocities = [
        (velocity(vp) if pipe == 12 else Decimal(PIPES[pipe]), wall),
        (velocity(vl) if lining == 7 else Decimal(LININGS[lining]), lined),
        (velocity(vf) if fluid == 17 else Decimal(FLUIDS[fluid]), diameter - 2 * (lined + wall)),
    ]
    runs = [tangent_of_refraction(v, wedge, angle) * t if v else Decimal(0) for v, t in velocities]
    total = 2 * (runs[0] + Decimal(run) + runs[1]) + CROSSINGS.get(mount, 0) * runs[2]
    distance = max(Decimal(0), total - 2 * Decimal(offset)) if mount in CROSSINGS else Decimal(0)
    if sensor in ON_SCALE:
        steps = cut(distance / 3, 0)
        if not unit:
            return str(steps * 3), str(steps)
        return plain(cut(steps * 3 * INCHES_PER_MM, 3), 3), str(steps)
    if not unit:
        return fixed(cut(distance, 2), 2), ""
    return fixed(cut(distance * INCHES_PER_MM, 3), 3), ""


def cases():
    """unit, sensor, pipe, lining, fluid, mount, D, Tw, Tl, pipe S.V., lining S.V., fluid S.V."""
    pipes = [("60.5", "3.8"), ("114.3", "4.5"), ("216.3", "5.8"), ("508", "9.52"), ("1016.4", "12.7")]
    inches = [("2.375", "0.154"), ("4.5", "0.237"), ("8.625", "0.322"), ("20", "0.375"), ("42", "0.5")]
    for unit, sizes in ((0, pipes), (1, inches)):
        for sensor in range(12):
            for mount in range(4):
                d, tw = sizes[(sensor + mount) % 5]
                yield unit, sensor, sensor, 0, sensor, mount, d, tw, "", "", "", ""
        for k in range(12):  # every pipe, lining and fluid
            d, tw = sizes[k % 5]
            tl = ("2.5", "0.098")[unit]
            yield unit, 4 + k % 8, k, k % 6 + 1, k + 5, k % 2, d, tw, tl, "", "", ""
    own = ("3700", "1000", "2500"), ("12140", "3280", "8203")
    low = ("1000", "3700", "300"), ("3280", "12140", "984")
    for unit in (0, 1):
        d, tw, tl = (("300", "8", "3"), ("12", "0.3", "0.12"))[unit]
        for sensor in (0, 3, 4, 11):  # own velocities at their limits
            for vp, vl, vf in (own[unit], low[unit]):
                yield unit, sensor, 12, 7, 17, sensor % 2, d, tw, tl, vp, vl, vf
    limits = (("6200", "100", "100"), ("6", "0.1", "0.01")), (("244.1", "3.938", "3.938"), ("0.2362", "0.0039", "0.0003"))
    for unit in (0, 1):
        for d, tw, tl in limits[unit]:
            for sensor in (2, 8):
                for mount in (0, 3):
                    yield unit, sensor, 1, 2, 0, mount, d, tw, tl, "", "", ""
    yield 0, 4, 0, 0, 0, 0, "100", "5", "", "", "", ""
    yield 0, 4, 0, 0, 0, 1, "20", "2", "", "", "", ""  # a large offset: 0
    yield 0, 4, 0, 0, 0, 0, "", "5", "", "", "", ""  # no diameter
    yield 0, 2, 0, 0, 0, 0, "", "", "", "", "", ""
    yield 1, 2, 0, 0, 0, 0, "", "", "", "", "", ""
    yield 0, 4, 0, 0, 0, 0, "100", "", "", "", "", ""  # no wall
    yield 0, 4, 0, 0, 3, 0, "100", "5", "77", "", "", ""  # lining thickness without a lining
    yield 0, 9, 12, 3, 17, 0, "100", "5", "2", "", "", ""  # own velocities left empty
    yield 0, 9, 0, 0, 0, 4, "100", "5", "", "", "", ""  # mounts that nobody knows
    yield 1, 9, 0, 0, 0, -1, "4", "0.2", "", "", "", ""
    yield 0, 7, 0, 0, 8, 3, "1016.4", "9.5", "", "", "", ""
    yield 0, 0, 12, 0, 17, 0, "100", "5", "", "3737", "", "1440"  # total reflection in the wall
    yield 0, 4, 0, 7, 0, 0, "100", "5", "2", "", "3744", ""  # in the lining
    yield 0, 11, 0, 0, 17, 0, "100", "5", "", "", "", "3750"  # in the fluid
    yield 1, 0, 12, 0, 17, 0, "4", "0.2", "", "12260", "", "4000"


def main():
    print("// unit, sensor, pipe, lining, fluid, mount, D, Tw, Tl, pipe, lining and fluid S.V., results 1 and 2.")
    print("// Written by spacing_cases.py.")
    for case in cases():
        plain_case = tuple(t.replace(",", "") if isinstance(t, str) else t for t in case)
        try:
            first, second = spacing(plain_case)
        except Failure:
            first, second = "total reflection", ""
        fields = [str(f) if isinstance(f, int) else f'"{f}"' for f in (*case, first, second)]
        print("{" + ", ".join(fields) + "},")


main()
