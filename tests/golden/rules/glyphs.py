# SPDX-License-Identifier: MIT
"""The routines that draw the parts of one glyph, for corners, normals and offsets that are listed by hand."""
import copy
import math
import struct

from rules.calls import line, number, single

UNIT = single(0.0001)  # of normals and miters
SMOOTH, INTERIOR = 1, 4


class Vertex:
    """A corner: its place in 1/1000 em, its miter in 1/10000, its marks, and its normals in 1/10000:
    of the edge that arrives, the average, and of the edge that leaves."""

    def __init__(self, x, y, miter, flags, arriving, average, leaving):
        self.x, self.y, self.miter, self.flags = x, y, miter, flags
        self.edge = {"arriving": arriving, "leaving": leaving}
        self.average = average

    def unit(self, normal):
        return [single(normal[0] * UNIT), single(normal[1] * UNIT), 0.0]

    def wall_normal(self, edge):
        smooth = self.flags & (SMOOTH | INTERIOR) == SMOOTH
        return self.unit(self.average if smooth else self.edge[edge])

    def slant_normal(self, side, edge):
        """Half-way between the cap and the edge. Smooth corners take the average, interior or not."""
        base = self.unit(self.average if self.flags & SMOOTH else self.edge[edge])
        cap = [0.0, 0.0, side]
        middle = [single(single(c + b) / 2) for c, b in zip(cap, base)]
        length = math.sqrt(sum(m * m for m in middle))
        return [single(m / length) for m in middle]

    def offset(self, width, edge):
        """How far a bevel moves the corner. An interior corner follows one edge, without a miter."""
        if self.flags & INTERIOR:
            return [single(single(width * n) * UNIT) for n in self.edge[edge]]
        reach = single(single(self.miter * UNIT) * width)
        return [single(reach * single(n * UNIT)) for n in self.average]


LEFT, UP, RIGHT, DOWN = (-10000, 0), (0, 10000), (10000, 0), (0, -10000)

# The unit square, clockwise. A right angle's miter is 10000 / cos 45 degrees = 14142, and the parts
# of its average normal are 7071.
SQUARE = [[
    Vertex(0, 0, 14142, 0, DOWN, (-7071, -7071), LEFT),
    Vertex(0, 1000, 14142, 0, LEFT, (-7071, 7071), UP),
    Vertex(1000, 1000, 14142, 0, UP, (7071, 7071), RIGHT),
    Vertex(1000, 0, 14142, 0, RIGHT, (7071, -7071), DOWN),
]]
# (primitive, indices, clockwise)
SQUARE_FACES = [("GL_TRIANGLE_FAN", [0, 1, 2, 3], True), ("GL_TRIANGLES", [2, 1, 0], False)]

# A glyph whose corners all differ: sharp, smooth, interior, and interior and smooth, with three
# different normals each; its second contour has one corner, its third none. It has no faces.
ODD = [[
    Vertex(0, 0, 14142, 0, (-10000, 0), (-7071, 7071), (0, 10000)),
    Vertex(300, 700, 10353, SMOOTH, (-6000, 8000), (-2588, 9659), (0, 9998)),
    Vertex(-250, 1100, 40000, INTERIOR, (8000, -6000), (0, -10000), (-8000, -6000)),
    Vertex(1024, -512, 20000, SMOOTH | INTERIOR, (0, -10000), (9659, 2588), (10000, 0)),
], [
    Vertex(77, -33, 12345, 0, (5000, 8660), (6000, 8000), (-8660, 5000)),
], []]

SHAPES = {"square": (SQUARE, SQUARE_FACES), "odd": (ODD, [])}

SCALE_BEVELS, TEXTURE, TEXTURE_WITH_OBJECT = 1, 2, 4

# Scale, bevel width, flags. Every scale, every set of flags, and every pair of a mirrored or
# stretched scale and a rule that depends on it.
DRAWS = [
    ((1, 1, 1), 0, 0),
    ((1, 1, 1), 0.1, 0),
    ((1, 1, 1), 0.1, 2),
    ((1, 1, 1), 0.1, 4),
    ((-1, 1, 1), 0.1, 1),
    ((-1, 1, 1), 0.1, 2),
    ((2, 3, 0.5), 0.1, 0),
    ((2, 3, 0.5), 0.1, 1),
    ((2, 3, 0.5), 0.1, 3),
    ((2, 3, 0.5), 0.1, 6),
    ((2, 3, 0.5), 0.1, 7),
    ((2, -3, 0.5), 0.1, 2),
    ((2, -3, 0.5), 0.1, 7),
    ((-0.5, -2, 1), 0.1, 3),
    ((-0.5, -2, 1), 0.1, 6),
    ((0, 1, 1), 0.1, 2),
    ((0, 1, 1), 0.1, 7),
]
TEXTURE_REPEAT = 3.0


