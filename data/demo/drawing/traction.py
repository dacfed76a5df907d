"""Diesel and electric locomotives, railbuses and multiple units."""

from gear import bogie, buffers, lantern, rods, spoked, axle_box
from svg import barrel, circle, line, panel, path, polygon, rect, shade

GLASS = "#3a5568"
SHINE = "#9cc3da"


def window(x, y, width, height, r=3):
    return [rect(x, y, width, height, GLASS, r),
            polygon([(x + 2, y + height - 2), (x + 2, y + height * 0.5), (x + width * 0.55, y + 2),
                     (x + width * 0.85, y + 2)], SHINE, fill_opacity=0.55)]


def grille(x, y, width, height, colour):
    parts = [rect(x, y, width, height, shade(colour, 0.6), 2)]
    step = 5
    for i in range(1, int(height / step)):
        parts.append(line(x + 2, y + i * step, x + width - 2, y + i * step, shade(colour, 1.1), 1.6))
    return parts


def pantograph(x, y, raised):
    top = 92 if raised else y - 12
    return [rect(x - 26, y - 5, 52, 4, "#7b2f28"), rect(x - 20, y - 9, 6, 8, "#8a4038", 2),
            rect(x + 14, y - 9, 6, 8, "#8a4038", 2),
            path(f"M{x - 18} {y - 8} L{x + 22} {(top + y) / 2:.0f} L{x} {top + 3}", stroke="#3d4247",
                 stroke_width=3, stroke_linejoin="round"),
            rect(x - 20, top, 40, 3.4, "#3d4247", 1.5)]


def shunter(c):
    body, stripe = c["body"], c.get("trim", "#f2f2ee")
    definitions = [panel("side", body), panel("hood", shade(body, 0.96))]
    parts = [rect(138, 238, 364, 16, "#2f3235", 2)]
    parts += [path("M150 238 V176 Q150 164 162 164 H350 V238 Z", "url(#hood)"),
              path("M446 238 V186 H486 Q496 186 496 196 V238 Z", "url(#hood)")]
    parts += grille(164, 178, 40, 42, body) + [line(x, 176, x, 232, shade(body, 0.7), 2) for x in (222, 264, 306)]
    parts += [rect(236, 150, 18, 16, "#3a3d40", 2), rect(352, 116, 92, 122, "url(#side)", 3),
              path("M342 120 Q398 100 454 120 Z", "#565c61")]
    parts += window(360, 132, 32, 38) + window(402, 132, 34, 38)
    parts += [rect(150, 212, 346, 9, stripe)]
    for i in range(138, 500, 22):
        parts.append(polygon([(i, 254), (i + 11, 254), (i + 5, 262), (i - 6, 262)], "#e8b21c"))
    parts += [line(146, 236, 146, 196, "#d9dee2", 3), line(498, 236, 498, 204, "#d9dee2", 3)]
    xs = (214, 304, 394)
    for x in xs:
        parts += spoked(x, 26, "#4a4f54", 10)
    parts += rods(xs, 26) + buffers(138, 502) + lantern(158, 226) + lantern(490, 226)
    return definitions, parts


def diesel(c):
    body, roof, stripe = c["body"], c.get("roof", "#8d9499"), c.get("trim", "#f2f2ee")
    definitions = [panel("side", body)]
    outline = ("M52 244 V196 Q54 168 82 146 Q92 136 112 136 H528 Q548 136 558 146 Q586 168 588 196 V244 Z")
    parts = bogie(150, 76, 20) + bogie(490, 76, 20)
    parts += [rect(236, 254, 168, 18, "#2f3235", 4), path(outline, "url(#side)")]
    parts += [path("M92 142 Q100 134 116 134 H524 Q540 134 548 142 Z", roof),
              path("M52 214 H588 V226 H52 Z", stripe)]
    parts += [path("M62 186 Q66 170 86 154 L112 154 V186 Z", GLASS), path("M578 186 Q574 170 554 154 L528 154 V186 Z", GLASS)]
    parts += window(124, 156, 30, 30) + window(486, 156, 30, 30)
    for x in (206, 262, 318, 374, 430):
        parts += grille(x - 20, 158, 40, 24, body)
    parts += [rect(150, 124, 60, 11, shade(roof, 0.8), 3), rect(290, 122, 60, 13, shade(roof, 0.75), 3),
              rect(430, 124, 60, 11, shade(roof, 0.8), 3)]
    parts += [line(x, 190, x, 244, shade(body, 0.7), 2) for x in (166, 474)]
    parts += buffers(52, 588, 252) + lantern(64, 204) + lantern(576, 204)
    return definitions, parts


