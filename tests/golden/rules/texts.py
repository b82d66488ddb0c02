# SPDX-License-Identifier: MIT
"""Texts: letters in their places, and the text's box."""
from rules.calls import line
from rules.glyphs import DOWN, LEFT, RIGHT, UP, Draw, Vertex, SQUARE, SQUARE_FACES, faces_of, solid
from rules.letters import EDGE, FACE, opaque
from rules.nodes import box, boxes

# B, clockwise from (0, -0.25) to (0.25, 0.5) em.
TALL = [[
    Vertex(0, -250, 14142, 0, DOWN, (-7071, -7071), LEFT),
    Vertex(0, 500, 14142, 0, LEFT, (-7071, 7071), UP),
    Vertex(250, 500, 14142, 0, UP, (7071, 7071), RIGHT),
    Vertex(250, -250, 14142, 0, RIGHT, (7071, -7071), DOWN),
]]
PLAIN = Draw((1, 1, 1), 0, 0)


def letter(outline):
    fan = SQUARE_FACES[:1]
    return [*opaque(FACE), *faces_of(PLAIN, outline, fan),
            *opaque(EDGE), *solid("RenderEdgesUnbevelled", PLAIN, outline, fan)]


def step(x, y=0):
    return line("glTranslated", x, y, 0)


def files():
    # The text is 2 high and its first line 0.75 below its top, so 0.25 above its middle. A is 0.5 wide
    # and B 0.25, and 0.125 follows each. The start is moved to the left by nothing.
    yield ("text/solid-with-box.txt",
           ["glPushMatrix", step(0, 0.25), step(-0.0),
            *letter(SQUARE), step(0.625), *letter(TALL), step(0.375), "glPopMatrix", *boxes(box())])