class Draw:
    """The numbers of one draw: z of the rings, and the rules for places and texture points."""

    def __init__(self, scale, width, flags):
        self.sx, self.sy, depth = (single(s) for s in scale)
        self.flags = flags
        self.width = a = single(width)
        k = struct.unpack("f", struct.pack("I", 0x3E95F6FE))[0]  # 1 - cos 45 degrees to 4 places
        self.z = {
            "back": single(-depth),
            "backBevel": single(a - depth),
            "backRound": single(k * a - depth),
            "front": 0.0,
            "frontBevel": single(-a),
            "frontRound": single(-k * a),
        }
        self.sign = [-1.0 if s < 0 else 1.0 for s in (self.sx, self.sy)]
        self.mirrored = self.sx * self.sy < 0

    def ring_offset(self, vertex, ring, edge):
        offset = vertex.offset(self.width, edge)
        return [single(o * single(0.7071)) for o in offset] if ring == "round" else offset

    def place(self, vertex, ring, edge):
        g = single(single(1) / 1000)  # 1000 units to the em
        scale = (self.sx, self.sy)
        point = [single(single(c * g) * s) for c, s in zip((vertex.x, vertex.y), scale)]
        if ring == "outline":
            return point
        by = scale if self.flags & SCALE_BEVELS else self.sign
        offset = self.ring_offset(vertex, ring, edge)
        return [single(single(b * o) + p) for b, o, p in zip(by, offset, point)]

    def texture(self, vertex, ring, edge):
        if self.flags & TEXTURE_WITH_OBJECT:
            point = self.place(vertex, ring, edge)
        else:
            g = single(single(1) / 1000)
            point = [single(s * single(c * g)) for s, c in zip(self.sign, (vertex.x, vertex.y))]
            if ring != "outline":
                # Both inverse scales are 0 when the width's scale is 0.
                by = [0.0, 0.0] if self.sx == 0 else [single(1 / self.sx), single(1 / self.sy)]
                offset = self.ring_offset(vertex, ring, edge)
                point = [single(single(b * o) + p) for b, o, p in zip(by, offset, point)]
        return [single(p * TEXTURE_REPEAT) for p in point]

    def vertex(self, vertex, ring, edge, z):
        lines = []
        if self.flags & TEXTURE:
            lines.append(line("glTexCoord2fv", *self.texture(vertex, ring, edge)))
        return lines + [line("glVertex3f", *self.place(vertex, ring, edge), z)]

    def front_face(self, clockwise):
        return "glFrontFace " + ("GL_CW" if clockwise != self.mirrored else "GL_CCW")


UNSCALED = Draw((1, 1, 1), 0.1, 0)

FRONT, BACK = 1.0, -1.0


def band(draw, contours, corners, normals, side=FRONT, offset_of_end="arriving"):
    """One quad for each segment of each contour: two corners at its start and two at its end.

    corners: for each of the four a ring, a z, and the kind of its normal.
    normals: once for each contour, at the start and the end of a segment, or at each corner."""
    lines = []
    for contour in contours:
        lines.append("glBegin GL_QUADS")
        if normals == "contour":
            lines.append(line("glNormal3f", 0.0, 0.0, side))
        for i, start in enumerate(contour):
            end = contour[(i + 1) % len(contour)]
            for k, (ring, z, kind) in enumerate(corners):
                vertex, edge = (start, "leaving") if k < 2 else (end, "arriving")
                if normals == "corner" or (normals == "end" and k % 2 == 0):
                    normal = {"cap": lambda: [0.0, 0.0, side],
                              "slant": lambda: vertex.slant_normal(side, edge),
                              "wall": lambda: vertex.wall_normal(edge)}[kind]()
                    lines.append(line("glNormal3f", *normal))
                lines += draw.vertex(vertex, ring, edge if k < 2 else offset_of_end, draw.z[z])
        lines.append("glEnd")
    return lines


