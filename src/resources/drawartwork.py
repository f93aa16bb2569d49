#!/usr/bin/env python3
"""Draws the viewer's artwork as SVG files into images/ and lists them in kavro_images.qrc.

The SVG files are checked in; run this again after changing a drawing here. One palette and one
stroke width for every glyph keep the set consistent. Glyph coordinates sit on whole pixels
(2 px strokes) so the images stay crisp at 1x and 2x.
"""

import math
import os
import sys
import tempfile

HERE = os.path.dirname(os.path.abspath(__file__))
IMAGES = os.path.join(HERE, "images")

# Palette: dark and quiet, so the video stays the brightest thing in the window.
GLYPH = "#aeb5bd"
GLYPH_HOVER = "#e8ecef"
ACCENT = "#6cc0e5"
DIM = "#5b636c"
FRAME_FILL = "#0c0e10"
FRAME_LINE = "#272c32"
LOGO = "#39414a"
AMBER = "#e3a33a"
TAIL_RED = "#d9534f"
HEAD_WHITE = "#f1e6b8"
STROKE = 2

# Per state: glyph colour and the soft disc behind the glyph (colour, opacity).
STATES = {
    "n": (GLYPH, None),
    "h": (GLYPH_HOVER, ("#ffffff", 0.08)),
    "p": (ACCENT, (ACCENT, 0.16)),
}


def svg(width, height, body):
    return (
        f'<svg xmlns="http://www.w3.org/2000/svg" width="{width}" height="{height}" '
        f'viewBox="0 0 {width} {height}">\n{body}</svg>\n'
    )


def stroked(colour, paths, width=STROKE):
    inner = "".join(f'  <path d="{d}"/>\n' for d in paths)
    return (
        f' <g fill="none" stroke="{colour}" stroke-width="{width}" '
        f'stroke-linecap="round" stroke-linejoin="round">\n{inner} </g>\n'
    )


def point(cx, cy, r, degrees):
    a = math.radians(degrees)
    return cx + r * math.cos(a), cy + r * math.sin(a)


def fmt(v):
    return f"{v:.2f}".rstrip("0").rstrip(".")


def arc(cx, cy, r, start, end, large=0):
    """Clockwise arc on screen (y down) from angle start to end, in degrees."""
    x0, y0 = point(cx, cy, r, start)
    x1, y1 = point(cx, cy, r, end)
    return f"M{fmt(x0)} {fmt(y0)} A{r} {r} 0 {large} 1 {fmt(x1)} {fmt(y1)}"


def mirrored(paths, width):
    """The same drawing flipped left to right inside an image of the given width."""
    return f' <g transform="translate({width} 0) scale(-1 1)">\n{paths} </g>\n'


# ---------------------------------------------------------------- control bar glyphs (28 x 28)


def digits_ten(colour):
    # "10" in 1.5 px strokes: the one place the glyphs need finer lines than 2 px.
    return stroked(colour, ["M11 12.5 L12.5 11.5 V18.5", "M15.5 11.5 H17.5 V18.5 H15.5 Z"], 1.5)


def jump_arrow(colour):
    # Nearly full circle running clockwise, its arrow head at the top.
    return stroked(colour, [arc(14, 15, 9, -30, 270, 1), "M13 2.5 L16 6 L13 9.5"])


def glyph_jump_forward(colour):
    return jump_arrow(colour) + digits_ten(colour)


def glyph_jump_backward(colour):
    return mirrored(jump_arrow(colour), 28) + digits_ten(colour)


def gauge(colour, needle_degrees):
    nx, ny = point(14, 18, 6, needle_degrees)
    return stroked(colour, [arc(14, 18, 10, 180, 360), f"M14 18 L{fmt(nx)} {fmt(ny)}"]) + (
        f' <circle cx="14" cy="18" r="2" fill="{colour}"/>\n'
    )


def glyph_speed_down(colour):
    return gauge(colour, -140)


