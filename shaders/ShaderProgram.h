/// \file
/// GLSL programs made of one vertex shader file and one fragment shader file.
///
/// The folder shaders/ knows GLSL programs and nothing else of drawing. The demonstration uses
/// fixed-function OpenGL throughout; a host turns a program on with `use` and, to go back, calls
/// `glUseProgram(0)` itself.
#pragma once

#include "TamorExport.h"

#include <cstdint>
#include <map>
#include <string>

namespace tamor
{
/// The OpenGL shader object of each file that was loaded, which all programs share; 0 for none.
/// Nothing is ever removed or deleted.
extern TAMOR_EXPORT std::map<std::string, std::uint32_t> vertexShaders;
/// As `vertexShaders`, of the fragment shaders.
extern TAMOR_EXPORT std::map<std::string, std::uint32_t> fragmentShaders;

/// A program of one vertex and one fragment shader: load both, `link`, then in each frame `use` and
/// after it `setUniform`.
///
/// Everything but construction needs the window open. A plain record, which owns no OpenGL object.
///
/// Meant: a shader that is missing, does not compile or does not link says nothing, and shows only
/// in what is drawn; hosts try shaders out on drivers that lack them, and
/// `ShaderProgramGLTest.StaysSilentOnAShaderThatDoesNotCompile` holds it.
class TAMOR_EXPORT ShaderProgram
{
public:
    /// Takes `file` as the vertex shader and compiles it, unless some program did before. A program
    /// that is linked already keeps its old shader until the next `link`.
    /// \return true
    bool loadVertexShader(const std::string& file);

    /// The same for the fragment shader.
    bool loadFragmentShader(const std::string& file);

    /// Makes a new `program` of the two shaders; without both it leaves the old one.
    /// \return true
    bool link();

    /// Has OpenGL draw with the program from now on. Before `link`, nothing happens.
    /// \return true
    bool use() const;

    /// Sets a uniform of one to three floats, in the program in use. The name is looked up anew
    /// each time. A name that the linked program lacks prints
    ///
    ///     no such uniform: <name>
    void setUniform(const std::string& name, float x) const;
    void setUniform(const std::string& name, float x, float y) const;          ///< of type vec2
    void setUniform(const std::string& name, float x, float y, float z) const; ///< of type vec3

    std::string vertexFile;   ///< empty until loaded
    std::string fragmentFile; ///< empty until loaded
    /// The OpenGL program object; 0 until linked. A second `link` makes another and forgets the
    /// first.
    std::uint32_t program = 0;
};
} // namespace tamor
