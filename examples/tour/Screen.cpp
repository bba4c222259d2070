#include "platform/GLee.h"

#include "examples/tour/Screen.h"

#include <filesystem>
#include <iostream>

namespace tour
{
using namespace tamor;

bool hasPrograms()
{
    return GLEW_VERSION_2_0 != 0;
}

void loadProgram(ShaderProgram& program, const std::string& vertexFile,
                 const std::string& fragmentFile)
{
    if (!hasPrograms()) {
        std::cerr << "no OpenGL 2 here: " << fragmentFile << " is left out" << std::endl;
        return;
    }
    for (const std::string& file : {vertexFile, fragmentFile}) {
        // The engine would take it for an empty one.
        if (!std::filesystem::exists(file)) {
            std::cerr << file << " is missing" << std::endl;
            return;
        }
    }
    program.loadVertexShader(vertexFile);
    program.loadFragmentShader(fragmentFile);
    program.link();
}

void setUpForScene()
{
    glEnable(GL_DEPTH_TEST);
    glEnable(GL_LIGHTING);
    glEnable(GL_NORMALIZE); // things are scaled
    glEnable(GL_TEXTURE_2D);
    glEnable(GL_FOG);
    glDisable(GL_BLEND);
    glDisable(GL_COLOR_MATERIAL); // the colours of buffers count for nothing
    glLightModeli(GL_LIGHT_MODEL_TWO_SIDE, GL_FALSE);
    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
    glLineWidth(1.0F);
    glMatrixMode(GL_MODELVIEW);
}

void setUpForGui()
{
    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA); // not every widget sets it
    glLineWidth(1.0F);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
}

void setMaterial(const Vector& colour, float shine)
{
    glMaterialfv(GL_FRONT_AND_BACK, GL_AMBIENT_AND_DIFFUSE, colour.toArray());
    glMaterialfv(GL_FRONT_AND_BACK, GL_SPECULAR, Vector(shine, shine, shine).toArray());
    glMaterialf(GL_FRONT_AND_BACK, GL_SHININESS, 32.0F);
}
} // namespace tour
