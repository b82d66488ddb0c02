# SPDX-License-Identifier: MIT
"""Views: the lens, the background, and the scene below the view's own place."""
from rules.lenses import Lens, loaded
from rules.nodes import TEXTURE_OFF, node
from rules.scenes import LIGHT_MODEL

# Of 100 x 50 pixels and 4 units across, at z = 5: the world lies 5 units before it.
LENS = Lens((100, 50), orthographic_width=4)
BEFORE_THE_VIEW = (0, 0, -5)

READ_BACK = ["glGetIntegerv GL_VIEWPORT", "glGetDoublev GL_PROJECTION_MATRIX"]
CLEAR_DEPTH = ["glDepthMask GL_TRUE", "glClear GL_DEPTH_BUFFER_BIT"]
CLEAR_WHITE = ["glClearColor 1 1 1 1", "glClear GL_COLOR_BUFFER_BIT", "glFlush"]
SMOOTH = ["glShadeModel GL_SMOOTH", "glEnable GL_DEPTH_TEST"]
FLAT = ["glShadeModel GL_FLAT", "glDisable GL_DEPTH_TEST"]


def viewed(clear=tuple(CLEAR_WHITE), shading=tuple(SMOOTH), lights_turn=True):
    """A scene without children. Lights that turn with it are set inside its transform."""
    scene = node(TEXTURE_OFF + (LIGHT_MODEL if lights_turn else []))
    return node([*TEXTURE_OFF, *CLEAR_DEPTH, *clear, *shading, *scene], BEFORE_THE_VIEW)


def files():
    lens = loaded(LENS, after=READ_BACK)
    yield "view/rendered.txt", lens + viewed()
    yield "view/not-rendered.txt", lens + viewed(shading=FLAT)
    yield "view/without-projection.txt", viewed()
    # 5 x 5 pixels round (30, 20) from the top, which is 30 from the bottom. Nothing is read back or cleared.
    yield ("view/picked.txt",
           loaded(LENS, before=["gluPickMatrix 30 30 5 5 0 0 100 50"]) + viewed(clear=()))
    background = CLEAR_DEPTH + CLEAR_WHITE + SMOOTH
    yield "view/background.txt", lens + background
    yield "view/lights-at-camera.txt", lens + LIGHT_MODEL + viewed(lights_turn=False)
    yield "view/background-with-lights-at-camera.txt", lens + LIGHT_MODEL + background
    yield "view/perspective.txt", loaded(Lens((100, 50)), after=READ_BACK) + viewed()
