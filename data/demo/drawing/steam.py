"""Steam locomotives, chimney to the left."""

from gear import RAIL, buffers, disc, lantern, rods, spoked
from svg import barrel, circle, line, panel, path, polygon, rect, shade


def smoke(x, y, scale=1.0):
    return [circle(x + dx * scale, y - dy * scale, r * scale, "#ffffff", fill_opacity=opacity)
            for dx, dy, r, opacity in ((0, 8, 10, .85), (14, 22, 14, .75), (34, 36, 17, .6),
                                       (60, 46, 20, .45), (92, 52, 22, .3), (126, 56, 22, .18))]


def chimney(x, y, height, colour, brass):
    parts = [polygon([(x - 10, y), (x - 8, y - height), (x + 8, y - height), (x + 10, y)], colour),
             rect(x - 12, y - height - 5, 24, 6, shade(colour, 1.2), 2),
             rect(x - 13, y - 4, 26, 6, shade(colour, 0.8), 2)]
    if brass:
        parts.append(rect(x - 11, y - height - 8, 22, 4, "#d8b04a", 2))
    return parts


def dome(x, y, width, height, colour):
    return [path(f"M{x - width / 2} {y} V{y - height * 0.5} Q{x} {y - height * 1.35} "
                 f"{x + width / 2} {y - height * 0.5} V{y} Z", colour),
            path(f"M{x - width / 4} {y - height * 0.55} Q{x - 1} {y - height} {x + 2} {y - height * 0.9}",
                 stroke="#ffffff", stroke_opacity=0.45, stroke_width=3, stroke_linecap="round")]


def bands(xs, top, bottom, colour):
    return [line(x, top, x, bottom, colour, 2.4) for x in xs]


def cab(x, y, width, height, fill, roof, trim):
    parts = [rect(x, y, width, height, fill, 2),
             path(f"M{x - 10} {y + 2} Q{x + width / 2} {y - 18} {x + width + 12} {y + 2} Z", roof)]
    window = "#cfe6f2"
    parts += [rect(x + 9, y + 14, width * 0.34, height * 0.32, window, 3, stroke=trim, stroke_width=2)]
    parts += [rect(x + width * 0.56, y + 14, width * 0.3, height * 0.32, "#26333d", 3, stroke=trim,
                   stroke_width=2)]
    parts.append(rect(x + 7, y + height * 0.6, width - 14, height * 0.3, "none", 3, stroke=trim,
                      stroke_width=1.6))
    return parts


def tank(c):
    """Tank engine with three coupled axles."""
    body, frame, wheel, trim = c["body"], c.get("frame", "#2a2d30"), c.get("wheel", "#b3271e"), c.get("trim", "#d8b04a")
    definitions = [barrel("boiler", body), panel("side", body)]
    xs, r = (226, 306, 386), 30
    parts = smoke(168, 96)
    parts += [rect(122, 236, 396, 16, frame), rect(122, 249, 396, 5, wheel)]
    parts += [rect(128, 150, 240, 70, "url(#boiler)", 8), rect(124, 146, 62, 78, shade("#2b2d2f", 1.1), 6)]
    parts += bands((206, 246), 150, 220, trim)
    parts += chimney(158, 150, 42, "#2b2d2f", c.get("brass"))
    parts += dome(236, 152, 40, 34, shade(body, 1.08)) + dome(292, 152, 32, 22, shade(body, 0.9))
    parts += [rect(206, 172, 190, 66, "url(#side)", 4),
              rect(212, 178, 178, 54, "none", 4, stroke=trim, stroke_width=2)]
    parts += cab(392, 112, 92, 126, "url(#side)", "#3a3d40", trim)
    parts += [polygon([(484, 166), (516, 166), (516, 238), (484, 238)], shade(body, 0.92)),
              path("M486 166 q8 -14 16 -6 q8 -8 14 6 z", "#202122")]
    parts += [rect(136, 226, 62, 34, shade(body, 0.72), 5), rect(142, 236, 50, 14, "#9aa2a9", 3)]
    for x in xs:
        parts += spoked(x, r, wheel)
    parts += [line(192, 243, xs[1] + 12, RAIL - r + 10, "#c9d0d6", 5, stroke_linecap="round")] + rods(xs, r)
    parts += buffers(122, 518) + lantern(132, 228) + lantern(510, 158, "#ffb4a8")
    return definitions, parts


def express(c):
    """Tender locomotive with leading bogie and three large coupled axles."""
    body, frame, wheel, trim = c["body"], c.get("frame", "#2a2d30"), c.get("wheel", "#b3271e"), c.get("trim", "#d8b04a")
    definitions = [barrel("boiler", body), panel("side", body)]
    xs, r = (176, 246, 316), 33
    parts = smoke(96, 104, 0.9)
    parts += [rect(48, 240, 356, 12, frame), rect(48, 250, 356, 4, wheel)]
    parts += [rect(58, 156, 272, 62, "url(#boiler)", 7), rect(54, 152, 58, 70, "#2b2d2f", 6)]
    parts += bands((150, 206, 262), 156, 218, shade(body, 1.35))
    parts += chimney(86, 156, 30, "#2b2d2f", c.get("brass"))
    parts += dome(172, 158, 42, 26, shade(body, 1.05)) + dome(230, 158, 34, 18, shade(body, 0.9))
    if c.get("deflectors"):
        parts += [polygon([(58, 150), (118, 150), (124, 216), (64, 216)], shade("#2b2d2f", 1.18)),
                  line(66, 164, 118, 164, "#5a5f64", 2)]
    parts += [rect(48, 222, 300, 8, shade(frame, 1.2))]
    parts += cab(326, 128, 74, 110, "url(#side)", "#3a3d40", trim)
    parts += [rect(108, 232, 52, 30, shade(body, 0.7), 5), rect(113, 241, 42, 11, "#9aa2a9", 3)]
    for x in (80, 124):
        parts += spoked(x, 15, wheel, 8)
    for x in xs:
        parts += spoked(x, r, wheel, 14)
    parts += disc(374, 18, wheel)
    parts += [line(154, 247, xs[1] + 13, RAIL - r + 10, "#c9d0d6", 5, stroke_linecap="round")] + rods(xs, r)
    # tender
    parts += [polygon([(414, 166), (590, 166), (590, 240), (414, 240)], "url(#side)"),
              rect(420, 174, 164, 58, "none", 3, stroke=trim, stroke_width=2),
              path("M420 166 q14 -22 34 -12 q20 -18 42 -4 q24 -14 40 2 q14 -6 20 14 z", "#202122"),
              rect(408, 240, 188, 12, frame), rect(400, 226, 16, 10, "#3a3d40")]
    for x in (438, 486, 534, 572):
        parts += disc(x, 18, shade(wheel, 0.85))
    parts += [rect(420, 262, 168, 7, "#3b3f43", 2)]
    parts += buffers(48, 594) + lantern(56, 232) + lantern(584, 158, "#ffb4a8")
    return definitions, parts


SHAPES = {"dampf_tender": tank, "dampf_schnell": express}
