# SPDX-License-Identifier: MIT
"""Scenes: their lights."""
from rules.lights import POINT, light
from rules.nodes import TEXTURE_OFF, node

LIGHT_MODEL = ["glEnable GL_LIGHTING", "glLightModelfv GL_LIGHT_MODEL_AMBIENT 0.2 0.2 0.2 1",
               "glLightModeli GL_LIGHT_MODEL_LOCAL_VIEWER 0"]


def files():
    # The light model, then each light in its place: the first not in use, two point lights.
    off = node(TEXTURE_OFF + ["glDisable GL_LIGHT0"])
    yield ("scene/lights.txt",
           LIGHT_MODEL + off + node(TEXTURE_OFF + light(POINT, 1), (1, 2, 3)) +
           node(TEXTURE_OFF + light(POINT, 2), (4, 5, 6)))
