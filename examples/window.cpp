// SPDX-License-Identifier: MIT
// A window with a word that turns. A click tells which letter is under the pointer.
// usage: window [WORD [FRAMES]]   (with FRAMES: draws so many, tells what is in the middle, ends)
#include <GLFW/glfw3.h>
#include <orvane/orvane.h>

#include <cstdio>
#include <cstdlib>

namespace
{

// The size in pixels, which are not the units of the window's coordinates on every screen.
orvane::Size PictureSize(GLFWwindow* window)
{
    orvane::Size size;
    glfwGetFramebufferSize(window, &size.width, &size.height);
    return size;
}

// Prints the letter at a place of the window.
void Tell(GLFWwindow* window, const orvane::Document& document, double x, double y)
{
    const orvane::Size picture = PictureSize(window);
    int width = 0;
    int height = 0;
    glfwGetWindowSize(window, &width, &height);
    const auto hits = document.Pick(picture, static_cast<int>(x * picture.width / width),
                                    static_cast<int>(y * picture.height / height));
    const bool isLetter = !hits.empty() && hits.front().kind == orvane::HitKind::Letter;
    std::printf("%s\n", isLetter ? hits.front().letter.c_str() : "no letter");
    std::fflush(stdout);
}

// Called by GLFW for a press or a release of a mouse button.
void Click(GLFWwindow* window, int button, int action, int)
{
    if (button == GLFW_MOUSE_BUTTON_LEFT && action == GLFW_PRESS)
    {
        double x = 0;
        double y = 0;
        glfwGetCursorPos(window, &x, &y);
        Tell(window, *static_cast<orvane::Document*>(glfwGetWindowUserPointer(window)), x, y);
    }
}

void Run(GLFWwindow* window, const char* text, int frames)
{
    orvane::Document document;
    orvane::Node word = document.AddText(text);
    document.Frame(PictureSize(window));
    glfwSetWindowUserPointer(window, &document);
    glfwSetMouseButtonCallback(window, Click);

    int drawn = 0;
    while (!glfwWindowShouldClose(window) && (frames == 0 || drawn < frames))
    {
        const orvane::Size size = PictureSize(window);
        glViewport(0, 0, size.width, size.height);
        orvane::Draw(document);
        glfwSwapBuffers(window);
        glfwPollEvents();
        word.Turn(0.5, {0, 1, 0});
        ++drawn;
    }
    if (frames != 0)
    {
        int width = 0;
        int height = 0;
        glfwGetWindowSize(window, &width, &height);
        Tell(window, document, width / 2.0, height / 2.0);
    }
}

}  // namespace

int main(int argc, char** argv)
{
    if (glfwInit() == GLFW_FALSE)
    {
        std::fprintf(stderr, "window: GLFW finds no display\n");
        return 1;
    }
    // Without other hints the context has the compatibility profile, which Draw needs.
    GLFWwindow* window = glfwCreateWindow(960, 540, "Orvane", nullptr, nullptr);
    if (window == nullptr)
    {
        std::fprintf(stderr, "window: the display offers no OpenGL\n");
        glfwTerminate();
        return 1;
    }
    glfwMakeContextCurrent(window);
    glfwSwapInterval(1);
    int status = 0;
    try
    {
        Run(window, argc > 1 ? argv[1] : "Orvane", argc > 2 ? std::atoi(argv[2]) : 0);
    }
    catch (const orvane::Error& error)
    {
        std::fprintf(stderr, "window: %s\n", error.what());
        status = 1;
    }
    glfwTerminate();
    return status;
}