def glyph_speed_up(colour):
    return gauge(colour, -40)


def magnifier(colour, plus):
    marks = ["M9 12 H15"] + (["M12 9 V15"] if plus else [])
    return stroked(colour, ["M16.6 16.6 L23 23"] + marks) + (
        f' <circle cx="12" cy="12" r="7" fill="none" stroke="{colour}" stroke-width="{STROKE}"/>\n'
    )


def glyph_size_down(colour):
    return magnifier(colour, False)


def glyph_size_up(colour):
    return magnifier(colour, True)


def speaker(colour, x=0):
    body = f"M{4 + x} 11 H{8 + x} L{13 + x} 7 V21 L{8 + x} 17 H{4 + x} Z"
    return (
        f' <path d="{body}" fill="{colour}" stroke="{colour}" stroke-width="{STROKE}" '
        'stroke-linejoin="round"/>\n'
    )


def glyph_volume_down(colour):
    return speaker(colour) + stroked(colour, [arc(13, 14, 5, -45, 45)])


def glyph_volume_up(colour):
    return speaker(colour) + stroked(colour, [arc(13, 14, 5, -45, 45), arc(13, 14, 10, -45, 45)])


def small_speaker(colour):
    body = "M3 12 H6 L10 9 V19 L6 16 H3 Z"
    return (
        f' <path d="{body}" fill="{colour}" stroke="{colour}" stroke-width="1.5" '
        'stroke-linejoin="round"/>\n'
    )


def glyph_audio_front(colour):
    return small_speaker(colour) + stroked(colour, ["M23 8 H16 V20 M16 14 H21"])


def glyph_audio_rear(colour):
    return small_speaker(colour) + stroked(
        colour, ["M16 20 V8 H20 A3 3 0 0 1 20 14 H16 M19.5 14 L23 20"]
    )


def glyph_swap(colour):
    return stroked(
        colour, ["M5 10 H22", "M18 6 L22 10 L18 14", "M23 18 H6", "M10 14 L6 18 L10 22"]
    )


def glyph_capture(colour):
    return stroked(
        colour,
        [
            "M4 12 A3 3 0 0 1 7 9 H10 L12 6 H16 L18 9 H21 A3 3 0 0 1 24 12 V20 "
            "A2 2 0 0 1 22 22 H6 A2 2 0 0 1 4 20 Z"
        ],
    ) + (f' <circle cx="14" cy="15" r="4" fill="none" stroke="{colour}" stroke-width="{STROKE}"/>\n')


def glyph_print(colour):
    return stroked(
        colour,
        [
            "M8 10 V4 H20 V10",
            "M8 20 H6 A2 2 0 0 1 4 18 V12 A2 2 0 0 1 6 10 H22 A2 2 0 0 1 24 12 V18 "
            "A2 2 0 0 1 22 20 H20",
            "M8 16 H20 V24 H8 Z",
        ],
    ) + f' <circle cx="20" cy="13" r="1" fill="{colour}"/>\n'


def glyph_fullscreen(colour):
    return stroked(colour, ["M4 10 V4 H10", "M18 4 H24 V10", "M24 18 V24 H18", "M10 24 H4 V18"])


def glyph_fullscreen_exit(colour):
    return stroked(colour, ["M10 4 V10 H4", "M24 10 H18 V4", "M18 24 V18 H24", "M4 18 H10 V24"])


def glyph_open_folder(colour):
    return stroked(
        colour,
        [
            "M4 21 V7 A1 1 0 0 1 5 6 H11 L13 8 H21 A1 1 0 0 1 22 9 V11",
            "M4 21 L7.5 12 H25 L21.5 21 Z",
        ],
    )


