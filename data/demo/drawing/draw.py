"""Draws the pictures of the demonstration's vehicles.

Call: draw.py PICTURES.txt TARGET_FOLDER

Each line of the list (name, shape, sky, colours and marks; tab-separated) becomes name.svg, a
scene of 640 x 360 pixels. The last column holds "key=value" words; a word without a value is a
mark of the shape.
"""

import pathlib
import sys

import scene
import steam
import traction
import trackside
import wagons
from svg import document

SHAPES = steam.SHAPES | traction.SHAPES | wagons.SHAPES | trackside.SHAPES


def options_of(text):
    options = {}
    for word in text.split():
        key, _, value = word.partition("=")
        options[key] = value or True
    return options


def draw(shape, sky, options):
    definitions, parts = SHAPES[shape](options)
    behind = scene.background(sky, catenary=bool(options.get("electric")))
    return document(scene.WIDTH, scene.HEIGHT, [scene.gradient(sky), *definitions], behind + parts)


def rows(path):
    for line in pathlib.Path(path).read_text("utf-8").splitlines():
        if line and not line.startswith("#"):
            yield line.split("\t")


def main(list_file, target):
    pathlib.Path(target).mkdir(parents=True, exist_ok=True)
    for name, shape, sky, options in rows(list_file):
        text = draw(shape, sky, options_of(options))
        pathlib.Path(target, f"{name}.svg").write_text(text, "utf-8")


if __name__ == "__main__":
    main(*sys.argv[1:])
