// Shaders, when memory runs out while their files are read: each shader object that was made is in its
// table, and what failed can be done once more. A count stands for OpenGL, since a driver and its
// compiler would run out of memory, too.
#include "platform/GLee.h"
#include "shaders/ShaderProgram.h"
#include "tests/starved/Shortage.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <string>

namespace tamor::test
{
namespace
{
/// OpenGL's part in the making of shaders, as long as this lives.
struct CountedShaders
{
    static inline GLuint made = 0;

    CountedShaders()
    {
        __glewCreateShader = [](GLenum) { return ++made; };
        __glewShaderSource = [](GLuint, GLsizei, const GLchar* const*, const GLint*) {};
        __glewCompileShader = [](GLuint) {};
        __glewGetShaderiv = [](GLuint, GLenum, GLint*) {};
    }
    ~CountedShaders()
    {
        __glewCreateShader = nullptr;
        __glewShaderSource = nullptr;
        __glewCompileShader = nullptr;
        __glewGetShaderiv = nullptr;
    }
    CountedShaders(const CountedShaders&) = delete;
    CountedShaders& operator=(const CountedShaders&) = delete;
};

TEST(StarvedShaders, AreInTheirTablesOrWereNotMade)
{
    const CountedShaders shaders;
    TemporaryDirectory directory;
    const std::string vertexFile = "a shader with a long name.vert";
    const std::string fragmentFile = "a shader with a long name.frag";
    directory.write(vertexFile, "void main() { gl_Position = gl_Vertex; }\n");
    directory.write(fragmentFile, "void main() { gl_FragColor = vec4(1.0); }\n");

    const int refused = starve([&](Shortage& shortage) {
        vertexShaders.clear();
        fragmentShaders.clear();
        CountedShaders::made = 0;
        ShaderProgram program;
        const auto load = [&] {
            program.loadVertexShader(vertexFile);
            program.loadFragmentShader(fragmentFile);
        };

        const bool isThrough = shortage.during(load);

        GLuint listed = 0;
        for (const auto* table : {&vertexShaders, &fragmentShaders})
            for (const auto& [file, shader] : *table)
                listed += shader != 0 ? 1 : 0;
        EXPECT_EQ(listed, CountedShaders::made);
        EXPECT_EQ(isThrough, listed == 2);
        load();
        EXPECT_EQ(CountedShaders::made, 2U);
        EXPECT_NE(vertexShaders[vertexFile], 0U);
        EXPECT_NE(fragmentShaders[fragmentFile], 0U);
    });
    EXPECT_GE(refused, 10);
}
} // namespace
} // namespace tamor::test