CONTROL_GLYPHS = {
    "jump_backward": glyph_jump_backward,
    "jump_forward": glyph_jump_forward,
    "speed_down": glyph_speed_down,
    "speed_up": glyph_speed_up,
    "size_down": glyph_size_down,
    "size_up": glyph_size_up,
    "volume_down": glyph_volume_down,
    "volume_up": glyph_volume_up,
    "audio_front": glyph_audio_front,
    "audio_rear": glyph_audio_rear,
    "swap": glyph_swap,
    "capture": glyph_capture,
    "print": glyph_print,
    "fullscreen": glyph_fullscreen,
    "fullscreen_exit": glyph_fullscreen_exit,
    "open_folder": glyph_open_folder,
}


def state_disc(state, cx, cy, r):
    disc = STATES[state][1]
    if disc is None:
        return ""
    return f' <circle cx="{cx}" cy="{cy}" r="{r}" fill="{disc[0]}" fill-opacity="{disc[1]}"/>\n'


def control_icons(out):
    for name, glyph in CONTROL_GLYPHS.items():
        for state, (colour, _) in STATES.items():
            out[f"{name}_{state}"] = svg(28, 28, state_disc(state, 14, 14, 14) + glyph(colour))


# ---------------------------------------------------------------- play and pause (40 x 40)


def play_pause(out):
    ring = {"n": DIM, "h": GLYPH, "p": ACCENT}
    glyph = {"n": "#d5dade", "h": "#ffffff", "p": ACCENT}
    for state in STATES:
        base = state_disc(state, 20, 20, 18) + (
            f' <circle cx="20" cy="20" r="18" fill="none" stroke="{ring[state]}" '
            f'stroke-width="{STROKE}"/>\n'
        )
        colour = glyph[state]
        out[f"icon_play_{state}"] = svg(
            40,
            40,
            base + f' <path d="M16 13 L27 20 L16 27 Z" fill="{colour}" stroke="{colour}" '
            f'stroke-width="{STROKE}" stroke-linejoin="round"/>\n',
        )
        out[f"icon_pause_{state}"] = svg(
            40,
            40,
            base + f' <rect x="14" y="12" width="4" height="16" rx="1" fill="{colour}"/>\n'
            f' <rect x="22" y="12" width="4" height="16" rx="1" fill="{colour}"/>\n',
        )


# ---------------------------------------------------------------- side buttons (44 x 28)


def side_buttons(out):
    def pill(selected):
        if not selected:
            return ""
        return (
            f' <rect x="1" y="1" width="42" height="26" rx="7" fill="{ACCENT}" '
            f'fill-opacity="0.16" stroke="{ACCENT}" stroke-opacity="0.45" stroke-width="1"/>\n'
        )

    for state, selected in (("n", False), ("p", True)):
        colour = ACCENT if selected else GLYPH
        bullets = "".join(
            f' <circle cx="15" cy="{y}" r="1.5" fill="{colour}"/>\n' for y in (9, 14, 19)
        )
        out[f"record_{state}"] = svg(
            44, 28, pill(selected) + bullets + stroked(colour, ["M19 9 H30", "M19 14 H30", "M19 19 H30"])
        )
        out[f"information_{state}"] = svg(
            44,
            28,
            pill(selected)
            + stroked(colour, ["M22 23 C22 23 16 17 16 12 A6 6 0 0 1 28 12 C28 17 22 23 22 23 Z"])
            + f' <circle cx="22" cy="12" r="2" fill="{colour}"/>\n',
        )


# ---------------------------------------------------------------- recording modes (32 x 18)

CAR_BODY = "#8d959e"
CAR_DARK = "#2e343a"
CAR_WHEEL = "#5a6168"


