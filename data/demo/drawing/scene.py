"""Sky, hills and track behind a vehicle."""

from gear import RAIL
from svg import circle, element, line, path, polygon, rect

WIDTH, HEIGHT = 640, 360

SKIES = {
    "tag": ("#8fc3ea", "#e6f2fa", "#8fb57a", "#6f9a5d"),
    "abend": ("#4f5f94", "#f7c08a", "#6f7d5c", "#55664b"),
    "nebel": ("#b6c0c7", "#eceff0", "#9aa99a", "#7f917f"),
    "herbst": ("#9cbcd8", "#f3ecd9", "#b9954f", "#957a3e"),
    "winter": ("#a9c3da", "#f4f8fb", "#dde6ec", "#c4d0d8"),
}


def gradient(sky):
    top, low = SKIES[sky][:2]
    return (f'<linearGradient id="sky" x1="0" y1="0" x2="0" y2="1"><stop offset="0" '
            f'stop-color="{top}"/><stop offset="1" stop-color="{low}"/></linearGradient>')


def fir(x, y, size, colour):
    return [rect(x - 2, y - 4, 4, 8, "#5a4330")] + [
        polygon([(x - size * w, y - size * b), (x, y - size * (b + 0.8)), (x + size * w, y - size * b)],
                colour) for w, b in ((0.5, 0.1), (0.4, 0.5), (0.28, 0.9))]


def leafy(x, y, size, colour):
    return [rect(x - 2.5, y - size * 0.7, 5, size * 0.7, "#6b4d35"), circle(x, y - size, size * 0.5, colour),
            circle(x - size * 0.35, y - size * 0.8, size * 0.34, colour),
            circle(x + size * 0.35, y - size * 0.82, size * 0.36, colour)]


def track(near="#8d8378"):
    parts = [polygon([(0, RAIL + 8), (WIDTH, RAIL + 8), (WIDTH, RAIL + 34), (0, RAIL + 34)], near)]
    for i in range(0, WIDTH, 9):
        parts.append(circle(i + (i * 7) % 5, RAIL + 20 + (i * 13) % 11, 2.4,
                            "#776d63" if i % 2 else "#a2988c"))
    parts += [rect(x, RAIL + 7, 18, 8, "#5b4636", 1.5) for x in range(4, WIDTH, 32)]
    parts += [rect(0, RAIL, WIDTH, 3, "#c8cdd1"), rect(0, RAIL + 3, WIDTH, 5, "#6e5a4d")]
    return parts


def background(sky, catenary=False):
    _, _, far, near = SKIES[sky]
    parts = [rect(0, 0, WIDTH, HEIGHT, "url(#sky)")]
    if sky == "abend":
        parts.append(circle(520, 170, 30, "#ffe3b0"))
    else:
        for x, y, s in ((110, 62, 1.0), (470, 46, 1.25), (590, 98, 0.7)):
            parts += [element("ellipse", cx=x + dx * s, cy=y + dy * s, rx=rx * s, ry=ry * s,
                              fill="#ffffff", fill_opacity=0.75)
                      for dx, dy, rx, ry in ((0, 0, 40, 12), (-22, 6, 28, 9), (26, 5, 30, 9))]
    parts.append(path(f"M0 200 Q90 130 190 185 T380 168 T540 190 T640 160 V{RAIL + 10} H0 Z", far,
                      fill_opacity=0.55))
    parts.append(path(f"M0 236 Q120 206 250 232 T480 226 T640 238 V{RAIL + 10} H0 Z", near))
    tree = {"winter": "#8ba199", "herbst": "#b0662f", "abend": "#3c4b3b"}.get(sky, "#4c7a48")
    for x, size in ((36, 46), (64, 36), (596, 50), (622, 38)):
        parts += fir(x, 240, size, tree)
    for x, size in ((330, 30), (300, 22)):
        parts += leafy(x, 236, size, tree)
    parts.append(rect(0, RAIL + 30, WIDTH, HEIGHT - RAIL - 30, near))
    if catenary:
        parts += [line(0, 92, WIDTH, 92, "#4a4f55", 1.6), path("M0 70 Q160 92 320 70 T640 70",
                  stroke="#4a4f55", stroke_width=1.4)]
        parts += [line(x, 76 if x % 160 else 82, x, 92, "#4a4f55", 1) for x in range(40, 640, 80)]
        for x in (8, 628):
            parts += [rect(x - 3, 40, 6, RAIL - 34, "#5d656c"), line(x, 66, x + (40 if x < 320 else -40), 66, "#5d656c", 3)]
    return parts + track()
