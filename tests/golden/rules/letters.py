# SPDX-License-Identifier: MIT
"""The letters that a font draws: the parts of a glyph with their materials and names."""
from rules.calls import line, material
from rules.glyphs import (SCALE_BEVELS, SQUARE, SQUARE_FACES, WIREFRAMES, Draw, faces_of, loops,
                          solid)

# The unit square with bevels of 1/8 em, in a face, an edge and a bevel material of 1/4, 1/2 and 3/4
# grey; wireframes in the white of the extents box.
WIDTH = 0.125
FACE, EDGE, BEVEL, BOX = 0.25, 0.5, 0.75, 1.0


def opaque(grey):
    return material(diffuse=(grey, grey, grey, 1)) + ["glDisable GL_BLEND", "glDepthMask GL_TRUE"]


def parts(names, width=WIDTH):
    draw = Draw((1, 1, 1), width, SCALE_BEVELS)
    faces = SQUARE_FACES[:1]
    return [text for name in names
            for text in (faces_of(draw, SQUARE, faces) if name == "RenderFaces"
                         else solid(name, draw, SQUARE, faces))]


# Style and location: the wall, then the rings of the front and of the back.
LETTERS = {
    "square": ("RenderEdgesUnbevelled", []),
    "bevelled-front": ("RenderEdgesFrontBevelOnly",
                       ["RenderFrontBevelBevelled", "RenderBackBevelFlat"]),
    "bevelled-back": ("RenderEdgesBackBevelOnly",
                      ["RenderFrontBevelFlat", "RenderBackBevelBevelled"]),
    "bevelled-both": ("RenderEdgesBevelled",
                      ["RenderFrontBevelBevelled", "RenderBackBevelBevelled"]),
    "rounded-front": ("RenderEdgesFrontBevelOnly",
                      ["RenderFrontRoundRounded", "RenderBackBevelFlat"]),
    "rounded-back": ("RenderEdgesBackBevelOnly",
                     ["RenderFrontBevelFlat", "RenderBackRoundRounded"]),
    "rounded-both": ("RenderEdgesBevelled",
                     ["RenderFrontRoundRounded", "RenderBackRoundRounded"]),
}
LETTER_WIREFRAMES = {
    "square": "Draw", "bevelled-front": "DrawFrontFaceBevelled",
    "bevelled-back": "DrawBackFaceBevelled", "bevelled-both": "DrawBothFacesBevelled",
    "rounded-front": "DrawFrontFaceRounded", "rounded-back": "DrawBackFaceRounded",
    "rounded-both": "DrawBothFacesRounded",
}


def letter(style, edge_material=True, bevel_material=True):
    """Faces, wall and rings. The face material serves where the edges or the bevels have none."""
    wall, bevels = LETTERS[style]
    lines = opaque(FACE) + parts(["RenderFaces"])
    if edge_material:
        lines += opaque(EDGE)
    lines += parts([wall])
    if bevels and bevel_material:
        lines += opaque(BEVEL)
    elif bevels and edge_material:
        lines += opaque(FACE)
    return lines + parts(bevels)


def letter_without_wall(style, width):
    """Bevels that use up the depth leave no wall. They have no material of their own."""
    return opaque(FACE) + parts(["RenderFaces", *LETTERS[style][1]], width)


def named(name, lines):
    return [f"glPushName {name}", *lines, "glPopName"]


def letter_picked(style):
    """Names 0, 1 and 2: faces, wall and bevels. The first material is set before the first name."""
    wall, bevels = LETTERS[style]
    lines = opaque(FACE) + named(0, parts(["RenderFaces"])) + named(1, opaque(EDGE) + parts([wall]))
    return lines + (named(2, opaque(BEVEL) + parts(bevels)) if bevels else [])


def wireframe(style, lit=True, picked=False):
    levels = WIREFRAMES[LETTER_WIREFRAMES[style]] if style else []
    lines = loops(Draw((1, 1, 1), WIDTH, SCALE_BEVELS), SQUARE, levels)
    return (opaque(BOX) + ["glIsEnabled GL_LIGHTING"] + ["glDisable GL_LIGHTING"] * lit +
            (named(0, lines) if picked else lines) + ["glDisable GL_COLOR_MATERIAL"] +
            ["glEnable GL_LIGHTING"] * lit)


def files():
    for style in LETTERS:
        yield f"letter/{style}.txt", letter(style)
        yield f"letter/{style}-wireframe.txt", wireframe(style)
    yield "letter/square-in-face-material.txt", letter("square", edge_material=False)
    yield ("letter/bevelled-both-without-bevel-material.txt",
           letter("bevelled-both", bevel_material=False))
    yield ("letter/bevelled-both-in-face-material.txt",
           letter("bevelled-both", edge_material=False, bevel_material=False))
    # The letter is 1 deep: one bevel of 1, or two of 0.5, use it up.
    for style, width in (("bevelled-front", 1.0), ("bevelled-back", 1.0), ("bevelled-both", 0.5)):
        yield f"letter/{style}-without-wall.txt", letter_without_wall(style, width)
    for style in ("square", "bevelled-both"):
        yield f"letter/{style}-picked.txt", letter_picked(style)
    # The wall's name stays on the stack.
    yield ("letter/unknown-style-picked.txt",
           opaque(FACE) + named(0, parts(["RenderFaces"])) + ["glPushName 1"])
    yield ("letter/bevelled-at-unknown-location.txt",
           opaque(FACE) + parts(["RenderFaces"]) + opaque(BEVEL))
    yield "letter/square-wireframe-unlit.txt", wireframe("square", lit=False)
    yield "letter/square-wireframe-picked.txt", wireframe("square", lit=False, picked=True)
    yield "letter/unknown-style-wireframe-picked.txt", wireframe(None, lit=False, picked=True)
