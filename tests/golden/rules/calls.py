# SPDX-License-Identifier: MIT
"""How the recorder writes a call: its name and its numbers, each as OpenGL takes it."""
import math
import struct


def single(value):
    """The nearest float of 32 bits."""
    return struct.unpack("f", struct.pack("f", value))[0]


def takes_doubles(name):
    """Whether the numbers of an OpenGL function have 64 bits. Most functions say so by their last letter."""
    return name.startswith(("glu", "glOrtho", "glFrustum")) or name.endswith(("d", "dv"))


def number(value, rounded=single):
    """The shortest text that reads back as the same number; scientific when that is shorter.

    rounded takes a number to the nearest that the type can hold."""
    if isinstance(value, int):
        return str(value)
    value = rounded(value)
    if math.isinf(value):
        return "inf" if value > 0 else "-inf"
    if value == 0:
        return "-0" if math.copysign(1, value) < 0 else "0"
    digits = next(d for d in range(1, 18) if rounded(float(f"%.{d - 1}e" % value)) == value)
    mantissa, exponent = (f"%.{digits - 1}e" % value).split("e")
    exponent = int(exponent)
    scientific = f"{mantissa}e{'-' if exponent < 0 else '+'}{abs(exponent):02d}"
    fixed = f"%.{max(digits - 1 - exponent, 0)}f" % value
    return scientific if len(scientific) < len(fixed) else fixed


def line(name, *values):
    rounded = float if takes_doubles(name) else single
    return " ".join([name, *(v if isinstance(v, str) else number(v, rounded) for v in values)])


def material(ambient=(0.5, 0.5, 0.5, 1), diffuse=(0.5, 0.5, 0.5, 1), specular=(0.5, 0.5, 0.5, 1), shininess=64):
    """The calls that make a material current that emits nothing."""
    side = "GL_FRONT_AND_BACK"
    return [line("glMaterialfv", side, "GL_AMBIENT", *ambient),
            line("glMaterialfv", side, "GL_DIFFUSE", *diffuse),
            line("glMaterialfv", side, "GL_SPECULAR", *specular),
            line("glMaterialfv", side, "GL_EMISSION", 0, 0, 0, 1),
            line("glMaterialf", side, "GL_SHININESS", shininess),
            line("glColor4fv", *diffuse)]
