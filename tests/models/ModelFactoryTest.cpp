#include "models/ModelFactory.h"
#include "models/MS3DModel.h"
#include "tests/models/Matchers.h"
#include "tests/models/ModelFileText.h"
#include "tests/support/CapturedErrors.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <new>
#include <typeinfo>

using namespace tamor;
using namespace tamor::test;

namespace
{
/// Objects of the size of a model, which is no other's.
int liveModels = 0;
} // namespace

/// This program's own, which counts models: from malloc, so that the sanitisers watch objects as
/// they do all others.
void* operator new(std::size_t size)
{
    void* const object = std::malloc(size == 0 ? 1 : size);
    if (object == nullptr)
        throw std::bad_alloc();
    if (size == sizeof(Model))
        liveModels++;
    return object;
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return std::malloc(size == 0 ? 1 : size);
}

void operator delete(void* object) noexcept
{
    std::free(object);
}

void operator delete(void* object, std::size_t size) noexcept
{
    if (object != nullptr && size == sizeof(Model))
        liveModels--;
    std::free(object);
}

namespace
{
const std::type_info& typeOf(const Model& model)
{
    return typeid(model);
}

std::unique_ptr<Model> create(const std::string& name)
{
    return std::unique_ptr<Model>(createModel(name));
}

bool isEmpty(const Model& model)
{
    return model.vertices.empty() && model.faces.empty() && model.bones.empty() &&
           model.materials.empty();
}

TEST(CreateModel, MakesTheBuiltInShapes)
{
    const auto cube = create("cube");
    const auto teapot = create("teapot");

    EXPECT_EQ(cube->vertices.size(), 20U);
    EXPECT_EQ(cube->faces.size(), 12U);
    EXPECT_TRUE(cube->bones.empty() && cube->materials.empty());
    EXPECT_EQ(teapot->vertices.size(), 301U);
    EXPECT_EQ(teapot->faces.size(), 576U);
    // No preparation follows, which would mark the colours.
    EXPECT_THAT(cube->faces[0].colour, isVector(0, 0, 0));
    EXPECT_THAT(teapot->faces[0].colour, isVector(0, 0, 0));
}

TEST(CreateModel, GivesAnEmptyModelForAVRXName)
{
    const CapturedErrors errors;

    const auto model = create("model.vrx");

    EXPECT_TRUE(isEmpty(*model));
    EXPECT_EQ(typeOf(*model), typeid(Model));
    EXPECT_EQ(errors.text(), "");
}

TEST(CreateModel, GivesAnEmptyModelForANameOfNothing)
{
    const CapturedErrors errors;
    for (const char* name : {"thing", "", "a", "ab", "model.vrx.txt", "model.ms3d.txt", "Cube"}) {
        if (std::string(name).size() == 4)
            continue;
        const auto model = create(name);
        EXPECT_TRUE(isEmpty(*model)) << name;
        EXPECT_EQ(typeOf(*model), typeid(Model)) << name;
    }
    EXPECT_EQ(errors.text(), "");
}

TEST(CreateModel, ReadsAnMS3DFileAndPreparesIt)
{
    const TemporaryDirectory directory;
    ModelFileText file;
    file.bones = "Bones: 1\n\"A\"\n\"\"\n0 1 2 3 0 0 0\n0\n0\n";
    directory.write("model.ms3d", file.text());

    const auto model = create("model.ms3d");

    EXPECT_NE(dynamic_cast<MS3DModel*>(model.get()), nullptr);
    EXPECT_EQ(model->faces.size(), 1U);
    EXPECT_THAT(model->faces[0].colour, isVector(-1, -1, -1));
    EXPECT_THAT(model->bones[0]->absolute, isVector(1, 2, 3));
}

TEST(CreateModel, TakesABuiltInNameOnlyWhole)
{
    const TemporaryDirectory directory;
    const CapturedErrors errors;

    const auto model = create("cube.ms3d");

    EXPECT_TRUE(isEmpty(*model));
    EXPECT_EQ(errors.text(), "'cube.ms3d': Invalid model filename\n");
}

TEST(CreateModel, TakesAnyNameOfThreeCharactersForAVRXFile)
{
    const CapturedErrors errors;

    const auto model = create("abc");

    EXPECT_TRUE(isEmpty(*model));
    EXPECT_EQ(typeOf(*model), typeid(Model));
    EXPECT_EQ(errors.text(), "");
}

TEST(CreateModel, TakesAnyNameOfFourCharactersForAnMS3DFile)
{
    const TemporaryDirectory directory;
    directory.write("wxyz", ModelFileText().text());
    const CapturedErrors errors;

    const auto missing = create("abcd");
    const auto present = create("wxyz");

    EXPECT_TRUE(isEmpty(*missing));
    EXPECT_EQ(errors.text(), "'abcd': Invalid model filename\n");
    EXPECT_EQ(present->faces.size(), 1U);
}

TEST(CreateModel, LeavesThePlainModelOfAnMS3DName)
{
    const CapturedErrors errors;
    for (const char* name : {"no.ms3d", "abcd", ".vrx"}) {
        const int before = liveModels;
        create(name);
        EXPECT_EQ(liveModels, before + 1) << name;
    }
    for (const char* name : {"cube", "teapot", "no.vrx", "abc", "thing"}) {
        const int before = liveModels;
        create(name);
        EXPECT_EQ(liveModels, before) << name;
    }
}

TEST(CreateModel, TakesTheBareSuffixForBoth)
{
    const TemporaryDirectory directory;
    const CapturedErrors errors;

    const auto model = create(".vrx");

    EXPECT_NE(dynamic_cast<MS3DModel*>(model.get()), nullptr);
    EXPECT_EQ(errors.text(), "'.vrx': Invalid model filename\n");
}
} // namespace
