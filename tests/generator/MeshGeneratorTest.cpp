#include "generator/MeshGenerator.h"
#include "tests/generator/PlainTerrain.h"
#include "tests/support/CapturedErrors.h"
#include "tests/support/TemporaryDirectory.h"
#include "tests/textures/LiveArrays.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <string>
#include <vector>

namespace tamor
{
namespace
{
using test::CapturedErrors;
using test::TemporaryDirectory;

using Triple = std::array<std::int32_t, 3>;

std::vector<float> heights(const TerrainMesh& mesh)
{
    std::vector<float> result;
    for (const Vertex& vertex : mesh.vertices)
        result.push_back(vertex.position.y);
    return result;
}

/// The last number that a fractal of this many divisions leaves the random source at, by counting.
int randAfter(int calls)
{
    for (int k = 0; k < calls; k++)
        std::rand();
    return std::rand();
}

void expectPosition(const Vertex& vertex, float x, float y, float z)
{
    EXPECT_FLOAT_EQ(vertex.position.x, x);
    EXPECT_FLOAT_EQ(vertex.position.y, y);
    EXPECT_FLOAT_EQ(vertex.position.z, z);
    EXPECT_EQ(vertex.position.w, 1.0F);
}

/// An image of these reds, first to last in the array's order, whose array ends with it.
struct RedImage : Image
{
    RedImage(std::int32_t newWidth, std::int32_t newHeight, const std::vector<float>& reds)
    {
        clear(newWidth, newHeight);
        for (std::size_t k = 0; k < reds.size(); k++)
            pixels[4 * k] = reds[k];
    }
    ~RedImage() { delete[] pixels; }
    RedImage(const RedImage&) = delete;
    RedImage& operator=(const RedImage&) = delete;
};

TEST(FractalTerrain, OfOneDivisionIsFourCornersAtHeightZero)
{
    std::srand(1);

    const TerrainMesh mesh = fractalTerrain(1, 1.0F, 0.5F, 4.0F, 10.0F, 6.0F);

    ASSERT_EQ(mesh.vertices.size(), 4U);
    expectPosition(mesh.vertices[0], -2.0F, 0.0F, -3.0F);
    expectPosition(mesh.vertices[1], -2.0F, 0.0F, 3.0F);
    expectPosition(mesh.vertices[2], 2.0F, 0.0F, -3.0F);
    expectPosition(mesh.vertices[3], 2.0F, 0.0F, 3.0F);
    EXPECT_EQ(mesh.normalTable.size(), 4U);
    EXPECT_EQ(mesh.faces.size(), 2U);
    std::srand(1);
    const int first = std::rand();
    std::srand(1);
    fractalTerrain(1, 1.0F, 0.5F, 4.0F, 10.0F, 6.0F);
    EXPECT_EQ(std::rand(), first);
}

TEST(FractalTerrain, OfTwoDivisionsHasOneLevel)
{
    std::srand(7);

    const TerrainMesh mesh = fractalTerrain(2, 1.0F, 0.5F, 1.0F, 1.0F, 1.0F);

    // The centre, (1, 1), is the first use of the random source: the corners are 0, so it is the
    // offset alone, between -0.5 and 0.5.
    std::srand(7);
    EXPECT_EQ(mesh.vertices[4].position.y, static_cast<float>(std::rand() / 2147483648.0 - 0.5));
    EXPECT_EQ(mesh.vertices[5].position.y, mesh.vertices[3].position.y);
    EXPECT_EQ(mesh.vertices[7].position.y, mesh.vertices[1].position.y);
    EXPECT_EQ(mesh.faces.size(), 8U);
}

TEST(FractalTerrain, KeepsTheHeightsOfASeed)
{
    std::srand(42);

    const TerrainMesh mesh = fractalTerrain(4, 1.0F, 0.5F, 1.0F, 8.0F, 1.0F);

    const std::vector<float> expected = {
        0.0F,          -3.50561523F,  -3.22640657F, -3.23793411F, 0.0F,
        -1.65106106F,  -2.82440662F,  -4.33845425F, -1.27868629F, -1.65106106F,
        -0.341034532F, -1.61320329F,  -3.73224044F, -3.11716557F, -0.341034532F,
        -0.573833287F, -0.370430946F, -2.6692605F,  -2.61829782F, -0.573833287F,
        0.0F,          -3.50561523F,  -3.22640657F, -3.23793411F, 0.0F};
    EXPECT_EQ(heights(mesh), expected);
}

TEST(FractalTerrain, EqualsThePlainLoopsBitForBit)
{
    struct Row
    {
        int divisions;
        float roughness, decay, scaleX, scaleY, scaleZ;
    };
    // Divisions that are no power of two leave marks; odd halves wrap at other places.
    const Row rows[] = {{1, 1, 0.5F, 1, 1, 1},     {2, 1, 0.5F, 3, 2, 1},
                        {4, 0.3F, 0.7F, 1, -5, 1}, {64, 0.8F, 0.55F, 100, 20, 90},
                        {3, 1, 0.5F, 1, 1, 1},     {6, 1, 0.9F, 7, 3, 5},
                        {7, 1, 1.5F, 1, 2, 3},     {12, 2, 0.5F, 1, 1, 1}};
    for (const Row& row : rows)
        for (unsigned seed = 1; seed < 4; seed++) {
            std::srand(seed);
            const TerrainMesh expected = test::fractalTerrainPlainly(
                row.divisions, row.roughness, row.decay, row.scaleX, row.scaleY, row.scaleZ);
            const int expectedNext = std::rand();

            std::srand(seed);
            const TerrainMesh mesh = fractalTerrain(row.divisions, row.roughness, row.decay,
                                                    row.scaleX, row.scaleY, row.scaleZ);

            EXPECT_EQ(std::rand(), expectedNext) << row.divisions;
            ASSERT_TRUE(test::areSame(mesh, expected)) << row.divisions;
        }
}

TEST(FractalTerrain, RepeatsItsFirstRowAndColumnAndHasCornersOfZero)
{
    std::srand(3);

    const std::vector<float> h = heights(fractalTerrain(16, 1.0F, 0.6F, 1.0F, 5.0F, 1.0F));

    for (std::size_t i = 0; i <= 16; i++) {
        EXPECT_EQ(h[16 * 17 + i], h[i]);
        EXPECT_EQ(h[i * 17 + 16], h[i * 17]);
    }
    EXPECT_EQ(h[0], 0.0F);
    EXPECT_EQ(h[16], 0.0F);
    EXPECT_EQ(h[16 * 17], 0.0F);
    EXPECT_EQ(h[16 * 17 + 16], 0.0F);
}

TEST(FractalTerrain, IsFlatWithoutRoughness)
{
    for (const float height : heights(fractalTerrain(8, 0.0F, 0.5F, 1.0F, 9.0F, 1.0F)))
        EXPECT_EQ(height, 0.0F);
}

TEST(FractalTerrain, UsesTheRandomSourceFiveTimesACellOfEachLevel)
{
    // 8 divisions have levels of 1, 4 and 16 cells.
    std::srand(5);
    const int expected = randAfter(5 * (1 + 4 + 16));

    std::srand(5);
    fractalTerrain(8, 1.0F, 0.5F, 1.0F, 1.0F, 1.0F);

    EXPECT_EQ(std::rand(), expected);
}

TEST(FractalTerrain, KeepsAScaledMarkWhereHalvingNeverComes)
{
    std::srand(1);

    const TerrainMesh mesh = fractalTerrain(3, 1.0F, 0.5F, 1.0F, 2.0F, 1.0F);

    // The only level sets the centre (1, 1) and its neighbours; (2, 2) keeps -90000 x 2 / 4.
    EXPECT_EQ(mesh.vertices[2 * 4 + 2].position.y, -45000.0F);
}

TEST(FractalTerrain, HasNormalsOfZero)
{
    const TerrainMesh mesh = fractalTerrain(2, 1.0F, 0.5F, 1.0F, 1.0F, 1.0F);

    ASSERT_EQ(mesh.normalTable.size(), 9U);
    for (const Vector& normal : mesh.normalTable) {
        EXPECT_EQ(normal.x, 0.0F);
        EXPECT_EQ(normal.y, 0.0F);
        EXPECT_EQ(normal.z, 0.0F);
    }
}

TEST(FractalTerrain, TurnsTheNormalsOfTheSecondFace)
{
    const TerrainMesh mesh = fractalTerrain(2, 1.0F, 0.5F, 1.0F, 1.0F, 1.0F);

    ASSERT_EQ(mesh.faces.size(), 8U);
    EXPECT_EQ(mesh.faces[0].vertex, (Triple{1, 3, 0}));
    EXPECT_EQ(mesh.faces[0].normalIndex, (Triple{1, 3, 0}));
    EXPECT_EQ(mesh.faces[1].vertex, (Triple{1, 4, 3}));
    EXPECT_EQ(mesh.faces[1].normalIndex, (Triple{4, 1, 3}));
    // The last cell, at row 1 and column 1.
    EXPECT_EQ(mesh.faces[6].vertex, (Triple{5, 7, 4}));
    EXPECT_EQ(mesh.faces[6].normalIndex, (Triple{5, 7, 4}));
    EXPECT_EQ(mesh.faces[7].vertex, (Triple{5, 8, 7}));
    EXPECT_EQ(mesh.faces[7].normalIndex, (Triple{8, 5, 7}));
}

TEST(FractalTerrain, OfNoDivisionIsOnePointWithoutAPlace)
{
    const TerrainMesh mesh = fractalTerrain(0, 1.0F, 0.5F, 1.0F, 1.0F, 1.0F);

    ASSERT_EQ(mesh.vertices.size(), 1U);
    EXPECT_TRUE(std::isnan(mesh.vertices[0].position.x));
    EXPECT_EQ(mesh.vertices[0].position.y, 0.0F);
    EXPECT_TRUE(mesh.faces.empty());
}

TEST(FractalTerrain, OfLessThanNoDivisionIsEmpty)
{
    for (const int divisions : {-1, -2, -9, std::numeric_limits<int>::min()}) {
        const TerrainMesh mesh = fractalTerrain(divisions, 1.0F, 0.5F, 1.0F, 1.0F, 1.0F);
        EXPECT_TRUE(mesh.vertices.empty());
        EXPECT_TRUE(mesh.normalTable.empty());
        EXPECT_TRUE(mesh.faces.empty());
    }
}

TEST(ImageTerrain, OfFourPixelsHasFourVerticesAndTwoFaces)
{
    const RedImage image(2, 2, {0.0F, 0.25F, 0.5F, 1.0F});

    const TerrainMesh mesh = imageTerrain(image, 8.0F, 10.0F, 6.0F);

    ASSERT_EQ(mesh.vertices.size(), 4U);
    expectPosition(mesh.vertices[0], -4.0F, 0.0F, -3.0F);
    expectPosition(mesh.vertices[1], -4.0F, 1.25F, 0.0F);
    expectPosition(mesh.vertices[2], 0.0F, 2.5F, -3.0F);
    expectPosition(mesh.vertices[3], 0.0F, 5.0F, 0.0F);
    for (const Vector& normal : mesh.normalTable) {
        EXPECT_EQ(normal.x, 0.0F);
        EXPECT_EQ(normal.y, 1.0F);
        EXPECT_EQ(normal.z, 0.0F);
    }
    ASSERT_EQ(mesh.faces.size(), 2U);
    EXPECT_EQ(mesh.faces[0].vertex, (Triple{1, 2, 0}));
    EXPECT_EQ(mesh.faces[1].vertex, (Triple{1, 3, 2}));
    EXPECT_EQ(mesh.faces[1].normalIndex, (Triple{3, 1, 2}));
}

TEST(ImageTerrain, OfATallImageOverwritesPointsAndLeavesTheLastOnes)
{
    // Two columns of three: the points are numbered 0, 1, 2 and 2, 3, 4, so that 5 is none.
    const RedImage image(2, 3, {0.0F, 0.1F, 0.2F, 0.3F, 0.4F, 0.5F});

    const TerrainMesh mesh = imageTerrain(image, 1.0F, 1.0F, 3.0F);

    ASSERT_EQ(mesh.vertices.size(), 6U);
    expectPosition(mesh.vertices[1], -0.5F, 0.05F, -0.5F);
    expectPosition(mesh.vertices[2], 0.0F, 0.1F, -1.5F);
    expectPosition(mesh.vertices[4], 0.0F, 0.2F, 0.5F);
    expectPosition(mesh.vertices[5], 0.0F, 0.0F, 0.0F);
    EXPECT_EQ(mesh.normalTable[4].y, 1.0F);
    EXPECT_EQ(mesh.normalTable[5].y, 0.0F);
    EXPECT_EQ(mesh.faces.size(), 4U);
}

TEST(ImageTerrain, OfAWideImageStaysInsideItsArrays)
{
    // Three columns of two: the points are numbered 0, 1, then 3, 4, then 6, 7, past the end.
    const RedImage image(3, 2, {0.0F, 0.1F, 0.2F, 0.3F, 0.4F, 0.5F});

    const TerrainMesh mesh = imageTerrain(image, 1.0F, 1.0F, 1.0F);

    ASSERT_EQ(mesh.vertices.size(), 6U);
    expectPosition(mesh.vertices[2], 0.0F, 0.0F, 0.0F);
    expectPosition(mesh.vertices[4], -1.0F / 6.0F, 0.2F, 0.0F);
    expectPosition(mesh.vertices[5], 0.0F, 0.0F, 0.0F);
    ASSERT_EQ(mesh.faces.size(), 4U);
    EXPECT_EQ(mesh.faces[3].vertex, (Triple{4, 7, 6}));
}

TEST(ImageTerrain, OfAVeryWideStripNamesNoFaceThatANumberCannotHold)
{
    const RedImage image(50000, 2, {});

    const TerrainMesh mesh = imageTerrain(image, 1.0F, 1.0F, 1.0F);

    EXPECT_EQ(mesh.vertices.size(), 100000U);
    for (const Face& face : mesh.faces)
        for (const std::int32_t corner : face.vertex)
            ASSERT_GE(corner, 0);
}

TEST(ImageTerrain, OfAVeryWideLineHasTheFirstColumnsPoint)
{
    // All others are numbered past the end: that of column 32768 with 2^32.
    const RedImage image(131072, 1, {0.5F});

    const TerrainMesh mesh = imageTerrain(image, 1.0F, 1.0F, 1.0F);

    ASSERT_EQ(mesh.vertices.size(), 131072U);
    expectPosition(mesh.vertices[0], -0.5F, 0.25F, -0.5F);
}

// The judge is the address sanitiser: images end with their arrays.
TEST(ImageTerrain, OfAnyShapeStaysInsideItsStorage)
{
    for (int width = 1; width < 12; width++)
        for (int height = 1; height < 12; height++) {
            const RedImage image(width, height, {});
            Model model;

            const TerrainMesh mesh = imageTerrain(image, 1.0F, 1.0F, 1.0F);
            putIntoModel(model, mesh);

            EXPECT_EQ(mesh.faces.size(), 2U * static_cast<unsigned>((width - 1) * (height - 1)));
            for (const Face& face : model.faces)
                for (const std::int32_t corner : face.vertex)
                    ASSERT_LT(corner, width * height);
        }
}

TEST(ImageTerrain, OfAnImageWithoutPixelsIsEmpty)
{
    for (const auto& size : {std::array{0, 0}, std::array{0, 4}, std::array{4, 0},
                             std::array{-2, 5}, std::array{-2, -5}}) {
        const RedImage image(size[0], size[1], {});
        const TerrainMesh mesh = imageTerrain(image, 1.0F, 1.0F, 1.0F);
        EXPECT_TRUE(mesh.vertices.empty());
        EXPECT_TRUE(mesh.faces.empty());
    }
}

TEST(NoiseTerrain, TakesItsHeightsFromThePerlinImage)
{
    const RedImage image(20, 20, {});
    RedImage noise(20, 20, {});
    noise.perlin(3, 0.5F, 0.8F, 0.5F, 0.4F);

    const TerrainMesh mesh = noiseTerrain(20, 3, 0.5F, 0.8F, 0.5F, 0.4F, 40.0F, 10.0F, 40.0F);

    ASSERT_EQ(mesh.vertices.size(), 400U);
    EXPECT_EQ(mesh.faces.size(), 2U * 19 * 19);
    bool hasHills = false;
    for (std::size_t p = 0; p < 400; p++) {
        ASSERT_FLOAT_EQ(mesh.vertices[p].position.y, 5.0F * noise.pixels[4 * p]);
        hasHills = hasHills || mesh.vertices[p].position.y > 0.5F;
    }
    EXPECT_TRUE(hasHills);
}

TEST(NoiseTerrain, OfNoSizeIsEmpty)
{
    for (const int size : {0, -3})
        EXPECT_TRUE(noiseTerrain(size, 3, 0.5F, 1, 0.5F, 0.5F, 1, 1, 1).vertices.empty());
}

/// A run-length encoded true-colour TGA file of `size` x `size` pixels of these greys.
std::string greyTGA(char size, const std::string& greys)
{
    std::string bytes = {0, 0, 10, 0, 0, 0, 0, 0, 0, 0, 0, 0, size, 0, size, 0, 24, 0};
    for (const char grey : greys)
        bytes += {0, grey, grey, grey}; // a packet of one pixel
    return bytes;
}

TEST(FileTerrain, BlursTheImageByFour)
{
    const TemporaryDirectory directory;
    directory.write("map.tga", greyTGA(2, {0, 0, 0, '\xff'}));
    RedImage expected(2, 2, {0.0F, 0.0F, 0.0F, 1.0F});
    expected.blur(4);

    const TerrainMesh mesh = fileTerrain("map.tga", 2.0F, 2.0F, 2.0F);

    ASSERT_EQ(mesh.vertices.size(), 4U);
    ASSERT_EQ(mesh.faces.size(), 2U);
    for (std::size_t p = 0; p < 4; p++)
        EXPECT_EQ(mesh.vertices[p].position.y, expected.pixels[4 * p]);
    EXPECT_GT(mesh.vertices[0].position.y, 0.1F);
    EXPECT_EQ(mesh.normalTable[3].y, 1.0F);
}

TEST(FileTerrain, OfAFileThatCannotBeReadIsThatOfANewImage)
{
    const CapturedErrors errors;

    const TerrainMesh mesh = fileTerrain("no such picture", 1.0F, 1.0F, 1.0F);

    EXPECT_EQ(mesh.vertices.size(), 4U);
    EXPECT_EQ(mesh.faces.size(), 2U);
    EXPECT_EQ(errors.text(), "no such picture: Unsupported texture format\n");
}

TEST(PutIntoModel, GivesEachVertexTheNormalThatTheLastFaceNames)
{
    TerrainMesh mesh = fractalTerrain(1, 1.0F, 0.5F, 1.0F, 1.0F, 1.0F);
    for (std::size_t p = 0; p < 4; p++)
        mesh.normalTable[p] = Vector(static_cast<float>(p + 1), 0.0F, 0.0F);
    Model model;

    putIntoModel(model, mesh);

    // The second face has corners 1, 3, 2 and normals 3, 1, 2; corner 0 is the first face's alone.
    ASSERT_EQ(model.vertices.size(), 4U);
    EXPECT_EQ(model.vertices[0].normal.x, 1.0F);
    EXPECT_EQ(model.vertices[1].normal.x, 4.0F);
    EXPECT_EQ(model.vertices[2].normal.x, 3.0F);
    EXPECT_EQ(model.vertices[3].normal.x, 2.0F);
    ASSERT_EQ(model.faces.size(), 2U);
    EXPECT_EQ(model.faces[1].material, -1);
    EXPECT_EQ(model.faces[1].colour.x, 1.0F);
}

TEST(PutIntoModel, LeavesOutFacesWithoutVertices)
{
    const RedImage image(3, 2, {});
    Model model;

    putIntoModel(model, imageTerrain(image, 1.0F, 1.0F, 1.0F));

    // Points 6 and 7 are no vertices, so of the second cell only 4, 6, 3 and 4, 7, 6 would remain.
    ASSERT_EQ(model.faces.size(), 2U);
    EXPECT_EQ(model.faces[1].vertex, (Triple{1, 4, 3}));
}

TEST(PutIntoModel, ReplacesWhatTheModelHeld)
{
    Model model;
    model.makeCube();

    putIntoModel(model, fractalTerrain(2, 1.0F, 0.5F, 1.0F, 1.0F, 1.0F));

    EXPECT_EQ(model.vertices.size(), 9U);
    EXPECT_EQ(model.faces.size(), 8U);
}

TEST(PutIntoModel, MakesNormalsComputableThatLookUp)
{
    Model model;
    putIntoModel(model, fractalTerrain(2, 0.0F, 0.5F, 1.0F, 1.0F, 1.0F));

    model.computeNormals(false);

    for (const Vertex& vertex : model.vertices)
        EXPECT_FLOAT_EQ(vertex.normal.y, 1.0F);
}

TEST(FileTerrain, OfASizeWithoutPixelsIsEmpty)
{
    const TemporaryDirectory directory;
    const CapturedErrors errors;
    // A header of red, green and blue alone, which is refused behind its size.
    std::string png("\x89PNG\r\n\x1A\n\0\0\0\15IHDR\0\0\0\5\0\0\0\3\10\2\0\0\0crc?x", 34);
    for (const char* side : {"\0\0\0\5", "\0\0\x7F\xFF", "\x7F\xFF\xFF\xFF"}) {
        png.replace(16, 4, side, 4);
        directory.write("map.png", png);

        const TerrainMesh mesh = fileTerrain("map.png", 1.0F, 1.0F, 1.0F);

        EXPECT_TRUE(mesh.vertices.empty());
        EXPECT_TRUE(mesh.faces.empty());
        EXPECT_EQ(MeshGenerator::generateFromFile("map.png", 1.0F, 1.0F, 1.0F), nullptr);
    }
}

TEST(FileTerrain, OfAFailedPictureOfNoPixelsIsEmpty)
{
    const TemporaryDirectory directory;
    const CapturedErrors errors;
    directory.write("map.png", std::string("\x89PNG\r\n\x1A\n\0\0\0\15IHDR\0\0\0\0\0\0\0\3\10\2\0\0"
                                           "\0crc?x",
                                           34));

    EXPECT_TRUE(fileTerrain("map.png", 1.0F, 1.0F, 1.0F).vertices.empty());
}

TEST(FractalTerrain, ThatTheMemoryDoesNotHoldIsEmpty)
{
    constexpr std::int32_t largest = std::numeric_limits<std::int32_t>::max();
    for (const std::int32_t divisions : {largest, largest - 1, 1 << 30}) {
        const TerrainMesh mesh = fractalTerrain(divisions, 1.0F, 0.5F, 1.0F, 1.0F, 1.0F);

        EXPECT_TRUE(mesh.vertices.empty());
        EXPECT_TRUE(mesh.faces.empty());
        EXPECT_EQ(MeshGenerator::generateFractal(divisions, 1.0F, 0.5F, 1.0F, 1.0F, 1.0F), nullptr);
    }
}

TEST(NoiseTerrain, ThatTheMemoryDoesNotHoldIsEmpty)
{
    constexpr std::int32_t largest = std::numeric_limits<std::int32_t>::max();

    EXPECT_TRUE(
        noiseTerrain(largest, 1, 0.5F, 1.0F, 0.5F, 0.5F, 1.0F, 1.0F, 1.0F).vertices.empty());
}

TEST(MeshGenerator, LetsGoOfItsImages)
{
    const TemporaryDirectory directory;
    directory.write("map.tga", greyTGA(2, {0, 0, 0, 1}));

    // Of each image four pixels are left; the reader leaves the bytes that it unpacked besides, 24
    // and as many for a packet more.
    int arrays = test::liveArrays();
    std::size_t bytes = test::liveArrayBytes();
    MeshGenerator::generateFromNoise(64, 1, 0.5F, 1.0F, 0.5F, 0.5F, 1.0F, 1.0F, 1.0F);
    EXPECT_EQ(test::liveArrays(), arrays + 1);
    EXPECT_LT(test::liveArrayBytes(), bytes + 128);

    arrays = test::liveArrays();
    bytes = test::liveArrayBytes();
    MeshGenerator::generateFromFile("map.tga", 1.0F, 1.0F, 1.0F);
    EXPECT_EQ(test::liveArrays(), arrays + 2);
    EXPECT_LT(test::liveArrayBytes(), bytes + 600);
}

TEST(MeshGenerator, ReadsTheFileThatItIsGiven)
{
    const CapturedErrors errors;

    EXPECT_EQ(MeshGenerator::generateFromFile("no such picture", 1.0F, 1.0F, 1.0F), nullptr);

    EXPECT_EQ(errors.text(), "no such picture: Unsupported texture format\n");
}

TEST(MeshGenerator, LeavesNothingBehind)
{
    const TemporaryDirectory directory;
    directory.write("map.tga", greyTGA(2, {0, 0, 0, 1}));
    MeshGenerator generator;

    EXPECT_EQ(generator.generateFractal(4, 1, 0.5F, 1, 1, 1), nullptr);
    EXPECT_EQ(generator.generateFromFile("map.tga", 1, 1, 1), nullptr);
    EXPECT_EQ(generator.generateFromNoise(8, 2, 0.5F, 1, 0.5F, 0.5F, 1, 1, 1), nullptr);

    EXPECT_TRUE(generator.vertices.empty());
    EXPECT_TRUE(generator.faces.empty());
}

TEST(MeshGenerator, StepsTheRandomSourceAsItsTerrainDoes)
{
    std::srand(9);
    const int expected = randAfter(5 * (1 + 4));

    std::srand(9);
    MeshGenerator::generateFractal(4, 1.0F, 0.5F, 1.0F, 1.0F, 1.0F);

    EXPECT_EQ(std::rand(), expected);
}
} // namespace
} // namespace tamor