def car(rear):
    lamp = TAIL_RED if rear else HEAD_WHITE
    # Cabin, window, body, wheels, then the lamps that tell front from rear.
    parts = [
        f' <path d="M14 8 L16 3.5 H26 L28 8 Z" fill="{CAR_BODY}"/>\n',
        f' <path d="M15.6 7.2 L17 4.5 H25 L26.4 7.2 Z" fill="{CAR_DARK}"/>\n',
        f' <rect x="12" y="14" width="4" height="2.5" rx="1" fill="{CAR_WHEEL}"/>\n',
        f' <rect x="26" y="14" width="4" height="2.5" rx="1" fill="{CAR_WHEEL}"/>\n',
        f' <rect x="11" y="8" width="20" height="7" rx="2" fill="{CAR_BODY}"/>\n',
    ]
    if rear:
        parts.append(f' <rect x="12.5" y="9.5" width="4" height="2" rx="0.8" fill="{lamp}"/>\n')
        parts.append(f' <rect x="25.5" y="9.5" width="4" height="2" rx="0.8" fill="{lamp}"/>\n')
        parts.append(f' <rect x="18.5" y="11" width="5" height="2.5" rx="0.5" fill="{CAR_DARK}"/>\n')
    else:
        parts.append(f' <circle cx="14.5" cy="11" r="1.6" fill="{lamp}"/>\n')
        parts.append(f' <circle cx="27.5" cy="11" r="1.6" fill="{lamp}"/>\n')
        parts.append(f' <rect x="18" y="10.5" width="6" height="1.5" rx="0.5" fill="{CAR_DARK}"/>\n')
    return "".join(parts)


def mode_mark(mode):
    # Whole-pixel rectangles: at list-row size anything finer turns to blur.
    if mode == "motion":
        return "".join(
            f' <rect x="{x}" y="{y}" width="{8 - x}" height="1" fill="{ACCENT}"/>\n'
            for x, y in ((4, 6), (1, 9), (4, 12))
        )
    if mode == "event":
        return (
            f' <path d="M4.5 3 L9 13 H0 Z" fill="{AMBER}" stroke="{AMBER}" stroke-width="1" '
            'stroke-linejoin="round"/>\n'
            f' <rect x="4" y="6" width="1" height="4" fill="{CAR_DARK}"/>\n'
            f' <rect x="4" y="11" width="1" height="1" fill="{CAR_DARK}"/>\n'
        )
    return ""  # always-on recording is the plain case


def mode_pictures(out):
    for direction in ("front", "rear"):
        for mode in ("alwa", "motion", "event"):
            out[f"car_{direction}_{mode}"] = svg(32, 18, mode_mark(mode) + car(direction == "rear"))


# ---------------------------------------------------------------- video backgrounds

# Monoline capitals on a box one unit wide per 0.7 of the height, y down, for the logo words.
LETTERS = {
    "F": ["M0 1 V0 H0.7", "M0 0.5 H0.56"],
    "R": ["M0 1 V0 H0.42 A0.25 0.25 0 0 1 0.42 0.5 H0", "M0.36 0.5 L0.7 1"],
    "O": None,  # drawn as a rounded rectangle
    "N": ["M0 1 V0 L0.7 1 V0"],
    "T": ["M0 0 H0.7", "M0.35 0 V1"],
    "E": ["M0.7 0 H0 V1 H0.7", "M0 0.5 H0.56"],
    "A": ["M0 1 L0.35 0 L0.7 1", "M0.14 0.62 H0.56"],
}


def scaled_path(d, x, y, h):
    out = []
    tokens = d.replace("M", " M ").replace("L", " L ").replace("H", " H ").replace("V", " V ")
    tokens = tokens.replace("A", " A ").split()
    command, index = None, 0
    for token in tokens:
        if token.isalpha():
            command, index = token, 0
            out.append(token)
            continue
        v = float(token)
        if command == "H":
            v = x + v * h
        elif command == "V":
            v = y + v * h
        elif command == "A":
            # rx ry rotation large sweep x y: radii scale, flags stay, the end point moves.
            v = [v * h, v * h, v, v, v, x + v * h, y + v * h][index % 7]
            index += 1
        else:
            v = (x if index % 2 == 0 else y) + v * h
            index += 1
        out.append(fmt(v))
    return " ".join(out)


