"""What stands beside the track: the function units of the demonstration."""

from gear import RAIL
from svg import circle, line, panel, path, polygon, rect


def semaphore(c):
    up = c.get("stop", True)
    parts = [rect(300, 276, 40, 18, "#9a9187", 2), rect(314, 78, 12, 204, "#e9ebec"),
             rect(314, 78, 4, 204, "#c3c9cd"), rect(306, 66, 28, 14, "#33414f", 3)]
    for y in range(100, 276, 40):
        parts.append(rect(314, y, 12, 20, "#c8372d"))
    arm = [rect(320, 84, 150, 22, "#f6f6f3", 3, stroke="#c8372d", stroke_width=5),
           circle(462, 95, 20, "#f6f6f3", stroke="#c8372d", stroke_width=6),
           circle(320, 95, 8, "#33414f")]
    angle = 0 if up else -42
    parts.append(f'<g transform="rotate({angle} 320 95)">{"".join(arm)}</g>')
    parts += [circle(296, 96, 11, "#24272a"), circle(296, 96, 8, "#ff6a5a" if up else "#4fd06a"),
              line(330, 106, 330, 276, "#6d757c", 2)]
    return [], parts


def light_signal(c):
    parts = [rect(298, 278, 44, 16, "#9a9187", 2), rect(315, 150, 10, 132, "#8d959c"),
             rect(280, 46, 80, 112, "#1d2124", 14, stroke="#5d656c", stroke_width=3)]
    for x, y, colour in ((302, 72, "#4fd06a"), (338, 72, "#3a2a18"), (302, 104, "#3c1412"),
                         (338, 104, "#3c1412"), (320, 136, "#ffd21f")):
        lit = colour in ("#4fd06a", "#ffd21f")
        if lit:
            parts.append(circle(x, y, 19, colour, fill_opacity=0.3))
        parts.append(circle(x, y, 11, colour))
    parts += [rect(300, 176, 40, 52, "#f2f2ee", 2, stroke="#24272a", stroke_width=2), rect(306, 184, 28, 36, "#c8372d")]
    return [], parts


def turnout(c):
    """Seen from above, on its own ground."""
    parts = [rect(0, 0, 640, 360, "#8d8378"), path("M0 0 H640 V40 Q420 90 200 96 T0 130 Z", "#7da568"),
             path("M0 0 H300 Q260 44 0 70 Z", "#6f9a5d")]
    parts += [circle((i * 53) % 640, 140 + (i * 37) % 216, 2.6, "#776d63" if i % 2 else "#a2988c") for i in range(240)]
    for i in range(20):
        x = 12 + i * 32
        spread = max(0, i - 5) * 7.2
        parts.append(rect(x, 226 - spread, 15, 96 + spread, "#5b4636", 2))
    for dy in (0, 48):
        parts.append(path(f"M0 {252 + dy} H640", stroke="#4a3d34", stroke_width=9))
        parts.append(path(f"M0 {250 + dy} H640", stroke="#c8cdd1", stroke_width=4))
        parts.append(path(f"M150 {252 + dy} C300 {248 + dy} 420 {200 + dy} 640 {128 + dy}", stroke="#4a3d34", stroke_width=9))
        parts.append(path(f"M150 {250 + dy} C300 {246 + dy} 420 {198 + dy} 640 {126 + dy}", stroke="#c8cdd1", stroke_width=4))
    parts += [rect(110, 322, 46, 22, "#33414f", 4), line(134, 322, 134, 306, "#33414f", 5), circle(112, 316, 13, "#24272a"),
              path("M104 316 L118 308 V324 Z", "#fff3b0")]
    return [], parts


def crossing(c):
    parts = [polygon([(236, 360), (404, 360), (372, RAIL - 6), (268, RAIL - 6)], "#6a6f74")]
    parts += [polygon([(316, 352), (324, 352), (322, 318), (318, 318)], "#f2f2ee")]
    for base, direction in ((196, 1), (444, -1)):
        parts += [rect(base - 7, 176, 14, 134, "#e9ebec"), rect(base - 12, 296, 24, 16, "#9a9187", 2)]
        ends = [base + direction * i for i in range(0, 120, 20)]
        for i, x in enumerate(ends):
            parts.append(rect(min(x, x + direction * 20), 236, 20, 10, "#c8372d" if i % 2 else "#f6f6f3"))
        parts += [f'<g transform="translate({base} 160)"><g transform="rotate(32)">{rect(-34, -5, 68, 10, "#f6f6f3", 1, stroke="#c8372d", stroke_width=3)}</g>'
                  f'<g transform="rotate(-32)">{rect(-34, -5, 68, 10, "#f6f6f3", 1, stroke="#c8372d", stroke_width=3)}</g></g>']
        parts += [rect(base - 14, 186, 28, 34, "#1d2124", 5), circle(base, 203, 9, "#ff5a4a")]
    return [], parts


def station(c):
    body = c["body"]
    definitions = [panel("wall", body)]
    lit = "#ffe9a0"
    parts = [rect(150, 150, 340, 140, "url(#wall)"), polygon([(130, 154), (190, 92), (450, 92), (510, 154)], "#8c4a36"),
             rect(262, 108, 116, 184, "url(#wall)"), polygon([(246, 112), (320, 52), (394, 112)], "#9c5640"),
             circle(320, 96, 14, "#f6f6f3", stroke="#33414f", stroke_width=3), line(320, 96, 320, 87, "#33414f", 2.4), line(320, 96, 327, 99, "#33414f", 2.4)]
    for x in (168, 214, 394, 440):
        parts += [rect(x, 176, 32, 46, lit, 2, stroke="#6b4d35", stroke_width=3), line(x + 16, 176, x + 16, 222, "#6b4d35", 2)]
    for x in (276, 332):
        parts += [rect(x, 128, 30, 40, lit, 2, stroke="#6b4d35", stroke_width=3)]
    parts += [rect(298, 206, 44, 84, "#6b4d35", 3), rect(303, 212, 34, 36, lit, 2), rect(120, 284, 400, 12, "#b5aca0")]
    for x in (96, 544):
        parts += [rect(x - 3, 170, 6, 124, "#33414f"), circle(x, 166, 30, "#ffe9a0", fill_opacity=0.3), circle(x, 166, 11, "#fff6d0")]
    return definitions, parts


SHAPES = {"formsignal": semaphore, "lichtsignal": light_signal, "weiche": turnout,
          "bahnuebergang": crossing, "bahnhof": station}
