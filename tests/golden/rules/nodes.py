# SPDX-License-Identifier: MIT
"""Nodes of a scene: the frame of every draw, boxes, and textures."""
from rules.calls import line


def node(calls=(), place=(0, 0, 0)):
    """A node that is moved, neither turned nor scaled, and what it draws."""
    return ["glGetIntegerv GL_MAX_MODELVIEW_STACK_DEPTH", "glPushMatrix", "glGetError",
            line("glMultMatrixd", 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, *place, 1),
            *calls, "glPopMatrix", "glFlush"]