def word(text, centre_x, top, height, colour, width):
    advance = 0.7 * height + 0.42 * height
    left = centre_x - (advance * len(text) - 0.42 * height) / 2
    parts = []
    shapes = []
    for i, letter in enumerate(text):
        x = left + i * advance
        if LETTERS[letter] is None:
            shapes.append(
                f' <rect x="{fmt(x)}" y="{fmt(top)}" width="{fmt(0.7 * height)}" '
                f'height="{fmt(height)}" rx="{fmt(0.35 * height)}" fill="none" '
                f'stroke="{colour}" stroke-width="{width}"/>\n'
            )
            continue
        parts += [scaled_path(d, x, top, height) for d in LETTERS[letter]]
    return stroked(colour, parts, width) + "".join(shapes)


def camera_mark(cx, cy, scale, colour, width):
    s = scale

    def p(x, y):
        return f"{fmt(cx + x * s)} {fmt(cy + y * s)}"

    body = (
        f"M{p(-28, -12)} A{fmt(5 * s)} {fmt(5 * s)} 0 0 1 {p(-23, -17)} H{fmt(cx - 9 * s)} "
        f"L{p(-5, -23)} H{fmt(cx + 5 * s)} L{p(9, -17)} H{fmt(cx + 23 * s)} "
        f"A{fmt(5 * s)} {fmt(5 * s)} 0 0 1 {p(28, -12)} V{fmt(cy + 13 * s)} "
        f"A{fmt(5 * s)} {fmt(5 * s)} 0 0 1 {p(23, 18)} H{fmt(cx - 23 * s)} "
        f"A{fmt(5 * s)} {fmt(5 * s)} 0 0 1 {p(-28, 13)} Z"
    )
    return stroked(colour, [body], width) + (
        f' <circle cx="{fmt(cx)}" cy="{fmt(cy)}" r="{fmt(10 * s)}" fill="none" '
        f'stroke="{colour}" stroke-width="{width}"/>\n'
    )


def logo(text, width, height, scale, stroke):
    cy = height * 0.36
    return svg(
        width,
        height,
        camera_mark(width / 2, cy, scale, LOGO, stroke)
        + word(text, width / 2, cy + 30 * scale, 16 * scale, LOGO, stroke),
    )


def nine_parts(out, name, corner, radius):
    c, r = corner, radius
    o = 0.5  # the 1 px frame line sits on pixel centres
    fill, line = FRAME_FILL, FRAME_LINE
    # Top left corner: the rounded frame line with the fill inside it; the others are mirrors.
    shape = (
        f' <path d="M{o} {c} V{r + o} A{r} {r} 0 0 1 {r + o} {o} H{c} V{c} Z" fill="{fill}"/>\n'
        f' <path d="M{o} {c} V{r + o} A{r} {r} 0 0 1 {r + o} {o} H{c}" fill="none" '
        f'stroke="{line}" stroke-width="1"/>\n'
    )
    flips = {
        "top_left_corner": "",
        "top_right_corner": f"translate({c} 0) scale(-1 1)",
        "bottom_left_corner": f"translate(0 {c}) scale(1 -1)",
        "bottom_right_corner": f"translate({c} {c}) scale(-1 -1)",
    }
    for part, transform in flips.items():
        body = f' <g transform="{transform}">\n{shape} </g>\n' if transform else shape
        out[f"{name}_{part}"] = svg(c, c, body)
    edge = f' <rect width="{c}" height="{c}" fill="{fill}"/>\n'
    lines = {
        "top_edge_fill": f"M0 {o} H{c}",
        "bottom_edge_fill": f"M0 {c - o} H{c}",
        "left_edge_fill": f"M{o} 0 V{c}",
        "right_edge_fill": f"M{c - o} 0 V{c}",
    }
    for part, d in lines.items():
        out[f"{name}_{part}"] = svg(
            c, c, edge + f' <path d="{d}" stroke="{line}" stroke-width="1"/>\n'
        )
    out[f"{name}_center_fill"] = svg(c, c, edge)


