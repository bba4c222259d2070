#include "examples/Screenshot.h"

#include <GL/gl.h>

#include <array>
#include <cstdio>
#include <fstream>
#include <vector>

void writeScreenshot(const std::string& path)
{
    std::array<GLint, 4> viewport;
    glGetIntegerv(GL_VIEWPORT, viewport.data());
    const std::streamsize rowBytes = std::streamsize{3} * viewport[2];
    std::vector<char> pixels(static_cast<std::size_t>(rowBytes * viewport[3]));
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, viewport[2], viewport[3], GL_RGB, GL_UNSIGNED_BYTE, pixels.data());

    std::ofstream file(path, std::ios::binary);
    if (!file) {
        std::perror(path.c_str());
        return;
    }
    file << "P6\n" << viewport[2] << ' ' << viewport[3] << "\n255\n";
    for (GLint row = viewport[3]; row-- > 0;) // OpenGL's first row is the lowest
        file.write(pixels.data() + row * rowBytes, rowBytes);
}
