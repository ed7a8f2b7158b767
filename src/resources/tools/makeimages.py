#!/usr/bin/env python3
"""Draws the plug-in's title-bar images and writes them as PNG files.

    python3 src/resources/tools/makeimages.py [OUTPUT_DIR]

OUTPUT_DIR defaults to src/resources/images. Every image is written at 1x and
as its "@2x" companion, drawn again at twice the size (not scaled up), so
both are sharp. The images are made for the dialog title colour #6C7079:

- close_normal.png  a white cross, slightly translucent;
- close_hover.png   the cross, fully white, on a light rounded square;
- close_sunken.png  the cross on a dark rounded square;
- logo.png          the suite's mark, a white "Z" on an orange rounded square,
                    40 x 40 so that it fills the title bar's height.

Only the standard library: the shapes are rasterised here with 8 x 8
supersampling, and the PNG files are written chunk by chunk, grey + alpha
where the image has no colour, with the smallest of the five row filters.
Output is deterministic, so re-running it without changes changes no file.
"""

import math
import os
import struct
import sys
import zlib

SUPERSAMPLING = 8


class Canvas:
    """Straight-alpha RGBA pixels, floats in 0..1, composited with "over"."""

    def __init__(self, width, height):
        self.width = width
        self.height = height
        self.pixels = [[(0.0, 0.0, 0.0, 0.0)] * width for _ in range(height)]

    def fill(self, inside, color):
        """Paints `color` (r, g, b, a) where inside(x, y) holds, with the
        covered share of every pixel as its opacity."""
        r, g, b, a = color
        step = 1.0 / SUPERSAMPLING
        for py in range(self.height):
            for px in range(self.width):
                hits = 0
                for sy in range(SUPERSAMPLING):
                    for sx in range(SUPERSAMPLING):
                        if inside(px + (sx + 0.5) * step, py + (sy + 0.5) * step):
                            hits += 1
                if hits:
                    self._over(px, py, (r, g, b, a * hits / SUPERSAMPLING ** 2))

    def _over(self, x, y, top):
        tr, tg, tb, ta = top
        br, bg, bb, ba = self.pixels[y][x]
        out = ta + ba * (1 - ta)
        if out == 0:
            return
        mix = lambda t, b: (t * ta + b * ba * (1 - ta)) / out
        self.pixels[y][x] = (mix(tr, br), mix(tg, bg), mix(tb, bb), out)


def segment(x0, y0, x1, y1, width):
    """A straight stroke with flat ends."""
    dx, dy = x1 - x0, y1 - y0
    length = math.hypot(dx, dy)
    ux, uy = dx / length, dy / length

    def inside(x, y):
        along = (x - x0) * ux + (y - y0) * uy
        across = -(x - x0) * uy + (y - y0) * ux
        return 0 <= along <= length and abs(across) <= width / 2

    return inside


def rounded_rect(left, top, right, bottom, radius):
    def inside(x, y):
        if not (left <= x <= right and top <= y <= bottom):
            return False
        cx = min(max(x, left + radius), right - radius)
        cy = min(max(y, top + radius), bottom - radius)
        return (x - cx) ** 2 + (y - cy) ** 2 <= radius ** 2

    return inside


def either(*shapes):
    return lambda x, y: any(shape(x, y) for shape in shapes)


WHITE = (1.0, 1.0, 1.0)
BLACK = (0.0, 0.0, 0.0)
ORANGE = (0xF0 / 255, 0x6A / 255, 0x35 / 255)


def close_image(scale, background):
    """20 x 20 at 1x: an 8-pixel cross in the middle, over an optional
    rounded square of (colour, opacity)."""
    side = 20 * scale
    canvas = Canvas(side, side)
    if background:
        color, alpha = background
        canvas.fill(rounded_rect(0, 0, side, side, 3 * scale), color + (alpha,))
    low, high, width = 6 * scale, 14 * scale, 1.5 * scale
    cross = either(segment(low, low, high, high, width), segment(low, high, high, low, width))
    canvas.fill(cross, WHITE + (1.0 if background else 0.9,))
    return canvas


def logo_image(scale):
    """40 x 40 at 1x: a 22-pixel orange rounded square, centred, with a
    white "Z" of three strokes."""
    side = 40 * scale
    canvas = Canvas(side, side)
    canvas.fill(rounded_rect(9 * scale, 9 * scale, 31 * scale, 31 * scale, 5 * scale),
                ORANGE + (1.0,))
    width = 2.5 * scale
    left, right, top, bottom = 14 * scale, 26 * scale, 15 * scale, 25 * scale
    zed = either(
        segment(left, top, right, top, width),
        segment(right - 0.6 * scale, top + width / 2, left + 0.6 * scale, bottom - width / 2,
                width),
        segment(left, bottom, right, bottom, width))
    canvas.fill(zed, WHITE + (1.0,))
    return canvas


def png_bytes(canvas):
    grey = all(r == g == b for row in canvas.pixels for r, g, b, _ in row)
    to8 = lambda v: max(0, min(255, int(round(v * 255))))
    rows = []
    for row in canvas.pixels:
        line = bytearray()
        for r, g, b, a in row:
            # Fully transparent pixels carry no colour; zero compresses best.
            if to8(a) == 0:
                r = g = b = 0.0
            line += bytes((to8(r), to8(a))) if grey else bytes((to8(r), to8(g), to8(b), to8(a)))
        rows.append(bytes(line))
    bpp = 2 if grey else 4

    def filtered(kind):
        out = bytearray()
        previous = bytes(len(rows[0]))
        for line in rows:
            out.append(kind)
            for i, value in enumerate(line):
                left = line[i - bpp] if i >= bpp else 0
                up = previous[i]
                corner = previous[i - bpp] if i >= bpp else 0
                if kind == 0:
                    predicted = 0
                elif kind == 1:
                    predicted = left
                elif kind == 2:
                    predicted = up
                elif kind == 3:
                    predicted = (left + up) // 2
                else:
                    p = left + up - corner
                    pa, pb, pc = abs(p - left), abs(p - up), abs(p - corner)
                    predicted = left if pa <= pb and pa <= pc else (up if pb <= pc else corner)
                out.append((value - predicted) & 0xFF)
            previous = line
        return zlib.compress(bytes(out), 9)

    data = min((filtered(kind) for kind in range(5)), key=len)

    def chunk(kind, payload):
        return (struct.pack(">I", len(payload)) + kind + payload +
                struct.pack(">I", zlib.crc32(kind + payload) & 0xFFFFFFFF))

    header = struct.pack(">IIBBBBB", canvas.width, canvas.height, 8, 4 if grey else 6, 0, 0, 0)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", data) +
            chunk(b"IEND", b""))


IMAGES = {
    "close_normal": lambda scale: close_image(scale, None),
    "close_hover": lambda scale: close_image(scale, (WHITE, 0.2)),
    "close_sunken": lambda scale: close_image(scale, (BLACK, 0.2)),
    "logo": logo_image,
}


def main():
    here = os.path.dirname(os.path.abspath(__file__))
    out_dir = sys.argv[1] if len(sys.argv) > 1 else os.path.join(here, "..", "images")
    os.makedirs(out_dir, exist_ok=True)
    for name, draw in IMAGES.items():
        for scale, suffix in ((1, ""), (2, "@2x")):
            path = os.path.join(out_dir, name + suffix + ".png")
            data = png_bytes(draw(scale))
            with open(path, "wb") as file:
                file.write(data)
            print("%-40s %5d bytes" % (os.path.relpath(path), len(data)))


if __name__ == "__main__":
    main()
