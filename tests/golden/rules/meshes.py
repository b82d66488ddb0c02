# SPDX-License-Identifier: MIT
"""Meshes: the unit square of two triangles, in a material that is black but for its diffuse red."""
from rules.calls import line, material

CORNERS = [(0, 0, 0), (1, 0, 0), (1, 1, 0), (0, 1, 0)]
FACES = [(0, 1, 2), (0, 2, 3)]
NORMAL = (0, 0, -1)  # a mesh's faces run clockwise seen from outside; these do so from -z
BLACK = (0, 0, 0, 1)
RED = material(ambient=BLACK, diffuse=(0.5, 0, 0, 1), specular=BLACK)


def vertex(corner):
    return line("glVertex3fv", *CORNERS[corner])


def rendered():
    """Both sides are lit. The material is set where it changes, which is at the first face alone."""
    lines = ["glDisable GL_CULL_FACE", "glLightModeli GL_LIGHT_MODEL_TWO_SIDE 1", "glFrontFace GL_CW"]
    for number, face in enumerate(FACES):
        lines += [f"glPushName {number}", "glBegin GL_TRIANGLES", *(RED if number == 0 else [])]
        for corner in face:
            lines += [line("glNormal3fv", *NORMAL), vertex(corner)]
        lines += ["glEnd", "glPopName"]
    return lines + ["glFrontFace GL_CCW", "glEnable GL_CULL_FACE",
                    "glLightModeli GL_LIGHT_MODEL_TWO_SIDE 0"]


def outlined():
    """Each face sets its material, whether it changes or not."""
    lines = ["glIsEnabled GL_LIGHTING"]
    for face in FACES:
        lines += [*RED, "glBegin GL_LINE_LOOP", *(vertex(corner) for corner in face), "glEnd"]
    return lines


def files():
    yield "mesh/rendered.txt", rendered()
    yield "mesh/outlined.txt", outlined()