def rings(draw, *bands):
    return [draw.front_face(False), *(text for lines in bands for text in lines), "glFrontFace GL_CCW"]


def wall(draw, contours, ring, back, front):
    return rings(draw, band(draw, contours, [(ring, back, "wall"), (ring, front, "wall"),
                                             (ring, front, "wall"), (ring, back, "wall")], "end"))


def face(draw, contours, faces, z, side):
    pool = [vertex for contour in contours for vertex in contour]
    lines = []
    for primitive, indices, clockwise in faces:
        lines += [draw.front_face(clockwise == (side == FRONT)), "glBegin " + primitive,
                  line("glNormal3f", 0.0, 0.0, side)]
        for index in indices:
            lines += draw.vertex(pool[index], "outline", "", draw.z[z])
        lines.append("glEnd")
    return lines + ["glFrontFace GL_CCW"]


def faces_of(draw, contours, faces):
    return face(draw, contours, faces, "back", BACK) + face(draw, contours, faces, "front", FRONT)


def there_and_back(a, b):
    """The corners of a quad that leaves ring a for ring b and comes back on the next edge."""
    return [a, b, b, a]


def slanted(ring, z):
    return (ring, z, "slant")


def outer(z):
    return ("bevel", z, "wall")


def cap(z):
    return ("outline", z, "cap")


FRONT_ROUND = slanted("round", "frontRound")
BACK_ROUND = slanted("round", "backRound")


def solid(name, draw, contours, faces):
    """The calls of one routine that draws a part of the solid letter."""
    def b(a, c, normals, side, **more):
        return band(draw, contours, there_and_back(a, c), normals, side, **more)

    walls = {
        "RenderEdgesUnbevelled": ("outline", "back", "front"),
        "RenderEdgesBevelled": ("bevel", "backBevel", "frontBevel"),
        "RenderEdgesFrontBevelOnly": ("bevel", "back", "frontBevel"),
        "RenderEdgesBackBevelOnly": ("bevel", "backBevel", "front"),
    }
    if name in walls:
        return wall(draw, contours, *walls[name])
    front_slant = (slanted("bevel", "frontBevel"), slanted("outline", "front"))
    back_slant = (slanted("outline", "back"), slanted("bevel", "backBevel"))
    bands = {
        "RenderFrontBevelFlat": lambda: [
            b(("bevel", "front", "cap"), cap("front"), "contour", FRONT)],
        "RenderBackBevelFlat": lambda: [
            b(cap("back"), ("bevel", "back", "cap"), "contour", BACK)],
        "RenderFrontBevelBevelled": lambda: [b(*front_slant, "end", FRONT)],
        "RenderBackBevelBevelled": lambda: [b(*back_slant, "end", BACK)],
        "RenderBevelled": lambda: [
            b(*reversed(back_slant), "end", BACK),
            b(*front_slant, "end", FRONT, offset_of_end="leaving")],
        "RenderFrontRoundRounded": lambda: [
            b(FRONT_ROUND, cap("front"), "corner", FRONT),
            b(outer("frontBevel"), FRONT_ROUND, "corner", FRONT)],
        "RenderBackRoundRounded": lambda: [
            b(cap("back"), BACK_ROUND, "corner", BACK),
            b(BACK_ROUND, outer("backBevel"), "corner", BACK)],
        "RenderRounded": lambda: [
            b(BACK_ROUND, cap("back"), "corner", BACK),
            b(BACK_ROUND, outer("backBevel"), "corner", BACK),
            b(FRONT_ROUND, cap("front"), "corner", FRONT),
            b(FRONT_ROUND, outer("frontBevel"), "corner", FRONT)],
    }[name]()
    before = []
    if name in ("RenderBevelled", "RenderRounded"):
        before = faces_of(draw, contours, faces)
    if name == "RenderRounded":
        before += solid("RenderEdgesBevelled", draw, contours, faces)
    return before + rings(draw, *bands)


SOLIDS = ["RenderEdgesUnbevelled", "RenderEdgesBevelled", "RenderEdgesFrontBevelOnly",
          "RenderEdgesBackBevelOnly", "RenderFrontBevelFlat", "RenderBackBevelFlat",
          "RenderFrontBevelBevelled", "RenderBackBevelBevelled", "RenderBevelled",
          "RenderFrontRoundRounded", "RenderBackRoundRounded", "RenderRounded"]

