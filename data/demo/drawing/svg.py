"""The few drawing elements the vehicle pictures are made of. Units are pixels of the scene."""


def attributes(values):
    return "".join(f' {key.replace("_", "-")}="{value}"' for key, value in values.items())


def element(name, **values):
    return f"<{name}{attributes(values)}/>"


def rect(x, y, width, height, fill, r=0, **more):
    return element("rect", x=x, y=y, width=width, height=height, rx=r, fill=fill, **more)


def circle(x, y, r, fill, **more):
    return element("circle", cx=x, cy=y, r=r, fill=fill, **more)


def polygon(points, fill, **more):
    text = " ".join(f"{x},{y}" for x, y in points)
    return element("polygon", points=text, fill=fill, **more)


def path(d, fill="none", **more):
    return element("path", d=d, fill=fill, **more)


def line(x1, y1, x2, y2, stroke, width=2, **more):
    return element("line", x1=x1, y1=y1, x2=x2, y2=y2, stroke=stroke, stroke_width=width, **more)


def group(parts, transform=None):
    start = f'<g transform="{transform}">' if transform else "<g>"
    return start + "\n".join(parts) + "</g>"


def shade(colour, factor):
    """The colour #rrggbb darker (factor below 1) or lighter (above 1)."""
    channels = [int(colour[i:i + 2], 16) for i in (1, 3, 5)]
    if factor <= 1:
        mixed = [channel * factor for channel in channels]
    else:
        mixed = [channel + (255 - channel) * (factor - 1) for channel in channels]
    return "#" + "".join(f"{round(channel):02x}" for channel in mixed)


def barrel(name, colour):
    """A vertical gradient that makes a flat shape look round."""
    stops = ((0, 0.75), (0.25, 1.35), (0.55, 1.0), (1, 0.55))
    text = "".join(f'<stop offset="{at}" stop-color="{shade(colour, by)}"/>' for at, by in stops)
    return f'<linearGradient id="{name}" x1="0" y1="0" x2="0" y2="1">{text}</linearGradient>'


def panel(name, colour):
    """A gentle vertical gradient for flat sides."""
    stops = ((0, 1.18), (0.5, 1.0), (1, 0.82))
    text = "".join(f'<stop offset="{at}" stop-color="{shade(colour, by)}"/>' for at, by in stops)
    return f'<linearGradient id="{name}" x1="0" y1="0" x2="0" y2="1">{text}</linearGradient>'


def document(width, height, definitions, parts):
    return (f'<svg xmlns="http://www.w3.org/2000/svg" width="{width}" height="{height}" '
            f'viewBox="0 0 {width} {height}">\n<defs>{"".join(definitions)}</defs>\n'
            + "\n".join(parts) + "\n</svg>\n")