def electric(c):
    body, roof, stripe = c["body"], c.get("roof", "#9aa1a6"), c.get("trim")
    definitions = [panel("side", body)]
    parts = pantograph(170, 134, False) + pantograph(470, 134, True)
    parts += bogie(158, 82, 23) + bogie(482, 82, 23)
    parts += [rect(246, 256, 148, 16, "#2f3235", 4)]
    parts += [path("M52 246 V184 L74 146 Q78 140 88 140 H552 Q562 140 566 146 L588 184 V246 Z", "url(#side)"),
              path("M82 142 Q90 132 108 132 H532 Q550 132 558 142 Z", roof)]
    if stripe:
        parts.append(rect(52, 222, 536, 8, stripe))
    parts += [rect(52, 238, 536, 10, shade(body, 0.62))]
    parts += [path("M62 182 L80 152 H104 V182 Z", GLASS), path("M578 182 L560 152 H536 V182 Z", GLASS)]
    parts += window(116, 154, 26, 28) + window(498, 154, 26, 28)
    for x in (206, 262, 318, 374):
        parts += grille(x, 156, 44, 24, body)
    parts += [line(x, 188, x, 238, shade(body, 0.7), 2) for x in (150, 178, 462, 490)]
    parts += [rect(276, 120, 88, 14, shade(roof, 0.82), 4), line(196, 126, 444, 126, "#7b2f28", 2.4)]
    parts += buffers(52, 588, 252) + lantern(64, 208) + lantern(576, 208)
    return definitions, parts


def crocodile(c):
    body, roof, wheel = c["body"], c.get("roof", "#8f969b"), c.get("wheel", "#7c2a22")
    definitions = [panel("side", body), panel("nose", shade(body, 1.04))]
    parts = pantograph(282, 120, True) + pantograph(366, 120, False)
    parts += [rect(56, 246, 232, 12, "#33373b", 2), rect(352, 246, 232, 12, "#33373b", 2)]
    parts += [path("M64 246 V200 Q66 182 92 178 L226 168 V246 Z", "url(#nose)"),
              path("M576 246 V200 Q574 182 548 178 L414 168 V246 Z", "url(#nose)")]
    for x in (104, 140, 176, 434, 470, 506):
        parts += grille(x, 192, 26, 34, body)
    parts += [rect(224, 132, 192, 116, "url(#side)", 4), path("M214 136 Q320 104 426 136 Z", roof)]
    for x in (236, 282, 330, 376):
        parts += window(x, 146, 28, 34)
    parts += [line(x, 142, x, 246, shade(body, 0.7), 2) for x in (272, 368)]
    for xs in ((112, 170, 228), (412, 470, 528)):
        for x in xs:
            parts += spoked(x, 24, wheel, 10)
        parts += rods(xs, 24, 25)
    parts += buffers(56, 584, 252) + lantern(74, 212) + lantern(566, 212)
    return definitions, parts


def railbus(c):
    body, upper = c["body"], c.get("trim", "#f3ead2")
    definitions = [panel("side", body), panel("upper", upper)]
    parts = axle_box(186, 21) + axle_box(454, 21)
    parts += [rect(250, 248, 140, 20, "#2f3235", 4)]
    parts += [path("M92 250 V186 Q94 150 128 142 H512 Q546 150 548 186 V250 Z", "url(#side)"),
              path("M94 196 V184 Q97 152 130 145 H510 Q543 152 546 184 V196 Z", "url(#upper)"),
              path("M120 144 Q132 128 156 128 H484 Q508 128 520 144 Z", c.get("roof", "#a8adb1"))]
    parts += [path("M100 192 Q102 164 124 154 L138 154 V192 Z", GLASS), path("M540 192 Q538 164 516 154 L502 154 V192 Z", GLASS)]
    for x in range(186, 440, 44):
        parts += window(x, 154, 37, 36)
    for x in (148, 462):
        parts += [rect(x, 150, 30, 96, shade(body, 0.86), 3)] + window(x + 5, 156, 20, 34)
    parts += [rect(92, 200, 456, 5, shade(upper, 0.9))]
    parts += buffers(92, 548, 250) + lantern(104, 220) + lantern(536, 220)
    return definitions, parts


def unit(c):
    """End car of a modern multiple unit; its other end runs on out of the picture."""
    body, lower, door = c["body"], c.get("trim", "#c8372d"), c.get("door", "#3f6fb0")
    definitions = [panel("side", body)]
    parts = pantograph(430, 142, True) if c.get("electric") else [rect(330, 128, 150, 16, "#7f868b", 4)]
    parts += bogie(172, 70, 18) + bogie(560, 70, 18)
    parts += [path("M40 254 Q38 226 58 200 Q88 152 138 144 H640 V254 Z", "url(#side)"),
              path("M40 254 Q39 240 44 226 H640 V254 Z", lower),
              path("M134 145 Q142 136 160 136 H640 V145 Z", "#8b9297")]
    parts += [path("M66 198 Q92 158 136 152 L152 152 V198 Z", GLASS),
              polygon([(92, 192), (124, 158), (138, 158), (110, 192)], SHINE, fill_opacity=0.5)]
    parts += [rect(168, 156, 472, 42, "#2c3a46", 4)]
    for x in range(176, 640, 52):
        parts += window(x, 160, 46, 34)
    for x in (236, 452):
        parts += [rect(x, 150, 54, 98, door, 4), line(x + 27, 150, x + 27, 248, shade(door, 0.7), 2)]
        parts += window(x + 6, 158, 17, 40) + window(x + 31, 158, 17, 40)
    parts += [rect(190, 256, 320, 14, "#4a4f54", 4), path("M40 254 Q44 268 66 268 H120 V254 Z", "#3a3e42")]
    parts += [circle(58, 224, 5, "#fff3b0"), circle(50, 238, 4, "#ff8a7a")]
    return definitions, parts


SHAPES = {"rangierdiesel": shunter, "diesellok": diesel, "ellok": electric, "gelenkellok": crocodile,
          "schienenbus": railbus, "triebzug": unit}