def video_backgrounds(out):
    nine_parts(out, "v1", 16, 8)
    nine_parts(out, "v2", 12, 6)
    for channel in ("front", "rear"):
        out[f"v1_{channel}_logo"] = logo(channel.upper(), 160, 110, 1.0, 3)
        out[f"v2_{channel}_logo"] = logo(channel.upper(), 96, 66, 0.6, 2)


# ---------------------------------------------------------------- bars and the application icon


def bottom_background(out):
    # Uniform across its width, so one image serves as left cap, middle and right cap.
    out["bottom-background"] = svg(
        12,
        36,
        ' <defs><linearGradient id="g" x1="0" y1="0" x2="0" y2="1">'
        '<stop offset="0" stop-color="#1d2024"/><stop offset="1" stop-color="#111316"/>'
        "</linearGradient></defs>\n"
        ' <rect width="12" height="36" fill="url(#g)"/>\n'
        f' <path d="M0 0.5 H12" stroke="{FRAME_LINE}" stroke-width="1"/>\n',
    )


def app_icon(out):
    out["app_icon"] = svg(
        256,
        256,
        ' <defs><linearGradient id="bg" x1="0" y1="0" x2="0" y2="1">'
        '<stop offset="0" stop-color="#262b31"/><stop offset="1" stop-color="#101214"/>'
        "</linearGradient></defs>\n"
        ' <rect x="8" y="8" width="240" height="240" rx="52" fill="url(#bg)"/>\n'
        ' <rect x="8.5" y="8.5" width="239" height="239" rx="51.5" fill="none" '
        'stroke="#3a424b" stroke-width="1"/>\n'
        ' <rect x="84" y="36" width="88" height="30" rx="10" fill="#2f353c"/>\n'
        ' <circle cx="128" cy="142" r="76" fill="#0a0b0d" stroke="#3a424b" stroke-width="10"/>\n'
        f' <circle cx="128" cy="142" r="46" fill="#0f1a20" stroke="{ACCENT}" stroke-width="10"/>\n'
        ' <circle cx="128" cy="142" r="20" fill="#050607"/>\n'
        ' <circle cx="110" cy="124" r="9" fill="#ffffff" fill-opacity="0.3"/>\n'
        f' <circle cx="202" cy="62" r="12" fill="{TAIL_RED}"/>\n',
    )


def write_atomically(path, text):
    handle, temporary = tempfile.mkstemp(dir=os.path.dirname(path), suffix=".tmp")
    try:
        with os.fdopen(handle, "w", encoding="utf-8") as f:
            f.write(text)
        os.chmod(temporary, 0o644)  # mkstemp makes it private; these are source files
        os.replace(temporary, path)
    except BaseException:
        os.unlink(temporary)
        raise


def main():
    out = {}
    control_icons(out)
    play_pause(out)
    side_buttons(out)
    mode_pictures(out)
    video_backgrounds(out)
    bottom_background(out)
    app_icon(out)
    os.makedirs(IMAGES, exist_ok=True)
    for name, text in out.items():
        write_atomically(os.path.join(IMAGES, name + ".svg"), text)
    entries = "".join(
        f'        <file alias="{n}.svg">images/{n}.svg</file>\n' for n in sorted(out)
    )
    write_atomically(
        os.path.join(HERE, "kavro_images.qrc"),
        '<!DOCTYPE RCC>\n<RCC version="1.0">\n    <qresource prefix="/images">\n'
        f"{entries}    </qresource>\n</RCC>\n",
    )
    return 0


if __name__ == "__main__":
    try:
        sys.exit(main())
    except Exception as error:  # one line for the caller, not a trace
        print(f"drawartwork: {error}", file=sys.stderr)
        sys.exit(1)
