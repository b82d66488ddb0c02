# SPDX-License-Identifier: MIT
"""Lights: what sets an OpenGL light, and the flashlight that shows where it is."""
from rules.calls import line

# A new light's colours.
AMBIENT, DIFFUSE, SPECULAR = (0, 0, 0, 1), (0.6, 0.6, 0.6, 1), (0.9, 0.9, 0.9, 1)
POINT = (0, 0, 0, 1)         # at the origin of its own frame
FROM_AFAR = (0, 0, 1, 0)     # infinitely far away in the direction of its own z
RED, YELLOW = (1, 0, 0), (1, 1, 0)


def light(position, number=0):
    name = f"GL_LIGHT{number}"
    return ["glEnable " + name,
            line("glLightfv", name, "GL_AMBIENT", *AMBIENT),
            line("glLightfv", name, "GL_DIFFUSE", *DIFFUSE),
            line("glLightfv", name, "GL_SPECULAR", *SPECULAR),
            line("glLightfv", name, "GL_POSITION", *position),
            line("glLightfv", name, "GL_SPOT_DIRECTION", 0, 0, -1),
            line("glLightf", name, "GL_SPOT_CUTOFF", 180),
            line("glLightf", name, "GL_SPOT_EXPONENT", 128)]


def front(name, *values):
    return line("glMaterialfv", "GL_FRONT", name, *values)


def lamp(hue, on):
    """A part glows in its hue while the light is on, and is a dull third of it otherwise."""
    color = [(0.9 if on else 0.3) * part for part in hue] + [1]
    return [front("GL_EMISSION", *color)] * on + [front("GL_AMBIENT_AND_DIFFUSE", *color)]


SLICES, LOOPS = 16, 1


def forward(z):
    return line("glTranslated", 0, 0, z)


def tube(base, top, height):
    return line("gluCylinder", base, top, height, SLICES, LOOPS)


def disk(radius):
    return line("gluDisk", 0, radius, SLICES, LOOPS)


def flashlight(on=True, selected=False, width=2.0, depth=4.0):
    """From the lens at the front, 0.8 of the depth from the origin, back to the cap at the origin."""
    return ["gluQuadricOrientation GLU_OUTSIDE", "gluQuadricNormals GLU_SMOOTH", "glPushMatrix",
            "gluQuadricDrawStyle " + ("GLU_LINE" if selected else "GLU_FILL"),
            front("GL_EMISSION", 0, 0, 0, 1), front("GL_AMBIENT", *AMBIENT),
            front("GL_DIFFUSE", *DIFFUSE), front("GL_SPECULAR", *SPECULAR),
            "glMaterialf GL_FRONT GL_SHININESS 128",
            forward(0.8 * depth), disk(0.1 * width),
            forward(-0.5 * depth), tube(0.1 * width, 0.1 * width, 0.5 * depth),
            forward(-0.05 * depth), tube(0.15 * width, 0.1 * width, 0.05 * depth),
            *lamp(RED, on),
            forward(-0.25 * depth), tube(0.18 * width, 0.15 * width, 0.25 * depth),
            *lamp(YELLOW, on),
            "gluQuadricOrientation GLU_INSIDE", disk(0.18 * width), "glPopMatrix"]


def moved(z, calls):
    return ["glPushMatrix", forward(z), *calls, "glPopMatrix"]


def files():
    yield "light/point.txt", light(POINT)
    yield "light/from-afar.txt", light(FROM_AFAR)
    yield "light/flashlight-on.txt", flashlight()
    yield "light/flashlight-off-and-selected.txt", flashlight(on=False, selected=True)
    yield "light/flashlight-at-distance.txt", moved(2.5, flashlight())
    yield "light/point-with-flashlight.txt", flashlight() + light(POINT)
    # The parent has no extent: the flashlight stands at its centre, the origin.
    yield "light/from-afar-with-flashlight.txt", moved(0, flashlight()) + light(FROM_AFAR)
    yield "light/off-with-flashlight.txt", flashlight(on=False) + ["glDisable GL_LIGHT0"]
