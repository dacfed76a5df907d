"""Carriages and wagons."""

from gear import axle_box, bogie, buffers
from svg import barrel, line, panel, path, polygon, rect, shade
from traction import window


def coach(c):
    body, roof, trim = c["body"], c.get("roof", "#8d9499"), c.get("trim")
    definitions = [panel("side", body), barrel("roof", roof)]
    parts = bogie(140, 64, 18) + bogie(500, 64, 18)
    parts += [rect(200, 252, 240, 12, "#3a3e42", 3), rect(44, 150, 552, 102, "url(#side)", 4),
              path("M40 154 Q44 128 84 126 H556 Q596 128 600 154 Z", "url(#roof)")]
    if trim:
        parts += [rect(44, 208, 552, 6, trim), rect(44, 158, 552, 4, trim)]
    for x in (52, 558):
        parts += [rect(x, 158, 30, 92, shade(body, 0.85), 3)] + window(x + 6, 166, 18, 34)
    for x in range(98, 530, 50):
        parts += window(x, 168, 40, 34)
    if c.get("class1"):
        parts.append(rect(90, 150, 200, 5, "#e8b21c"))
    parts += [rect(44, 246, 552, 6, shade(body, 0.6))] + buffers(44, 596, 254)
    return definitions, parts


def old_coach(c):
    """Two-axle carriage with open platforms."""
    body, roof = c["body"], c.get("roof", "#6e7276")
    definitions = [panel("side", body), barrel("roof", roof)]
    parts = axle_box(214, 21) + axle_box(426, 21)
    parts += [rect(120, 240, 400, 12, "#33373b"), rect(164, 152, 312, 88, "url(#side)", 2),
              path("M112 154 Q120 132 160 130 H480 Q520 132 528 154 Z", "url(#roof)")]
    parts += [line(x, 168, x, 238, shade(body, 0.75), 1.2) for x in range(172, 476, 12)]
    for x in range(180, 450, 56):
        parts += [rect(x - 2, 162, 40, 38, shade(body, 0.6), 2)] + window(x, 164, 36, 34, 1)
    for x in (122, 482):
        parts += [line(x, 154, x, 240, "#2b2e31", 3), line(x + 36, 154, x + 36, 240, "#2b2e31", 3),
                  line(x, 204, x + 36, 204, "#2b2e31", 3)]
        parts += [line(x + i, 204, x + i, 240, "#2b2e31", 1.6) for i in (9, 18, 27)]
    return definitions, parts + buffers(120, 520, 250)


def box(c):
    body, roof = c["body"], c.get("roof", "#777c80")
    definitions = [panel("side", body), barrel("roof", roof)]
    parts = axle_box(202, 21) + axle_box(438, 21)
    parts += [rect(112, 240, 416, 12, "#33373b"), rect(118, 140, 404, 100, "url(#side)", 2),
              path("M110 144 Q120 122 170 120 H470 Q520 122 530 144 Z", "url(#roof)")]
    parts += [line(x, 144, x, 238, shade(body, 0.72), 1.4) for x in range(130, 520, 14)]
    parts += [rect(264, 142, 112, 98, shade(body, 1.08), 2, stroke=shade(body, 0.6), stroke_width=3),
              line(264, 142, 376, 240, shade(body, 0.62), 4), rect(256, 136, 170, 5, "#4b5056")]
    parts += [rect(x, 152, 50, 20, shade(body, 0.62), 2) for x in (146, 446)]
    parts += [rect(140, 196, 66, 26, "#ece8dc", 1, fill_opacity=0.8)]
    return definitions, parts + buffers(112, 528, 250)


