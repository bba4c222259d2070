#include "shaders/ShaderProgram.h"

#include "platform/GLee.h"
#include "tests/support/CapturedErrors.h"
#include "tests/support/TemporaryDirectory.h"
#include "tests/support/TestWindow.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace tamor
{
namespace
{
using test::CapturedErrors;
using test::Pixel;
using test::TemporaryDirectory;

constexpr char positionShader[] = "void main() { gl_Position = gl_Vertex; }\n";
constexpr char redShader[] = "void main() { gl_FragColor = vec4(1.0, 0.0, 0.0, 1.0); }\n";
constexpr char blueShader[] = "void main() { gl_FragColor = vec4(0.0, 0.0, 1.0, 1.0); }\n";
constexpr char brokenShader[] = "void main() { gl_FragColor = no such thing; }\n";
constexpr char uniformShader[] = "uniform float one;\n"
                                 "uniform vec2 two;\n"
                                 "uniform vec3 three;\n"
                                 "void main() {\n"
                                 "    vec3 colour = three;\n"
                                 "    colour.r += one;\n"
                                 "    colour.gb += two;\n"
                                 "    gl_FragColor = vec4(colour, 1.0);\n"
                                 "}\n";

/// What the code under test asked of OpenGL, noted on the way to the driver.
struct Spy
{
    static inline std::vector<GLenum> createdKinds;
    static inline std::vector<GLuint> statusAskedOf;
    static inline std::vector<GLint> statusBefore;
    static inline std::vector<GLuint> attached;
    static inline std::vector<GLint> linkStatusBefore;
    static inline int createdPrograms = 0;
    static inline int used = 0;

    static inline PFNGLCREATESHADERPROC createShader;
    static inline PFNGLGETSHADERIVPROC getShaderStatus;
    static inline PFNGLATTACHSHADERPROC attachShader;
    static inline PFNGLGETPROGRAMIVPROC getProgramStatus;
    static inline PFNGLCREATEPROGRAMPROC createProgram;
    static inline PFNGLUSEPROGRAMPROC useProgram;

    Spy()
    {
        createdKinds.clear();
        statusAskedOf.clear();
        statusBefore.clear();
        attached.clear();
        linkStatusBefore.clear();
        createdPrograms = used = 0;
        createShader = __glewCreateShader;
        getShaderStatus = __glewGetShaderiv;
        attachShader = __glewAttachShader;
        getProgramStatus = __glewGetProgramiv;
        createProgram = __glewCreateProgram;
        useProgram = __glewUseProgram;
        __glewCreateShader = [](GLenum kind) {
            createdKinds.push_back(kind);
            return createShader(kind);
        };
        __glewGetShaderiv = [](GLuint shader, GLenum name, GLint* value) {
            if (name == GL_COMPILE_STATUS) {
                statusAskedOf.push_back(shader);
                statusBefore.push_back(*value);
            }
            getShaderStatus(shader, name, value);
        };
        __glewAttachShader = [](GLuint program, GLuint shader) {
            attached.push_back(shader);
            attachShader(program, shader);
        };
        __glewGetProgramiv = [](GLuint program, GLenum name, GLint* value) {
            if (name == GL_LINK_STATUS)
                linkStatusBefore.push_back(*value);
            getProgramStatus(program, name, value);
        };
        __glewCreateProgram = [] {
            createdPrograms++;
            return createProgram();
        };
        __glewUseProgram = [](GLuint program) {
            used++;
            useProgram(program);
        };
    }

    ~Spy()
    {
        __glewCreateShader = createShader;
        __glewGetShaderiv = getShaderStatus;
        __glewAttachShader = attachShader;
        __glewGetProgramiv = getProgramStatus;
        __glewCreateProgram = createProgram;
        __glewUseProgram = useProgram;
    }

    Spy(const Spy&) = delete;
    Spy& operator=(const Spy&) = delete;
};

class ShaderProgramGLTest : public test::WindowTest
{
protected:
    void SetUp() override
    {
        WindowTest::SetUp();
        // The shader objects of an earlier test went with its context.
        vertexShaders.clear();
        fragmentShaders.clear();
        directory.write("position.vert", positionShader);
        directory.write("red.frag", redShader);
        directory.write("blue.frag", blueShader);
        directory.write("broken.frag", brokenShader);
        directory.write("uniforms.frag", uniformShader);
    }

    static ShaderProgram linked(const std::string& fragmentFile)
    {
        ShaderProgram shader;
        shader.loadVertexShader("position.vert");
        shader.loadFragmentShader(fragmentFile);
        shader.link();
        return shader;
    }

    /// The colour of a square over the whole window, white by fixed-function drawing.
    static Pixel drawnColour()
    {
        glClear(GL_COLOR_BUFFER_BIT);
        glColor3f(1.0F, 1.0F, 1.0F);
        glRectf(-1.0F, -1.0F, 1.0F, 1.0F);
        return picture().at(400, 300);
    }

    TemporaryDirectory directory;
};

TEST(ShaderProgram, StartsEmpty)
{
    const ShaderProgram shader;

    EXPECT_EQ(shader.vertexFile, "");
    EXPECT_EQ(shader.fragmentFile, "");
    EXPECT_EQ(shader.program, 0U);
}

TEST_F(ShaderProgramGLTest, DrawsByItsTwoShadersOnceInUse)
{
    ShaderProgram shader;
    EXPECT_TRUE(shader.loadFragmentShader("red.frag"));
    EXPECT_TRUE(shader.loadVertexShader("position.vert"));
    EXPECT_TRUE(shader.link());
    EXPECT_EQ(drawnColour(), (Pixel{255, 255, 255}));

    EXPECT_TRUE(shader.use());

    EXPECT_EQ(drawnColour(), (Pixel{255, 0, 0}));
}

TEST_F(ShaderProgramGLTest, ProgramsShareTheShaderOfAFile)
{
    const Spy spy;

    const ShaderProgram first = linked("red.frag");
    const ShaderProgram second = linked("blue.frag");

    EXPECT_EQ(Spy::createdKinds,
              (std::vector<GLenum>{GL_VERTEX_SHADER, GL_FRAGMENT_SHADER, GL_FRAGMENT_SHADER}));
    EXPECT_EQ(Spy::attached,
              (std::vector<GLuint>{vertexShaders["position.vert"], fragmentShaders["red.frag"],
                                   vertexShaders["position.vert"], fragmentShaders["blue.frag"]}));
    EXPECT_NE(first.program, second.program);
}

TEST_F(ShaderProgramGLTest, AFileHasOneShaderOfEachKind)
{
    const Spy spy;
    ShaderProgram shader;

    shader.loadVertexShader("position.vert");
    shader.loadFragmentShader("position.vert");

    EXPECT_EQ(Spy::createdKinds, (std::vector<GLenum>{GL_VERTEX_SHADER, GL_FRAGMENT_SHADER}));
    EXPECT_NE(vertexShaders["position.vert"], fragmentShaders["position.vert"]);
}

TEST_F(ShaderProgramGLTest, AFragmentShaderAsksForTheVertexShadersStatus)
{
    const Spy spy;
    ShaderProgram shader;

    shader.loadVertexShader("position.vert");
    shader.loadFragmentShader("red.frag");

    const GLuint vertexShader = vertexShaders["position.vert"];
    EXPECT_EQ(Spy::statusAskedOf, (std::vector<GLuint>{vertexShader, vertexShader}));
    EXPECT_EQ(Spy::statusBefore, (std::vector<GLint>{9, 9}));
}

TEST_F(ShaderProgramGLTest, AFragmentShaderAloneEntersAVertexShaderWithoutAName)
{
    const Spy spy;
    ShaderProgram shader;

    shader.loadFragmentShader("red.frag");

    ASSERT_EQ(vertexShaders.size(), 1U);
    EXPECT_EQ(vertexShaders.begin()->first, "");
    EXPECT_EQ(vertexShaders.begin()->second, 0U);
    EXPECT_EQ(Spy::statusAskedOf, std::vector<GLuint>{0});
}

TEST_F(ShaderProgramGLTest, ASecondLoadOfAFileAsksNothing)
{
    ShaderProgram shader;
    shader.loadVertexShader("position.vert");
    shader.loadFragmentShader("red.frag");
    const Spy spy;
    ShaderProgram other;

    other.loadVertexShader("position.vert");
    other.loadFragmentShader("red.frag");

    EXPECT_EQ(other.vertexFile, "position.vert");
    EXPECT_EQ(other.fragmentFile, "red.frag");
    EXPECT_TRUE(Spy::createdKinds.empty());
    EXPECT_TRUE(Spy::statusAskedOf.empty());
}

TEST_F(ShaderProgramGLTest, LinkingAsksForItsStatusOnce)
{
    const Spy spy;

    linked("red.frag");

    EXPECT_EQ(Spy::linkStatusBefore, std::vector<GLint>{9});
}

TEST_F(ShaderProgramGLTest, WithOneShaderLinksNothing)
{
    const Spy spy;
    ShaderProgram vertexOnly;
    vertexOnly.loadVertexShader("position.vert");
    ShaderProgram fragmentOnly;
    fragmentOnly.loadFragmentShader("red.frag");

    EXPECT_TRUE(vertexOnly.link());
    EXPECT_TRUE(fragmentOnly.link());

    EXPECT_EQ(vertexOnly.program, 0U);
    EXPECT_EQ(fragmentOnly.program, 0U);
    EXPECT_EQ(Spy::createdPrograms, 0);
}

TEST_F(ShaderProgramGLTest, IsNotUsedBeforeItIsLinked)
{
    const Spy spy;
    const ShaderProgram shader;

    EXPECT_TRUE(shader.use());

    EXPECT_EQ(Spy::used, 0);
}

TEST_F(ShaderProgramGLTest, ALaterLoadShowsAfterTheNextLink)
{
    ShaderProgram shader = linked("red.frag");
    const std::uint32_t firstProgram = shader.program;

    shader.loadFragmentShader("blue.frag");
    EXPECT_NE(fragmentShaders["blue.frag"], 0U);
    EXPECT_EQ(shader.program, firstProgram);
    shader.use();
    EXPECT_EQ(drawnColour(), (Pixel{255, 0, 0}));

    shader.link();
    EXPECT_NE(shader.program, firstProgram);
    shader.use();
    EXPECT_EQ(drawnColour(), (Pixel{0, 0, 255}));
}

TEST_F(ShaderProgramGLTest, SetsUniformsOfOneToThreeFloats)
{
    const ShaderProgram shader = linked("uniforms.frag");
    shader.use();
    const CapturedErrors errors;

    shader.setUniform("one", 0.2F);
    shader.setUniform("two", 0.4F, 0.0F);
    shader.setUniform("three", 0.4F, 0.2F, 0.8F);

    EXPECT_EQ(drawnColour(), (Pixel{153, 153, 204}));
    EXPECT_EQ(errors.text(), "");
}

TEST_F(ShaderProgramGLTest, SaysThatAUniformIsUnknown)
{
    const ShaderProgram shader = linked("uniforms.frag");
    shader.use();
    const CapturedErrors errors;

    shader.setUniform("four", 1.0F);
    shader.setUniform("five", 1.0F, 2.0F);
    shader.setUniform("", 1.0F, 2.0F, 3.0F);

    EXPECT_EQ(errors.text(), "no such uniform: four\nno such uniform: five\nno such uniform: \n");
}

TEST_F(ShaderProgramGLTest, HasNoUniformBeforeItIsLinked)
{
    const ShaderProgram shader;
    const CapturedErrors errors;

    shader.setUniform("one", 1.0F);

    EXPECT_EQ(errors.text(), "no such uniform: one\n");
}

TEST_F(ShaderProgramGLTest, StaysSilentOnAShaderThatDoesNotCompile)
{
    const CapturedErrors errors;

    const ShaderProgram shader = linked("broken.frag");
    EXPECT_TRUE(shader.use());

    EXPECT_NE(shader.program, 0U);
    EXPECT_EQ(errors.text(), "");
    shader.setUniform("one", 1.0F);
    EXPECT_EQ(errors.text(), "no such uniform: one\n");
}

TEST_F(ShaderProgramGLTest, StaysSilentOnAMissingFile)
{
    const CapturedErrors errors;
    ShaderProgram shader;

    EXPECT_TRUE(shader.loadVertexShader("missing.vert"));
    EXPECT_TRUE(shader.loadFragmentShader("missing.frag"));
    EXPECT_TRUE(shader.link());

    EXPECT_NE(vertexShaders["missing.vert"], 0U);
    EXPECT_NE(shader.program, 0U);
    EXPECT_EQ(errors.text(), "");
}
} // namespace
} // namespace tamor
