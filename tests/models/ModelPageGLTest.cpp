// What docs/models.md says: its file is loaded, and its lines for a host are run.
#include "platform/GLee.h"

#include "models/ModelFactory.h"
#include "tests/models/Matchers.h"
#include "tests/support/CapturedErrors.h"
#include "tests/support/TemporaryDirectory.h"
#include "tests/support/TestWindow.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <memory>
#include <string>

using namespace tamor;
using namespace tamor::test;

namespace
{
/// The lines of `path` between the one that is `begin` and the next that is `end`, without the
/// blanks that they begin with.
std::string linesBetween(const std::string& path, const std::string& begin, const std::string& end)
{
    std::ifstream file(path);
    EXPECT_TRUE(file.is_open()) << path;
    std::string text;
    bool isInside = false;
    for (std::string line; std::getline(file, line);) {
        line.erase(0, std::min(line.find_first_not_of(' '), line.size()));
        if (isInside && line == end)
            return text;
        if (isInside)
            text += line + "\n";
        isInside = isInside || line == begin;
    }
    ADD_FAILURE() << path << " has no " << begin;
    return text;
}

const std::string page = TAMOR_SOURCE "/docs/models.md";

TEST(ModelPage, HasASmallestFileThatWorks)
{
    const TemporaryDirectory directory;
    directory.write("triangle.ms3d", linesBetween(page, "```text triangle.ms3d", "```"));
    const CapturedErrors errors;

    const std::unique_ptr<Model> model(createModel("triangle.ms3d"));

    EXPECT_EQ(model->frameCount, 1);
    ASSERT_EQ(model->vertices.size(), 3U);
    EXPECT_THAT(model->vertices[2].position, isVector(0, 1, 0));
    EXPECT_THAT(model->vertices[2].normal, isVector(0, 0, 1));
    EXPECT_EQ(model->faces.size(), 1U);
    EXPECT_EQ(errors.text(), "");
}

class ModelPageGLTest : public WindowTest
{};

TEST_F(ModelPageGLTest, HasLinesForAHostThatWork)
{
    EXPECT_EQ(linesBetween(page, "```cpp", "```"),
              linesBetween(TAMOR_SOURCE "/tests/models/ModelPageGLTest.cpp", "// {", "// }"));

    const DirectoryChange toTheModel(TAMOR_SOURCE "/examples/models");
    const float time = 12.0F;
    // clang-format off
    // {
    std::unique_ptr<Model> model(createModel("fish.ms3d")); // once

    glEnable(GL_LIGHTING); // each frame: drawing changes these three
    glEnable(GL_TEXTURE_2D);
    glPushMatrix();
    model->update(time);
    model->render(false);
    glPopMatrix();
    // }
    // clang-format on

    EXPECT_EQ(model->renderMode, 2);
    EXPECT_NE(model->materials.at(0).textureId, 0U);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}
} // namespace
