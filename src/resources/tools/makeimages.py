#!/usr/bin/env python3
"""Draws the plug-in's images and writes them as PNG files.

    python3 src/resources/tools/makeimages.py [OUTPUT_DIR]

OUTPUT_DIR defaults to src/resources, below which every image goes to the
folder of its resource path. Every image is written at 1x and as its "@2x"
companion, drawn again at twice the size (not scaled up), so both are sharp.

The title-bar images (images/), made for the dialog title colour #6C7079:

- close_normal.png  a white cross, slightly translucent;
- close_hover.png   the cross, fully white, on a light rounded square;
- close_sunken.png  the cross on a dark rounded square;
- logo.png          the suite's mark, a white "Z" on an orange rounded square,
                    40 x 40 so that it fills the title bar's height.

The account images of the user-centre button and its balloon:

- resource/zentodeskhive/defaultthumbnail.png
                    the avatar of a user without a picture: a white figure on
                    a grey-blue disc;
- nimbo/zento_plus.png
                    the avatar of a company account: "Z+" on a blue disc.
  Both are 32 x 32: the button draws them at 16 x 16 (scaled for the
  display), so even the 1x file has the pixels of a 200 % screen. They are
  discs because the button shows avatars round.
- resource/zentodeskhive/abnormalNetworkStatus.png
- resource/zentodeskhive/abnormalLogingStatus.png
                    the balloons (211 x 53) below the button: a white body
                    with a grey border and a pointer at its top-left towards
                    the button, and a sign left of where the text goes (the
                    text starts at x 45 with its baseline at y 41): an amber
                    warning triangle for the network, a red disc for the
                    login.

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


def but_not(shape, hole):
    return lambda x, y: shape(x, y) and not hole(x, y)


def disc(cx, cy, radius):
    return lambda x, y: (x - cx) ** 2 + (y - cy) ** 2 <= radius ** 2


def ellipse(cx, cy, rx, ry):
    return lambda x, y: ((x - cx) / rx) ** 2 + ((y - cy) / ry) ** 2 <= 1


def triangle(a, b, c):
    """The inside of a triangle, its corners in any order."""

    def side(p, q, x, y):
        return (q[0] - p[0]) * (y - p[1]) - (q[1] - p[1]) * (x - p[0])

    def inside(x, y):
        s1, s2, s3 = side(a, b, x, y), side(b, c, x, y), side(c, a, x, y)
        return (s1 >= 0 and s2 >= 0 and s3 >= 0) or (s1 <= 0 and s2 <= 0 and s3 <= 0)

    return inside


def rgb(value):
    return tuple(((value >> shift) & 0xFF) / 255 for shift in (16, 8, 0))


WHITE = (1.0, 1.0, 1.0)
BLACK = (0.0, 0.0, 0.0)
ORANGE = rgb(0xF06A35)
AVATAR_GREY = rgb(0x8D9BB0)
COMPANY_BLUE = rgb(0x2F6FED)
BALLOON_BORDER = rgb(0xC9CED6)
AMBER = rgb(0xF2A01B)
ALERT_RED = rgb(0xE0464B)


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


def default_thumbnail(scale):
    """32 x 32 at 1x: a white head and shoulders on a grey-blue disc."""
    side = 32 * scale
    canvas = Canvas(side, side)
    face = disc(16 * scale, 16 * scale, 16 * scale)
    canvas.fill(face, AVATAR_GREY + (1.0,))
    figure = either(disc(16 * scale, 12.5 * scale, 5.5 * scale),
                    ellipse(16 * scale, 29 * scale, 10 * scale, 9 * scale))
    canvas.fill(lambda x, y: face(x, y) and figure(x, y), WHITE + (1.0,))
    return canvas


def company_thumbnail(scale):
    """32 x 32 at 1x: a white "Z" and "+" on a blue disc."""
    side = 32 * scale
    canvas = Canvas(side, side)
    canvas.fill(disc(16 * scale, 16 * scale, 16 * scale), COMPANY_BLUE + (1.0,))
    width = 2.6 * scale
    left, right, top, bottom = 7.5 * scale, 18 * scale, 10 * scale, 22 * scale
    zed = either(
        segment(left, top, right, top, width),
        segment(right - 0.6 * scale, top + width / 2, left + 0.6 * scale, bottom - width / 2,
                width),
        segment(left, bottom, right, bottom, width))
    cx, cy, arm = 23.5 * scale, 16 * scale, 3.6 * scale
    plus = either(segment(cx - arm, cy, cx + arm, cy, 2.2 * scale),
                  segment(cx, cy - arm, cx, cy + arm, 2.2 * scale))
    canvas.fill(either(zed, plus), WHITE + (1.0,))
    return canvas


def balloon(scale, sign):
    """211 x 53 at 1x: the body from y 8 down, the pointer above it at
    x 14..30, and the sign centred at (24, 36.5) left of the text."""
    s = scale
    canvas = Canvas(211 * s, 53 * s)
    body = rounded_rect(0, 8 * s, 211 * s, 53 * s, 4 * s)
    pointer = triangle((13 * s, 9 * s), (22 * s, 0), (31 * s, 9 * s))
    inner_body = rounded_rect(1 * s, 9 * s, 210 * s, 52 * s, 3 * s)
    inner_pointer = triangle((15.2 * s, 10 * s), (22 * s, 1.8 * s), (28.8 * s, 10 * s))
    canvas.fill(either(body, pointer), BALLOON_BORDER + (1.0,))
    canvas.fill(either(inner_body, inner_pointer), WHITE + (1.0,))
    cx, cy = 24 * s, 36.5 * s
    if sign == "network":
        mark = triangle((cx - 8.5 * s, cy + 7 * s), (cx, cy - 8 * s), (cx + 8.5 * s, cy + 7 * s))
        colour = AMBER
        bar_top, bar_bottom, dot = cy - 3.5 * s, cy + 1.5 * s, cy + 4.2 * s
    else:
        mark = disc(cx, cy, 8 * s)
        colour = ALERT_RED
        bar_top, bar_bottom, dot = cy - 4.5 * s, cy + 1.2 * s, cy + 4 * s
    exclamation = either(segment(cx, bar_top, cx, bar_bottom, 2 * s), disc(cx, dot, 1.2 * s))
    canvas.fill(but_not(mark, exclamation), colour + (1.0,))
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
    "images/close_normal": lambda scale: close_image(scale, None),
    "images/close_hover": lambda scale: close_image(scale, (WHITE, 0.2)),
    "images/close_sunken": lambda scale: close_image(scale, (BLACK, 0.2)),
    "images/logo": logo_image,
    "resource/zentodeskhive/defaultthumbnail": default_thumbnail,
    "nimbo/zento_plus": company_thumbnail,
    "resource/zentodeskhive/abnormalNetworkStatus": lambda scale: balloon(scale, "network"),
    "resource/zentodeskhive/abnormalLogingStatus": lambda scale: balloon(scale, "login"),
}


def main():
    here = os.path.dirname(os.path.abspath(__file__))
    out_dir = sys.argv[1] if len(sys.argv) > 1 else os.path.join(here, "..")
    for name, draw in IMAGES.items():
        os.makedirs(os.path.dirname(os.path.join(out_dir, name)), exist_ok=True)
        for scale, suffix in ((1, ""), (2, "@2x")):
            path = os.path.join(out_dir, name + suffix + ".png")
            data = png_bytes(draw(scale))
            with open(path, "wb") as file:
                file.write(data)
            print("%-40s %5d bytes" % (os.path.relpath(path), len(data)))


if __name__ == "__main__":
    main()
