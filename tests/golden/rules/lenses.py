# SPDX-License-Identifier: MIT
"""Lenses: the volume of space that a picture, or a part of it, shows."""
import math

from rules.calls import line


def tangent_of_half(degrees):
    return math.tan(degrees * (1.570796327 / 180))


class Lens:
    """A picture's size in pixels, its vertical field of view in degrees, or a width in world units without
    perspective; and the part of the picture that is drawn, measured from its upper left corner."""

    near, far = 0.1, 10000.0

    def __init__(self, size, angle=40.0, orthographic_width=None):
        self.width, self.height = size
        self.angle = angle
        self.orthographic_width = orthographic_width
        self.part = (0, 0, *size)

    def resized(self, width, height):
        """A window with a wider picture than before keeps the angle; only rounding may change it."""
        half = self.height / 2
        angle = 2 * math.atan2(half, half / tangent_of_half(self.angle)) * 180 / math.pi
        return Lens((width, height), angle)

    def volume(self):
        aspect = self.width / self.height
        if self.orthographic_width is None:
            name = "glFrustum"
            high = 2 * tangent_of_half(self.angle) * self.near
            wide = aspect * high
        else:
            name = "glOrtho"
            wide = self.orthographic_width
            high = wide / aspect
        x, y, part_width, part_height = self.part
        left = -wide / 2 + x / self.width * wide
        right = left + part_width / self.width * wide
        top = high / 2 - y / self.height * high
        bottom = top - part_height / self.height * high
        return line(name, left, right, bottom, top, self.near, self.far)

    def viewport(self):
        return line("glViewport", 0, 0, *self.part[2:])


LOAD_PROJECTION = ["glMatrixMode GL_PROJECTION", "glLoadIdentity"]
BACK_TO_MODELS = ["glMatrixMode GL_MODELVIEW", "glLoadIdentity"]


def loaded(lens, before=(), after=()):
    """The calls that make a lens current, with others before the volume and after the viewport."""
    return [*LOAD_PROJECTION, *before, lens.volume(), lens.viewport(), *after, *BACK_TO_MODELS]
