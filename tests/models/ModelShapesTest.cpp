#include "models/Model.h"
#include "models/internal/TeapotTables.h"
#include "tests/models/Matchers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <utility>

using namespace tamor;
using tamor::test::isVector;

namespace
{
TEST(ModelRecords, HaveTheSizesOfTheFormat)
{
    EXPECT_EQ(sizeof(Vertex), 44U);
    EXPECT_EQ(sizeof(Face), 64U);
    EXPECT_EQ(sizeof(KeyFrame), 20U);
}

TEST(Model, IsNewWithoutContentsAndWithoutAChosenWayToDraw)
{
    const Model model;

    EXPECT_TRUE(model.vertices.empty() && model.faces.empty() && model.bones.empty());
    EXPECT_EQ(model.renderMode, 0);
    EXPECT_THAT(model.position, isVector(0, 0, 0));
    EXPECT_THAT(model.rotation, isVector(0, 0, 0));
}

TEST(Model, LoadsSavesAndReleasesNothing)
{
    Model model;

    EXPECT_EQ(model.load("any.file"), 0);
    EXPECT_EQ(model.save(), 0);
    EXPECT_EQ(model.release(), 0);
    EXPECT_TRUE(model.vertices.empty());
}

TEST(ModelMakeCube, GivesTwentyVerticesAndTwelveFacesAndNothingElse)
{
    Model model;

    EXPECT_TRUE(model.makeCube());

    EXPECT_EQ(model.vertices.size(), 20U);
    EXPECT_EQ(model.faces.size(), 12U);
    EXPECT_TRUE(model.bones.empty());
    EXPECT_TRUE(model.materials.empty());
    EXPECT_TRUE(model.restVertices.empty());
}

TEST(ModelMakeCube, HasTheTablesRows)
{
    Model model;
    model.makeCube();

    EXPECT_THAT(model.vertices[0].position, isVector(-1, 1, 1));
    EXPECT_THAT(model.vertices[7].position, isVector(1, -1, -1));
    EXPECT_THAT(model.vertices[11].position, isVector(-1, -1, -1));
    EXPECT_THAT(model.vertices[17].position, isVector(1, 1, 1));
    EXPECT_THAT(model.vertices[19].position, isVector(1, -1, 1));
    using Corners = std::array<std::int32_t, 3>;
    const std::vector<Corners> expected = {
        {0, 1, 2},    {1, 3, 2},    {4, 5, 6},   {5, 7, 6},   {8, 9, 10},   {9, 11, 10},
        {12, 13, 14}, {13, 15, 14}, {12, 16, 6}, {16, 17, 6}, {18, 13, 19}, {13, 7, 19},
    };
    std::vector<Corners> corners;
    for (const Face& face : model.faces)
        corners.push_back(face.vertex);
    EXPECT_EQ(corners, expected);
}

TEST(ModelMakeCube, GivesASharedVertexTheNormalOfItsLastFace)
{
    Model model;
    model.makeCube();

    EXPECT_THAT(model.vertices[0].normal, isVector(0, 0, 1));
    EXPECT_THAT(model.vertices[4].normal, isVector(1, 0, 0));
    EXPECT_THAT(model.vertices[10].normal, isVector(0, 0, -1));
    EXPECT_THAT(model.vertices[14].normal, isVector(-1, 0, 0));
    // These belong to a side first, and to the top or the bottom last.
    EXPECT_THAT(model.vertices[6].normal, isVector(0, 1, 0));
    EXPECT_THAT(model.vertices[12].normal, isVector(0, 1, 0));
    EXPECT_THAT(model.vertices[7].normal, isVector(0, -1, 0));
    EXPECT_THAT(model.vertices[13].normal, isVector(0, -1, 0));
}

TEST(ModelMakeCube, LeavesIndicesOfNormalsOutOfTheFacesAndColoursBlack)
{
    Model model;
    model.makeCube();

    for (const Face& face : model.faces) {
        EXPECT_EQ(face.normalIndex, (std::array<std::int32_t, 3>{0, 0, 0}));
        EXPECT_THAT(face.colour, isVector(0, 0, 0));
    }
}

TEST(ModelMakeTeapot, HasTheStatedSizes)
{
    Model model;

    EXPECT_TRUE(model.makeTeapot());

    EXPECT_EQ(model.vertices.size(), 301U);
    EXPECT_EQ(std::size(teapotNormals), 302U);
    EXPECT_EQ(model.faces.size(), 576U);
    EXPECT_TRUE(model.bones.empty());
    EXPECT_TRUE(model.materials.empty());
}

TEST(ModelMakeTeapot, HasTheStatedFirstRows)
{
    Model model;
    model.makeTeapot();

    EXPECT_THAT(model.vertices[0].position, isVector(2.801F, 3.43275F, -0.011833F));
    EXPECT_THAT(model.vertices[1].position, isVector(2.42352F, 3.43275F, 1.41098F));
    EXPECT_EQ(teapotNormals[0].x, -0.980495F);
    EXPECT_EQ(teapotNormals[0].y, -0.176385F);
    EXPECT_EQ(teapotNormals[0].z, -0.08671F);
    EXPECT_EQ(model.faces[0].vertex, (std::array<std::int32_t, 3>{0, 1, 2}));
    EXPECT_EQ(model.faces[1].vertex, (std::array<std::int32_t, 3>{2, 3, 0}));
    EXPECT_EQ(teapotFaces[0].normal, (std::array<std::int32_t, 3>{0, 1, 2}));
    EXPECT_EQ(teapotFaces[1].normal, (std::array<std::int32_t, 3>{2, 3, 0}));
}

TEST(ModelMakeTeapot, SpansTheStatedExtent)
{
    Model model;
    model.makeTeapot();

    Vector low = model.vertices[0].position;
    Vector high = low;
    for (const Vertex& vertex : model.vertices) {
        const Vector& p = vertex.position;
        low = {std::min(low.x, p.x), std::min(low.y, p.y), std::min(low.z, p.z)};
        high = {std::max(high.x, p.x), std::max(high.y, p.y), std::max(high.z, p.z)};
    }
    // The extent is stated to three digits.
    EXPECT_NEAR(low.x, -5.999F, 0.0005F);
    EXPECT_NEAR(high.x, 6.860F, 0.0005F);
    EXPECT_NEAR(low.y, -1.367F, 0.0005F);
    EXPECT_NEAR(high.y, 4.933F, 0.0005F);
    EXPECT_NEAR(low.z, -4.012F, 0.0005F);
    EXPECT_NEAR(high.z, 3.988F, 0.0005F);
}

/// The edges of the teapot's faces, each in the direction in which its face runs. Corners are told
/// apart by their normals, so that touching parts are not joined.
std::multiset<std::pair<std::int32_t, std::int32_t>> teapotEdges()
{
    std::multiset<std::pair<std::int32_t, std::int32_t>> edges;
    for (const ShapeFace& face : teapotFaces) {
        for (std::size_t k = 0; k < 3; ++k)
            edges.emplace(face.normal[k], face.normal[(k + 1) % 3]);
    }
    return edges;
}

TEST(ModelMakeTeapot, HasEveryEdgeBetweenTwoFacesThatRunAlike)
{
    const auto edges = teapotEdges();

    std::size_t open = 0;
    for (const auto& edge : edges) {
        EXPECT_EQ(edges.count(edge), 1U) << edge.first << " to " << edge.second;
        open += edges.count({edge.second, edge.first}) == 0 ? 1U : 0U;
    }
    // The rim's twelve edges, under the lid, and five at each end of the handle, in the body.
    EXPECT_EQ(open, 22U);
}

TEST(ModelMakeTeapot, HasNormalsThatPointOutOfTheirFaces)
{
    for (const ShapeFace& face : teapotFaces) {
        const auto at = [&](std::size_t k) {
            const ShapePoint& p = teapotVertices[face.vertex[k]];
            return Vector(p.x, p.y, p.z);
        };
        const Vector outward = (at(1) - at(0)).cross(at(2) - at(0));
        EXPECT_GT(outward.length(), 0.02F) << "a face of no area";
        for (const std::int32_t index : face.normal) {
            const ShapePoint& n = teapotNormals[index];
            EXPECT_GT(outward.x * n.x + outward.y * n.y + outward.z * n.z, 0.0F) << index;
            // Six digits.
            EXPECT_NEAR(n.x * n.x + n.y * n.y + n.z * n.z, 1.0F, 5e-6F) << index;
        }
    }
}

TEST(ModelMakeTeapot, HasASkinThatTurnsOutwards)
{
    // The volume that the faces enclose, from the cones between each and the origin. An inside-out
    // mesh has a negative one. The body alone holds some 200.
    float volume = 0.0F;
    for (const ShapeFace& face : teapotFaces) {
        const ShapePoint& a = teapotVertices[face.vertex[0]];
        const ShapePoint& b = teapotVertices[face.vertex[1]];
        const ShapePoint& c = teapotVertices[face.vertex[2]];
        const Vector cross = Vector(b.x, b.y, b.z).cross(Vector(c.x, c.y, c.z));
        volume += (a.x * cross.x + a.y * cross.y + a.z * cross.z) / 6.0F;
    }
    EXPECT_GT(volume, 150.0F);
    EXPECT_LT(volume, 250.0F);
}

TEST(ModelComputeNormals, StoresTheFaceNormalOfCounterClockwiseCorners)
{
    Model model;
    model.vertices.resize(3);
    model.vertices[1].position = {2, 0, 0};
    model.vertices[2].position = {0, 3, 0};
    model.faces.resize(1);
    model.faces[0].vertex = {0, 1, 2};

    EXPECT_EQ(model.computeNormals(true), 0);

    EXPECT_THAT(model.faces[0].normal, isVector(0, 0, 1));
    EXPECT_THAT(model.vertices[0].normal, isVector(0, 0, 0));
}

TEST(ModelComputeNormals, GivesAVertexTheMeanOfItsFaces)
{
    // Two triangles at a right angle, in the planes z = 0 and x = 0, sharing the y axis.
    Model model;
    model.vertices.resize(4);
    model.vertices[1].position = {1, 0, 0};
    model.vertices[2].position = {0, 1, 0};
    model.vertices[3].position = {0, 0, 1};
    model.faces.resize(2);
    model.faces[0].vertex = {0, 1, 2};
    model.faces[1].vertex = {0, 2, 3};

    EXPECT_EQ(model.computeNormals(false), 0);

    EXPECT_THAT(model.faces[0].normal, isVector(0, 0, 1));
    EXPECT_THAT(model.faces[1].normal, isVector(1, 0, 0));
    EXPECT_THAT(model.vertices[0].normal, test::isNear(0.70710678, 0, 0.70710678));
    EXPECT_THAT(model.vertices[1].normal, isVector(0, 0, 1));
    EXPECT_THAT(model.vertices[3].normal, isVector(1, 0, 0));
}

TEST(ModelComputeNormals, AddsToTheNormalsThatWereThere)
{
    Model model;
    model.vertices.resize(3);
    model.vertices[0].normal = {1, 0, 0};
    model.vertices[1].position = {1, 0, 0};
    model.vertices[2].position = {0, 1, 0};
    model.faces.resize(1);
    model.faces[0].vertex = {0, 1, 2};

    model.computeNormals(false);

    EXPECT_THAT(model.vertices[0].normal, test::isNear(0.70710678, 0, 0.70710678));
}

TEST(ModelComputeNormals, RoundsTheMeanBeforeItIsNormalised)
{
    // A sum of (1, 0, 3) from three faces.
    Model model;
    model.vertices.resize(3);
    model.vertices[0].normal = {1, 0, 0};
    model.vertices[1].position = {1, 0, 0};
    model.vertices[2].position = {0, 1, 0};
    model.faces.resize(3);
    for (Face& face : model.faces)
        face.vertex = {0, 1, 2};

    model.computeNormals(false);

    // The sum itself would give 0.316227764 and 0.948683262.
    EXPECT_THAT(model.vertices[0].normal, isVector(0.316227794F, 0, 0.948683321F));
}

TEST(ModelComputeNormals, GivesAVertexInNoFaceNoNumber)
{
    Model model;
    model.vertices.resize(1);

    model.computeNormals(false);

    EXPECT_TRUE(std::isnan(model.vertices[0].normal.x));
}

TEST(ModelComputeNormals, TakesAnIndexOutOfRangeForTheOrigin)
{
    Model model;
    model.vertices.resize(2);
    model.vertices[0].position = {1, 0, 0};
    model.vertices[1].position = {0, 1, 0};
    model.faces.resize(1);
    model.faces[0].vertex = {2, 0, 1};

    model.computeNormals(false);

    EXPECT_THAT(model.faces[0].normal, isVector(0, 0, 1));
    EXPECT_THAT(model.vertices[0].normal, isVector(0, 0, 1));
}
} // namespace
