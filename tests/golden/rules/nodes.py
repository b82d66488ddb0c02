# SPDX-License-Identifier: MIT
"""Nodes of a scene: the frame of every draw, boxes, and textures."""
from rules.calls import line

TEXTURE_OFF = ["glDisable GL_TEXTURE_2D"]


def moved(place):
    return line("glMultMatrixd", 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, *place, 1)


def node(calls=(), place=(0, 0, 0)):
    """A node that is moved, neither turned nor scaled, and what it draws."""
    return ["glGetIntegerv GL_MAX_MODELVIEW_STACK_DEPTH", "glPushMatrix", "glGetError", moved(place),
            *calls, "glPopMatrix", "glFlush"]


# The box from (0, 0, 0) to (1, 2, 3). Corner i + 4 lies behind corner i.
CORNERS = [(0, 0, 3), (0, 2, 3), (1, 2, 3), (1, 0, 3), (0, 0, 0), (0, 2, 0), (1, 2, 0), (1, 0, 0)]
BOX_COLOR = (0.25, 0.5, 0.75, 1)


def lines_through(primitive, corners):
    return ["glBegin " + primitive, *(line("glVertex3dv", *CORNERS[i]) for i in corners), "glEnd"]


def box(color=BOX_COLOR, lit=False):
    """A loop in front, one behind, and the four lines between them, without lighting."""
    return [line("glColor4fv", *color), "glIsEnabled GL_LIGHTING", *["glDisable GL_LIGHTING"] * lit,
            *lines_through("GL_LINE_LOOP", [0, 1, 2, 3]), *lines_through("GL_LINE_LOOP", [4, 5, 6, 7]),
            *lines_through("GL_LINES", [0, 4, 1, 5, 2, 6, 3, 7]), *["glEnable GL_LIGHTING"] * lit]


def boxes(*drawn):
    """What a node without a shape of its own draws: boxes, without a texture."""
    return ["glIsEnabled GL_TEXTURE_2D", *TEXTURE_OFF, *(text for calls in drawn for text in calls)]


# A texture of 2 x 2 pixels and quality 1. Its extents are powers of two as they are.
SCALED = "2 2 GL_UNSIGNED_BYTE data"
GENERATED = ["glPixelStorei GL_UNPACK_ALIGNMENT 1",
             "glTexParameteri GL_TEXTURE_2D GL_TEXTURE_MAG_FILTER GL_LINEAR",
             "glTexParameteri GL_TEXTURE_2D GL_TEXTURE_MIN_FILTER GL_LINEAR",
             "glGetIntegerv GL_MAX_TEXTURE_SIZE",
             "glGetIntegerv GL_PACK_ALIGNMENT",
             f"gluScaleImage GL_RGB {SCALED} {SCALED}",
             "glTexImage2D GL_TEXTURE_2D 0 3 2 2 0 GL_RGB GL_UNSIGNED_BYTE data"]
TEXTURE_ON = ["glEnable GL_TEXTURE_2D"]
PREPARED = [*TEXTURE_ON, "glPixelStorei GL_UNPACK_ALIGNMENT 1",
            "glTexParameteri GL_TEXTURE_2D GL_TEXTURE_WRAP_S GL_REPEAT",
            "glTexParameteri GL_TEXTURE_2D GL_TEXTURE_WRAP_T GL_REPEAT",
            "glTexEnvi GL_TEXTURE_ENV GL_TEXTURE_ENV_MODE GL_MODULATE"]


def files():
    yield "node/box.txt", box()
    yield "node/box-where-lighting-is-on.txt", box(lit=True)
    yield "node/drawn-with-box.txt", boxes(box())
    yield "node/drawn-with-two-boxes.txt", boxes(box(), box())
    yield "node/empty.txt", node()
    yield "node/untextured.txt", node(TEXTURE_OFF + ["glColor3f 1 0 0"])
    # The texture of the node before is switched off first, the node's own last.
    first = TEXTURE_OFF + GENERATED + PREPARED + TEXTURE_ON
    yield "node/textured.txt", node(first + TEXTURE_OFF)
    yield "node/textured-again.txt", node(TEXTURE_OFF + PREPARED + TEXTURE_ON + TEXTURE_OFF)
    # A failing node flushes nothing, and its texture stays on.
    yield "node/textured-but-failing.txt", node(first)[:-1]
    # The texture is not valid: preparing switches it off, and enabling does nothing.
    yield "node/texture-without-image.txt", node(TEXTURE_OFF + TEXTURE_OFF + TEXTURE_OFF)
    yield "node/textured-but-picked.txt", node(TEXTURE_OFF + TEXTURE_OFF)
    yield "node/textures-not-shown.txt", node(TEXTURE_OFF)
