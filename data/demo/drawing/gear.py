"""What every vehicle stands on: wheels, rods, bogies, buffers."""

import math

from svg import circle, line, path, polygon, rect, shade

RAIL = 292  # top of the rail
STEEL = "#3b3f43"
DARK = "#24272a"


def spoked(x, r, colour, spokes=12):
    y = RAIL - r
    parts = [circle(x, y, r, DARK), circle(x, y, r - 3, colour), circle(x, y, r - 6.5, "#1c1e20")]
    for i in range(spokes):
        angle = 2 * math.pi * i / spokes
        parts.append(line(x, y, round(x + (r - 5) * math.cos(angle), 1),
                          round(y + (r - 5) * math.sin(angle), 1), colour, 2.2))
    parts += [circle(x, y, r * 0.24, colour), circle(x, y, r * 0.1, DARK)]
    return parts


def disc(x, r, colour=STEEL):
    y = RAIL - r
    return [circle(x, y, r, DARK), circle(x, y, r - 3, colour),
            circle(x, y, r * 0.45, shade(colour, 1.25)), circle(x, y, r * 0.2, DARK)]


def rods(xs, r, angle=35):
    """Coupling rod between the wheels at `xs`, all cranks at one angle."""
    dx = r * 0.5 * math.cos(math.radians(angle))
    dy = r * 0.5 * math.sin(math.radians(angle))
    y = RAIL - r + dy
    parts = [line(xs[0] + dx, y, xs[-1] + dx, y, "#8d959c", 6, stroke_linecap="round"),
             line(xs[0] + dx, y - 1, xs[-1] + dx, y - 1, "#c9d0d6", 2)]
    return parts + [circle(x + dx, y, 4.2, "#aab2b9") for x in xs]


def bogie(x, wheelbase=62, r=17, frame="#33373b"):
    """A two-axle bogie whose middle is at x."""
    left, right = x - wheelbase / 2, x + wheelbase / 2
    y = RAIL - r
    parts = [rect(x - 22, 244, 44, y - 238, "#2b2e31", 2)] + disc(left, r) + disc(right, r)
    parts.append(path(f"M{left - 24} {y - 6} H{right + 24} L{right + 18} {y + 5} "
                      f"H{x + 16} L{x + 8} {y + 11} H{x - 8} L{x - 16} {y + 5} H{left - 18} Z",
                      frame))
    for axle in (left, right):
        parts.append(rect(axle - 6, y - 8, 12, 13, shade(frame, 1.3), 2))
    for spring in (x - 6, x, x + 6):
        parts.append(line(spring, y - 12, spring, y + 6, shade(frame, 1.45), 3))
    return parts


def axle_box(x, r=19, frame="#33373b"):
    """A single sprung axle as under wagons."""
    y = RAIL - r
    parts = [polygon([(x - 18, 246), (x + 18, 246), (x + 9, y), (x - 9, y)], "#2b2e31")] + disc(x, r)
    parts.append(path(f"M{x - 26} {y - 12} Q{x} {y - 2} {x + 26} {y - 12}", stroke="#4b5056",
                      stroke_width=4))
    parts.append(rect(x - 6, y - 9, 12, 14, frame, 2))
    return parts


def buffers(left, right, y=250):
    """Buffer and coupling at both ends of a vehicle that spans left to right."""
    parts = []
    for x, side in ((left, -1), (right, 1)):
        start = min(x, x + side * 12)
        parts.append(rect(start, y - 4, 12, 8, "#2b2e31"))
        head = x + side * 12
        parts.append(rect(min(head, head + side * 4), y - 10, 4, 20, "#1d1f21", 1.5))
        parts.append(path(f"M{x} {y + 12} q{side * 8} 8 {side * 14} 2", stroke="#1d1f21",
                          stroke_width=3))
    return parts


def lantern(x, y, lit="#fff3b0"):
    return [circle(x, y, 6.4, "#2a2d30"), circle(x, y, 4.6, lit)]