# The rings of each wireframe, in order: which ring, at which z.
WIREFRAMES = {
    "Draw": [("outline", "back"), ("outline", "front")],
    "DrawFrontFaceBevelled": [("outline", "front"), ("bevel", "back"), ("bevel", "frontBevel")],
    "DrawBackFaceBevelled": [("outline", "back"), ("bevel", "front"), ("bevel", "backBevel")],
    "DrawBothFacesBevelled": [("outline", "back"), ("outline", "front"), ("bevel", "backBevel"),
                              ("bevel", "frontBevel")],
    "DrawFrontFaceRounded": [("outline", "front"), ("bevel", "frontBevel"), ("bevel", "back"),
                             ("round", "frontRound")],
    "DrawBackFaceRounded": [("outline", "back"), ("outline", "front"), ("bevel", "backBevel"),
                            ("round", "backRound"), ("bevel", "front")],
    "DrawBothFacesRounded": [("outline", "back"), ("outline", "front"), ("bevel", "backBevel"),
                             ("bevel", "frontBevel"), ("round", "backRound"),
                             ("round", "frontRound")],
}


def loops(draw, contours, levels):
    """An interior corner has no miter: it stands twice in the moved rings, once for each edge."""
    lines = []
    for ring, z in levels:
        for contour in contours:
            lines.append("glBegin GL_LINE_LOOP")
            for vertex in contour:
                twice = ring != "outline" and vertex.flags & INTERIOR
                for edge in ["arriving", "leaving"] if twice else ["arriving"]:
                    lines.append(line("glVertex3f", *draw.place(vertex, ring, edge), draw.z[z]))
            lines.append("glEnd")
    return lines


def draws(calls):
    """The calls of every draw, each under a line that tells its numbers."""
    lines = []
    for scale, width, flags in DRAWS:
        x, y, z = (number(single(s)) for s in scale)
        lines.append(f"# scale {x} {y} {z}, bevel {number(single(width))}, flags {flags}")
        lines += calls(Draw(scale, width, flags))
    return lines


def edges_at(bevelled, back, front):
    """RenderEdges: a wall of the odd glyph between two given heights."""
    draw = copy.copy(UNSCALED)
    draw.z = {"back": back, "front": front}
    return wall(draw, ODD, "bevel" if bevelled else "outline", "back", "front")


def outlines_at(kind, heights):
    """DrawOutline: the odd glyph's outline, bevel or round ring at given heights."""
    draw = copy.copy(UNSCALED)
    draw.z = dict(enumerate(heights))
    return loops(draw, ODD, [({1: "outline", 2: "bevel", 3: "round"}[kind], z) for z in draw.z])


def face_at(side, height):
    """RenderFace: one face of the square at a given height."""
    draw = copy.copy(UNSCALED)
    draw.z = {"face": height}
    return face(draw, SQUARE, SQUARE_FACES, "face", side)


def files():
    for shape, (contours, faces) in SHAPES.items():
        for name in SOLIDS:
            yield (f"glyph/{shape}/{name}.txt",
                   draws(lambda draw: solid(name, draw, contours, faces)))
        for name in WIREFRAMES:
            yield (f"glyph/{shape}/{name}.txt",
                   draws(lambda draw: loops(draw, contours, WIREFRAMES[name])))
        if faces:
            yield (f"glyph/{shape}/RenderFaces.txt",
                   draws(lambda draw: faces_of(draw, contours, faces)))
            yield (f"glyph/{shape}/Render.txt",
                   faces_of(UNSCALED, contours, faces) +
                   solid("RenderEdgesUnbevelled", UNSCALED, contours, faces))
    yield ("glyph/square/RenderFace.txt",
           ["# front", *face_at(FRONT, 2.0), "# back", *face_at(BACK, -2.0)])
    # Bevelled is every number but 0.
    yield ("glyph/odd/RenderEdges.txt",
           [text for bevelled in (0, 1, 2)
            for text in [f"# bevelled {bevelled}", *edges_at(bevelled, 5.0, -7.0)]])
    yield ("glyph/odd/DrawOutline.txt",
           [text for kind in (1, 2, 3)
            for text in [f"# kind {kind}", *outlines_at(kind, [3.0, -4.0])]])