def tank_car(c):
    body = c["body"]
    definitions = [barrel("kettle", body)]
    parts = bogie(170, 60, 18) + bogie(470, 60, 18)
    parts += [rect(74, 238, 492, 12, "#33373b"), rect(92, 144, 456, 88, "url(#kettle)", 40)]
    parts += [polygon([(x - 16, 238), (x - 8, 218), (x + 8, 218), (x + 16, 238)], "#33373b") for x in (150, 320, 490)]
    parts += [rect(300, 130, 40, 18, shade(body, 0.8), 4), rect(220, 124, 200, 3, "#4b5056"),
              line(240, 124, 240, 146, "#4b5056", 2), line(400, 124, 400, 146, "#4b5056", 2)]
    parts += [line(356, 128, 356, 236, "#4b5056", 2.4), line(372, 128, 372, 236, "#4b5056", 2.4)]
    parts += [line(356, y, 372, y, "#4b5056", 2) for y in range(136, 236, 12)]
    if c.get("trim"):
        parts.append(rect(96, 182, 448, 12, c["trim"]))
    parts += [rect(120, 200, 54, 22, "#ece8dc", 2), polygon([(206, 198), (222, 211), (206, 224), (190, 211)], "#e8761c")]
    return definitions, parts + buffers(74, 566, 250)


def containers(c):
    colours = c["body"], c.get("trim", "#2f6db5")
    definitions = [panel("left", colours[0]), panel("right", colours[1])]
    parts = bogie(128, 60, 18) + bogie(512, 60, 18)
    parts += [path("M48 236 H592 V248 H470 L440 262 H200 L170 248 H48 Z", "#4b5056")]
    for x, fill, colour in ((62, "url(#left)", colours[0]), (326, "url(#right)", colours[1])):
        parts += [rect(x, 136, 252, 100, fill, 2)]
        parts += [line(x + i, 144, x + i, 230, shade(colour, 0.78), 3) for i in range(12, 250, 12)]
        parts += [rect(x, 136, 252, 7, shade(colour, 0.7)), rect(x, 229, 252, 7, shade(colour, 0.7)),
                  rect(x + 86, 168, 80, 30, "#f2f2ee", 2)]
        parts += [rect(x + 94, 178, 64, 4, colour), rect(x + 94, 186, 44, 4, colour)]
    return definitions, parts + buffers(48, 592, 248)


def open_wagon(c):
    body, load = c["body"], c.get("load", "#2a2622")
    definitions = [panel("side", body)]
    parts = axle_box(206, 21) + axle_box(434, 21)
    parts += [path("M140 178 q26 -34 64 -20 q34 -30 76 -10 q44 -26 84 2 q44 -20 68 4 q42 -10 68 24 z", load)]
    parts += [rect(116, 240, 408, 12, "#33373b"), rect(126, 174, 388, 66, "url(#side)", 2)]
    parts += [line(126, y, 514, y, shade(body, 0.7), 1.6) for y in (190, 206, 222)]
    parts += [rect(x, 170, 8, 72, shade(body, 0.75)) for x in (126, 190, 254, 316, 378, 442, 506)]
    return definitions, parts + buffers(116, 524, 250)


def crane(c):
    body = c["body"]
    definitions = [panel("side", body)]
    parts = bogie(176, 60, 18) + bogie(464, 60, 18)
    parts += [rect(84, 238, 472, 12, "#33373b"), rect(110, 226, 420, 12, "#e8b21c")]
    for i in range(110, 530, 24):
        parts.append(polygon([(i, 226), (i + 12, 226), (i + 4, 238), (i - 8 if i > 112 else i, 238)], "#24272a"))
    parts += [path("M372 226 V152 H470 Q490 152 490 172 V226 Z", "url(#side)")] + window(384, 164, 34, 32) + window(426, 164, 28, 32)
    parts += [polygon([(392, 156), (410, 146), (116, 76), (108, 88)], "#e8b21c", stroke="#8a6a08", stroke_width=1.4),
              path("M392 152 L366 122 L340 146 L312 110 L286 134 L258 98 L232 122 L204 86 L178 108 L150 76",
                   stroke="#8a6a08", stroke_width=2)]
    parts += [line(114, 84, 114, 180, "#24272a", 2), path("M114 180 v10 q0 10 -9 10 q-9 0 -7 -8", stroke="#24272a", stroke_width=5),
              line(440, 152, 118, 78, "#24272a", 1.6), rect(432, 136, 16, 18, "#3a3d40")]
    return definitions, parts + buffers(84, 556, 250)


SHAPES = {"schnellzugwagen": coach, "abteilwagen": old_coach, "gueterwagen": box,
          "kesselwagen": tank_car, "containerwagen": containers, "hochbordwagen": open_wagon,
          "kranwagen": crane}
