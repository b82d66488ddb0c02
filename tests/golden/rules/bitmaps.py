# SPDX-License-Identifier: MIT
"""OpenGL into a bitmap in memory: its context, its lens and its bands."""
from rules.lenses import Lens, loaded

# Drawing to a bitmap and OpenGL; a new bitmap asks for drawing by others, too.
TO_BITMAP, BY_OTHERS, OPENGL = 0x8, 0x10, 0x20
CULLING = ["glEnable GL_CULL_FACE", "glCullFace GL_BACK"]


def created(lens, bits=24):
    return [f"ChoosePixelFormat {TO_BITMAP | BY_OTHERS | OPENGL:#x} {bits}", "SetPixelFormat 3",
            "DescribePixelFormat 3", "wglCreateContext", "wglMakeCurrent context",
            *loaded(lens), "glEnable GL_DEPTH_TEST", *CULLING]


def resized(lens):
    """The new context culls nothing, and the format is not described."""
    return ["wglMakeCurrent null", "wglDeleteContext", f"ChoosePixelFormat {TO_BITMAP | OPENGL:#x} 24",
            "SetPixelFormat 5", "wglCreateContext", "wglMakeCurrent context",
            *loaded(lens), "glEnable GL_DEPTH_TEST"]


def band(row, column):
    """A picture of 3000 x 1000 pixels of 24 bits: bands of 2048 x 170, for a row of a band takes 6144 bytes
    and a band at most 1 MiB."""
    lens = Lens((3000, 1000))
    lens.part = (column * 2048, row * 170, 2048, 1048576 // 6144)
    return ["wglMakeCurrent context", *loaded(lens)]


def dithered(width, height):
    """A picture in a bitmap of 8 bits. With nothing but identity matrices, the window's lower left corner is
    the corner (-1, -1, -1) of the volume. The program's own context, of which there is none, comes back."""
    identity = " 1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1"
    return [*created(Lens((width, height)), bits=8), "glTranslatef 0 0 -5",
            "glMatrixMode GL_PROJECTION", "glLoadIdentity", f"glViewport 0 0 {width} {height}",
            "glMatrixMode GL_MODELVIEW", "glClear GL_DEPTH_BUFFER_BIT",
            "glGetDoublev GL_MODELVIEW_MATRIX", "glGetDoublev GL_PROJECTION_MATRIX",
            "glGetIntegerv GL_VIEWPORT", f"gluUnProject 0 0 0{identity}{identity} 0 0 {width} {height}",
            "glRasterPos3dv -1 -1 -1", "glPixelStorei GL_UNPACK_ALIGNMENT 1",
            f"glDrawPixels {width} {height} GL_RGB GL_UNSIGNED_BYTE data", "wglMakeCurrent null"]


def files():
    yield "bitmap/create.txt", created(Lens((64, 32)))
    # Width 5, the width of a new lens.
    yield "bitmap/create-orthographic.txt", created(Lens((64, 32), orthographic_width=5))
    yield "bitmap/resize.txt", resized(Lens((64, 32)).resized(128, 16))
    yield "bitmap/band.txt", band(2, 1)
    yield "bitmap/first-band.txt", band(0, 0)
    yield "bitmap/dithered.txt", dithered(3, 2)
