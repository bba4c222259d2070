#include "models/MS3DModel.h"
#include "models/ModelFactory.h"
#include "models/internal/ModelFile.h"
#include "tests/models/Matchers.h"
#include "tests/models/ModelFileText.h"
#include "tests/models/PlainMS3DReader.h"
#include "tests/support/CapturedErrors.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/CommaLocale.h"
#include "tests/support/TemporaryDirectory.h"
#include "tests/support/TestWindow.h"
#include "tests/textures/ProcessFigures.h"
#include "textures/TextureRegistry.h"

#include <gtest/gtest.h>

#include <sys/resource.h>

#include <cmath>
#include <cstdio>
#include <sstream>

using namespace tamor;
using namespace tamor::test;

namespace
{
/// Loads `text` from a file and expects the reader to be content and silent.
void load(Model& model, const std::string& text)
{
    const TemporaryDirectory directory;
    const CapturedErrors errors;
    EXPECT_EQ(model.load(directory.write("model.ms3d", text)), 1);
    EXPECT_EQ(errors.text(), "");
}

using Lines = std::vector<std::string>;

/// `text`, which outlives it, as an open file. The caller closes it.
std::FILE* openText(const std::string& text)
{
    return fmemopen(const_cast<char*>(text.data()), text.size(), "r");
}

/// The lines as the reader of models takes them.
Lines readFast(const std::string& text, std::size_t count)
{
    std::FILE* stream = openText(text);
    ModelFile file(stream);
    Lines lines;
    for (std::size_t i = 0; i < count; ++i)
        lines.emplace_back(file.line());
    std::fclose(stream);
    return lines;
}

/// The lines as a host takes them; those of the reader of models must be the same.
Lines readLines(const std::string& text, std::size_t count)
{
    std::FILE* stream = openText(text);
    Lines lines;
    for (std::size_t i = 0; i < count; ++i)
        lines.push_back(readModelLine(stream));
    std::fclose(stream);
    EXPECT_EQ(readFast(text, count), lines);
    return lines;
}

TEST(ReadModelLine, DropsTheNewline)
{
    EXPECT_EQ(readLines("a b\nc\n", 2), (Lines{"a b", "c"}));
}

TEST(ReadModelLine, SkipsBlankLinesAndEveryLineWithAComment)
{
    EXPECT_EQ(readLines("// one\n\n\na\ndata // two\n  // three\nb\n", 2), (Lines{"a", "b"}));
}

TEST(ReadModelLine, KeepsLinesOfOtherWhiteSpace)
{
    EXPECT_EQ(readLines("\r\n \na\r\n", 3), (Lines{"\r", " ", "a\r"}));
}

TEST(ReadModelLine, TakesTheLastCharacterOfAFileWithoutANewline)
{
    EXPECT_EQ(readLines("a\nbcd", 2), (Lines{"a", "bc"}));
}

TEST(ReadModelLine, RepeatsTheLastLineAtTheEnd)
{
    EXPECT_EQ(readLines("a\nbc\n", 4), (Lines{"a", "bc", "bc", "bc"}));
    EXPECT_EQ(readLines("a\nbc", 4), (Lines{"a", "b", "b", "b"}));
}

TEST(ReadModelLine, RepeatsTheLastLineOfAnotherFileInAnEmptyOne)
{
    const TemporaryDirectory directory;
    std::FILE* first = std::fopen(directory.write("first", "abc\n").c_str(), "r");
    std::FILE* empty = std::fopen(directory.write("empty", "").c_str(), "r");

    EXPECT_EQ(readModelLine(first), "abc");
    EXPECT_EQ(readModelLine(empty), "abc");

    std::fclose(first);
    std::fclose(empty);
}

TEST(ModelFile, GivesNothingFromAnEmptyFile)
{
    EXPECT_EQ(readFast("", 2), (Lines{"", ""}));
}

TEST(ModelFile, TellsWhenALineComesAgain)
{
    const std::string text = "a\n// comment\nb\n";
    std::FILE* stream = openText(text);
    ModelFile file(stream);

    file.line();
    EXPECT_FALSE(file.hasEnded());
    file.line();
    EXPECT_FALSE(file.hasEnded());
    EXPECT_EQ(file.line(), "b");
    EXPECT_TRUE(file.hasEnded());

    std::fclose(stream);
}

TEST(ModelFile, AsksForTheEndOnce)
{
    const TemporaryDirectory directory;
    std::FILE* stream = std::fopen(directory.write("lines", "a\nb\n").c_str(), "r");
    ModelFile file(stream);
    const std::size_t before = readCalls();

    for (int i = 0; i < 100000; ++i)
        file.line();

    EXPECT_LT(readCalls(), before + 50);
    std::fclose(stream);
}

TEST(ReadModelLine, ReadsALineOf254CharactersWhole)
{
    const std::string line(254, 'x');

    EXPECT_EQ(readLines(line + "\nb\n", 2), (Lines{line, "b"}));
}

TEST(ReadModelLine, LosesTheLastOf255Characters)
{
    // The newline comes alone and counts as a blank line.
    EXPECT_EQ(readLines(std::string(254, 'x') + "y\nb\n", 2), (Lines{std::string(254, 'x'), "b"}));
}

TEST(ReadModelLine, CutsALongLineInPiecesThatEachLoseTheirLastCharacter)
{
    const std::string line = std::string(254, 'x') + "1" + std::string(254, 'y') + "2zz";

    EXPECT_EQ(readLines(line + "\nb\n", 4),
              (Lines{std::string(254, 'x'), std::string(254, 'y'), "zz", "b"}));
}

TEST(ReadModelLine, SkipsOnlyThePieceThatHoldsTheComment)
{
    const std::string line = std::string(255, 'x') + "// " + std::string(252, 'y') + "rest";

    EXPECT_EQ(readLines(line + "\n", 2), (Lines{std::string(254, 'x'), "rest"}));
}

TEST(ReadModelLine, EndsALineAtAZeroByte)
{
    const std::string text("ab\0cd\n\0ef\ng\n", 12);

    // The first loses its last character, having no newline; the second is empty.
    EXPECT_EQ(readLines(text, 3), (Lines{"a", "", "g"}));
}

TEST(ReadModelLine, GoesOnAcrossTheBlocksOfALongFile)
{
    std::string text;
    Lines expected;
    for (int i = 0; i < 20000; ++i) {
        expected.push_back("line " + std::to_string(i));
        text.append(expected.back()).append("\n");
    }

    EXPECT_EQ(readLines(text, 20000), expected);
}

TEST(ReadModelLine, WaitsForEverForALineAfterALastComment)
{
    for (const std::string end : {"// comment", "// comment\n", "\n"}) {
        const auto readTwoLines = [&end] {
            const std::string text = "a\n" + end;
            std::FILE* stream = openText(text);
            readModelLine(stream);
            readModelLine(stream);
        };

        EXPECT_TRUE(runsForEver(readTwoLines)) << end;
    }
}

TEST(ModelFile, WaitsForEverForALineAfterALastComment)
{
    for (const std::string end : {"// comment", "// comment\n", "\n"})
        EXPECT_TRUE(runsForEver([&end] { readFast("a\n" + end, 2); })) << end;
}

TEST(MS3DModelLoad, SaysSoWhenThereIsNoFile)
{
    const TemporaryDirectory directory;
    const CapturedErrors errors;
    MS3DModel model;

    EXPECT_EQ(model.load("none.ms3d"), 0);

    EXPECT_EQ(errors.text(), "'none.ms3d': Invalid model filename\n");
    EXPECT_TRUE(model.vertices.empty());
}

/// The lines up to and with a mesh of no vertices.
const std::string emptyMesh = "Frames: 1\n1\nMeshes: 1\n\"A\" 0 0\n";

/// Files whose counts claim more than the memory holds, where there are two GiB of it.
struct Claim
{
    const char* name;
    std::string text;
};

class MS3DModelClaims : public testing::TestWithParam<Claim>
{};

TEST_P(MS3DModelClaims, EndInOneLineWhereTheMemoryDoesNotHoldThem)
{
#if defined(__SANITIZE_ADDRESS__)
    GTEST_SKIP() << "the sanitiser takes more addresses than the limit leaves";
#endif
    const TemporaryDirectory directory;
    directory.write("claim.ms3d", GetParam().text);

    ChildProcess reader([] {
        const rlimit limit = {2UL << 30, 2UL << 30};
        setrlimit(RLIMIT_AS, &limit);
        Model* const model = createModel("claim.ms3d");
        model->update(0.0F);
        return model->load("claim.ms3d") + MS3DModel().load("claim.ms3d");
    });

    EXPECT_EQ(reader.wait().status, 0);
    EXPECT_EQ(reader.errors(), "'claim.ms3d': Too large for the memory\n"
                               "'claim.ms3d': Too large for the memory\n"
                               "'claim.ms3d': Too large for the memory\n");
}

INSTANTIATE_TEST_SUITE_P(
    , MS3DModelClaims,
    testing::Values(
        Claim{"Vertices", emptyMesh + "2000000000\n0 1 2 3 4 5 6\n"},
        Claim{"Normals", emptyMesh + "0\n2000000000\n0 1 2\n"},
        Claim{"Triangles", emptyMesh + "0\n0\n2000000000\n0 1 2\n"},
        Claim{"Meshes", "Frames: 1\n1\nMeshes: 2000000000\n\"A\" 0 0\n5\n"},
        Claim{"Materials", emptyMesh + "0\n0\n0\nMaterials: 2000000000\n\"A\"\n"},
        Claim{"Bones", emptyMesh + "0\n0\n0\nMaterials: 0\nBones: 2000000000\nA\n\"\"\n"},
        Claim{"PositionKeys", emptyMesh + "0\n0\n0\nMaterials: 0\nBones: 2\nA\n\"\"\n0\n0\n0\n"
                                          "B\n\"\"\n0\n2000000000\n"},
        Claim{"RotationKeys", emptyMesh + "0\n0\n0\nMaterials: 0\nBones: 2\nA\n\"\"\n0\n0\n0\n"
                                          "B\n\"\"\n0\n0\n2000000000\n"}),
    [](const testing::TestParamInfo<Claim>& claim) { return claim.param.name; });

TEST(MS3DModelLoad, IsDoneSoonWithMeshesThatAreNotThere)
{
    MS3DModel model;
    load(model, "Frames: 1\n1\nMeshes: 2000000000\n");

    EXPECT_TRUE(model.vertices.empty());
    EXPECT_EQ(model.frameCount, 1);
}

TEST(MS3DModelLoad, GivesEachMeshBehindTheEndItsVerticesOrItsTriangles)
{
    // The last line is no number, so that the counts stay those of the first mesh.
    MS3DModel vertices;
    load(vertices,
         "Frames: 1\n1\nMeshes: 5\n\"A\" 0 0\n2\n0 1 2 3 4 5 6\n0 1 2 3 4 5 6\n0\n0\n\"B\" 0 0\n");
    MS3DModel triangles;
    load(triangles, "Frames: 1\n1\nMeshes: 5\n\"A\" 0 0\n0\n0\n2\n0 1 2 3 4 5 6 7\n0 1 2 3 4 5 6 "
                    "7\n\"B\" 0 0\n");

    EXPECT_EQ(vertices.vertices.size(), 10U);
    EXPECT_TRUE(vertices.faces.empty());
    EXPECT_EQ(triangles.faces.size(), 10U);
    EXPECT_TRUE(triangles.vertices.empty());
}

TEST(MS3DModelLoad, GivesItemsBehindTheEndTheLastLine)
{
    // Two vertices have lines, and a million take the last one's again; so do the counts, 7, and
    // the normals and faces.
    MS3DModel model;
    load(model, emptyMesh + "1000000\n0 1 2 3 4 5 6\n7 8 9 10 11 12 13\n");

    ASSERT_EQ(model.vertices.size(), 1000000U);
    EXPECT_THAT(model.vertices[0].position, isVector(1, 2, 3));
    for (const std::size_t i : {1U, 2U, 999999U}) {
        EXPECT_THAT(model.vertices[i].position, isVector(8, 9, 10));
        EXPECT_EQ(model.vertices[i].bone, 13);
    }
    ASSERT_EQ(model.faces.size(), 7U);
    for (const Face& face : model.faces) {
        EXPECT_EQ(face.vertex, (std::array<std::int32_t, 3>{8, 9, 10}));
        EXPECT_EQ(face.smoothingGroup, 0);
    }
}

TEST(MS3DModelLoad, ReadsNumbersAsInTheCLocaleWhateverAHostHasSet)
{
    const CommaLocale comma;
    ModelFileText file;
    // The second line has a number that only the pattern reads.
    file.meshes = "Meshes: 1\n\"A\" 0 0\n2\n0 1.5 2.5 3.5 0.25 0.75 0\n0 +1.5 2.5 3.5 0.25 0.75 0\n"
                  "0\n0\n";
    MS3DModel model;
    load(model, file.text());

    ASSERT_EQ(model.vertices.size(), 2U);
    for (const Vertex& vertex : model.vertices) {
        EXPECT_THAT(vertex.position, isVector(1.5, 2.5, 3.5));
        EXPECT_EQ(vertex.v, 0.75F);
    }
}

TEST(MS3DModelLoad, ReadsAnEmptyFileToItsEnd)
{
    MS3DModel model;
    load(model, "");

    EXPECT_TRUE(model.vertices.empty() && model.materials.empty() && model.bones.empty());
    EXPECT_EQ(model.frameCount, 0);
}

TEST(MS3DModelLoad, ReadsADirectoryAsAnEmptyFile)
{
    MS3DModel model;

    EXPECT_EQ(model.load("/tmp"), 1);

    EXPECT_TRUE(model.vertices.empty());
}

TEST(MS3DModelLoad, ReadsFramesAndAMesh)
{
    ModelFileText file;
    file.meshes = "Meshes: 1\n"
                  "\"Mesh\" 5 2\n"
                  "4\n"
                  "9 1.5 -2 3e1 0.25 0.75 7\n"
                  "9 1 0 0 0 0 -1\n"
                  "9 0 1 0 0 0 -1\n"
                  "9 0 0 1 0 0 -1\n"
                  "3\n"
                  "1 0 0\n"
                  "0 1 0\n"
                  "0 0 -1\n"
                  "2\n"
                  "9 0 1 2 0 1 2 4\n"
                  "9 1 2 3 2 0 1 5\n";
    MS3DModel model;
    load(model, file.text());

    EXPECT_EQ(model.frameCount, 30);
    ASSERT_EQ(model.vertices.size(), 4U);
    EXPECT_THAT(model.vertices[0].position, isVector(1.5, -2, 30));
    EXPECT_EQ(model.vertices[0].u, 0.25F);
    EXPECT_EQ(model.vertices[0].v, 0.75F);
    EXPECT_EQ(model.vertices[0].bone, 7);
    ASSERT_EQ(model.faces.size(), 2U);
    EXPECT_EQ(model.faces[1].vertex, (std::array<std::int32_t, 3>{1, 2, 3}));
    EXPECT_EQ(model.faces[1].normalIndex, (std::array<std::int32_t, 3>{2, 0, 1}));
    EXPECT_EQ(model.faces[0].smoothingGroup, 4);
    EXPECT_EQ(model.faces[1].smoothingGroup, 5);
    EXPECT_EQ(model.faces[0].material, 2);
    EXPECT_EQ(model.faces[1].material, 2);
    // The last triangle that touches a vertex sets its normal.
    EXPECT_THAT(model.vertices[0].normal, isVector(1, 0, 0));
    EXPECT_THAT(model.vertices[1].normal, isVector(0, 0, -1));
    EXPECT_THAT(model.vertices[2].normal, isVector(1, 0, 0));
    EXPECT_THAT(model.vertices[3].normal, isVector(0, 1, 0));
}

TEST(MS3DModelLoad, KeepsTheVerticesAsTheRestPose)
{
    MS3DModel model;
    load(model, ModelFileText().text());

    ASSERT_EQ(model.restVertices.size(), 3U);
    EXPECT_THAT(model.restVertices[1].position, isVector(1, 0, 0));
    EXPECT_THAT(model.restVertices[1].normal, isVector(0, 0, 1));
}

TEST(MS3DModelLoad, MovesTheVertexIndicesOfAMeshBehindTheMeshesBefore)
{
    ModelFileText file;
    const std::string mesh =
        "\"Mesh\" 0 0\n2\n0 1 0 0 0 0 -1\n0 2 0 0 0 0 -1\n0\n1\n0 0 1 1 0 0 0 1\n";
    file.meshes = "Meshes: 3\n" + mesh + mesh + mesh;
    MS3DModel model;
    load(model, file.text());

    ASSERT_EQ(model.faces.size(), 3U);
    EXPECT_EQ(model.faces[0].vertex, (std::array<std::int32_t, 3>{0, 1, 1}));
    EXPECT_EQ(model.faces[1].vertex, (std::array<std::int32_t, 3>{2, 3, 3}));
    EXPECT_EQ(model.faces[2].vertex, (std::array<std::int32_t, 3>{4, 5, 5}));
}

TEST(MS3DModelLoad, MovesTheNormalIndicesOfAMeshByTheCountOfTheOneBefore)
{
    ModelFileText file;
    // The second table is at the place to which its indices are moved, and so is the third's: it
    // has moved by the second's count alone.
    file.meshes = "Meshes: 3\n"
                  "\"First\" 0 0\n1\n0 0 0 0 0 0 -1\n1\n1 0 0\n1\n0 0 0 0 0 0 0 1\n"
                  "\"Second\" 0 0\n1\n0 0 0 0 0 0 -1\n2\n0 1 0\n0 2 0\n1\n0 0 0 0 0 0 0 1\n"
                  "\"Third\" 0 0\n1\n0 0 0 0 0 0 -1\n3\n0 0 1\n0 0 2\n0 0 3\n1\n0 0 0 0 0 0 0 1\n";
    MS3DModel model;
    load(model, file.text());

    EXPECT_THAT(model.vertices[0].normal, isVector(1, 0, 0));
    EXPECT_THAT(model.vertices[1].normal, isVector(0, 2, 0));
    EXPECT_THAT(model.vertices[2].normal, isVector(0, 0, 3));
    EXPECT_EQ(model.faces[1].normalIndex[0], 1);
    EXPECT_EQ(model.faces[2].normalIndex[0], 2);
}

TEST(MS3DModelLoad, LeavesTheNormalWhereTheIndexIsPastTheTable)
{
    ModelFileText file;
    file.meshes = "Meshes: 1\n\"Mesh\" 0 0\n"
                  "2\n0 0 0 0 0 0 -1\n0 0 0 0 0 0 -1\n"
                  "1\n0 0 1\n"
                  "2\n0 0 0 0 0 0 0 1\n0 0 1 1 1 -1 2147483647 1\n";
    MS3DModel model;
    load(model, file.text());

    EXPECT_THAT(model.vertices[0].normal, isVector(0, 0, 1));
    EXPECT_THAT(model.vertices[1].normal, isVector(0, 0, 0));
    EXPECT_EQ(model.faces[1].normalIndex, (std::array<std::int32_t, 3>{1, -1, 2147483647}));
}

TEST(MS3DModelLoad, KeepsAVertexIndexOutOfRange)
{
    ModelFileText file;
    file.meshes = "Meshes: 1\n\"Mesh\" 0 0\n1\n0 0 0 0 0 0 -1\n1\n0 0 1\n"
                  "1\n0 -1 7 2147483647 0 0 0 1\n";
    MS3DModel model;
    load(model, file.text());

    EXPECT_EQ(model.faces[0].vertex, (std::array<std::int32_t, 3>{-1, 7, 2147483647}));
    EXPECT_THAT(model.vertices[0].normal, isVector(0, 0, 0));
}

TEST(MS3DModelLoad, WrapsAnIndexThatTheBaseMovesPastTheLargest)
{
    ModelFileText file;
    file.meshes = "Meshes: 2\n\"First\" 0 0\n1\n0 0 0 0 0 0 -1\n0\n0\n"
                  "\"Second\" 0 0\n0\n0\n1\n0 2147483647 0 0 0 0 0 1\n";
    MS3DModel model;
    load(model, file.text());

    EXPECT_EQ(model.faces[0].vertex[0], -2147483647 - 1);
}

TEST(MS3DModelLoad, ReadsTheSameWithCommentsAndBlankLinesBeforeEverySection)
{
    ModelFileText file;
    file.bones = "Bones: 1\n\"Root\"\n\"\"\n0 1 2 3 0 0 0\n1\n1 4 5 6\n0\n";
    std::string commented;
    std::istringstream lines(file.text());
    for (std::string line; std::getline(lines, line);)
        commented.append("// ").append(line).append("\n\n").append(line).append(
            "\nnumbers 1 2 3 // hidden\n\n\n");
    // Something must come after the last comment, or the reader would wait for it.
    commented += "end\n";
    MS3DModel model;
    load(model, commented);

    EXPECT_EQ(model.frameCount, 30);
    ASSERT_EQ(model.vertices.size(), 3U);
    EXPECT_THAT(model.vertices[2].position, isVector(0, 1, 0));
    ASSERT_EQ(model.faces.size(), 1U);
    EXPECT_EQ(model.faces[0].vertex, (std::array<std::int32_t, 3>{0, 1, 2}));
    ASSERT_EQ(model.bones.size(), 1U);
    EXPECT_THAT(model.bones[0]->positionKeys.at(0).value, isVector(4, 5, 6));
}

TEST(MS3DModelLoad, DropsALineWithDataAndAComment)
{
    ModelFileText file;
    file.meshes = "Meshes: 1\n\"Mesh\" 0 0\n"
                  "1\n0 5 0 0 0 0 -1 // x\n0 6 0 0 0 0 -1\n0\n0\n";
    MS3DModel model;
    load(model, file.text());

    ASSERT_EQ(model.vertices.size(), 1U);
    EXPECT_THAT(model.vertices[0].position, isVector(6, 0, 0));
}

TEST(MS3DModelLoad, KeepsTheMaterialIndexWhenAMeshsNameHoldsABlank)
{
    ModelFileText file;
    const std::string rest = "1\n0 0 0 0 0 0 -1\n0\n1\n0 0 0 0 0 0 0 1\n";
    file.meshes = "Meshes: 3\n"
                  "\"My Mesh\" 0 9\n" +
                  rest + "\"Mesh\" 0 3\n" + rest + "\"My Mesh\" 0 9\n" + rest;
    MS3DModel model;
    load(model, file.text());

    EXPECT_EQ(model.faces[0].material, 0);
    EXPECT_EQ(model.faces[1].material, 3);
    EXPECT_EQ(model.faces[2].material, 3);
}

TEST(MS3DModelLoad, LeavesWhatALineThatEndsEarlyDoesNotSet)
{
    ModelFileText file;
    file.meshes = "Meshes: 1\n\"Mesh\" 0 0\n"
                  "2\n0 1 2 x 5 6 7\njunk\n"
                  "1\n4 junk\n"
                  "1\n0 1 1 junk\n";
    MS3DModel model;
    load(model, file.text());

    EXPECT_THAT(model.vertices[0].position, isVector(1, 2, 0));
    EXPECT_EQ(model.vertices[0].u, 0.0F);
    EXPECT_EQ(model.vertices[0].bone, -1);
    EXPECT_THAT(model.vertices[1].position, isVector(0, 0, 0));
    EXPECT_EQ(model.faces[0].vertex, (std::array<std::int32_t, 3>{1, 1, 0}));
    EXPECT_THAT(model.vertices[1].normal, isVector(4, 0, 0));
}

TEST(MS3DModelLoad, ReadsNumbersAsThePatternDoes)
{
    ModelFileText file;
    file.meshes = "Meshes: 1\n\"Mesh\" 0 0\n"
                  "4\n"
                  "+0 +1 .5 1. 0x10 1e1 +2\n" // signs, open points, hexadecimal
                  "0 1.5-2.5 3 4 5 6\n"       // the second number's sign ends the first
                  "0 1e 2 3 4 5 6\n"          // an exponent without digits is passed over
                  "0 inf 1e39 1e-50 0 0 99999999999\n"
                  "0\n0\n";
    MS3DModel model;
    load(model, file.text());

    ASSERT_EQ(model.vertices.size(), 4U);
    EXPECT_THAT(model.vertices[0].position, isVector(1, 0.5, 1));
    EXPECT_EQ(model.vertices[0].u, 16.0F);
    EXPECT_EQ(model.vertices[0].v, 10.0F);
    EXPECT_EQ(model.vertices[0].bone, 2);
    EXPECT_THAT(model.vertices[1].position, isVector(1.5, -2.5, 3));
    EXPECT_EQ(model.vertices[1].bone, 6);
    EXPECT_THAT(model.vertices[2].position, isVector(1, 2, 3));
    EXPECT_TRUE(std::isinf(model.vertices[3].position.x));
    EXPECT_TRUE(std::isinf(model.vertices[3].position.y));
    EXPECT_EQ(model.vertices[3].position.z, 0.0F);
}

TEST(MS3DModelLoad, TakesNoMoreThanNoneForANegativeCount)
{
    ModelFileText file;
    file.meshes = "Meshes: 1\n\"Mesh\" 0 0\n-1\n-2\n-3\n";
    file.materials = "Materials: -1\n";
    file.bones = "Bones: -7\n";
    MS3DModel model;
    load(model, file.text());

    EXPECT_TRUE(model.vertices.empty() && model.faces.empty());
    EXPECT_TRUE(model.materials.empty() && model.bones.empty());
}

TEST(MS3DModelLoad, RepeatsTheLastLineOfAFileThatIsCutShort)
{
    MS3DModel model;
    load(model, "Frames: 30\nFrame: 1\nMeshes: 1\n\"Mesh\" 0 0\n3\n0 1 2 3 4 5 6\n");

    // The line also tells the count of normals and of triangles: none.
    ASSERT_EQ(model.vertices.size(), 3U);
    for (const Vertex& vertex : model.vertices) {
        EXPECT_THAT(vertex.position, isVector(1, 2, 3));
        EXPECT_EQ(vertex.bone, 6);
    }
    EXPECT_TRUE(model.faces.empty());
    EXPECT_TRUE(model.materials.empty() && model.bones.empty());
}

TEST(MS3DModelLoad, ReadsAMaterial)
{
    ModelFileText file;
    file.materials = "Materials: 1\n\"Name\"\n"
                     "0.1 0.2 0.3 0.9\n"
                     "0.4 0.5 0.6 0.9\n"
                     "0.7 0.8 0.9 0.9\n"
                     "1 2 3 0.9\n"
                     "64\n"
                     "0.5\n"
                     "\"\"\n"
                     "\"alpha.tga\"\n";
    MS3DModel model;
    load(model, file.text());

    ASSERT_EQ(model.materials.size(), 1U);
    const Material& material = model.materials[0];
    EXPECT_THAT(material.ambient, isVector(0.1F, 0.2F, 0.3F));
    EXPECT_THAT(material.diffuse, isVector(0.4F, 0.5F, 0.6F));
    EXPECT_THAT(material.specular, isVector(0.7F, 0.8F, 0.9F));
    EXPECT_THAT(material.emissive, isVector(1, 2, 3));
    EXPECT_EQ(material.shininess, 64.0F);
    EXPECT_EQ(material.transparency, 0.5F);
    EXPECT_EQ(material.texture, "");
    EXPECT_EQ(material.textureId, 0U);
}

TEST(MS3DModelLoad, AsksTheRegistryForNoTextureWithoutAName)
{
    ModelFileText file;
    file.materials = "Materials: 1\n\"A\"\n0 0 0 1\n0 0 0 1\n0 0 0 1\n0 0 0 1\n0\n1\n\"\"\n\"\"\n";
    MS3DModel model;
    textureRegistry.clear();

    load(model, file.text());

    EXPECT_TRUE(textureRegistry.empty());
}

TEST(MS3DModelLoad, ReadsBonesWithTheirKeys)
{
    ModelFileText file;
    file.bones = "Bones: 2\n"
                 "\"Root\"\n\"\"\n8 1 2 3 0.1 0.2 0.3\n"
                 "2\n1 4 5 6\n2.5 7 8 9\n"
                 "1\n3 0.4 0.5 0.6\n"
                 "\"Child\"\n\"Root\"\n16 0 1 0 0 0 0\n0\n0\n";
    MS3DModel model;
    load(model, file.text());

    ASSERT_EQ(model.bones.size(), 2U);
    const Bone& root = *model.bones[0];
    EXPECT_EQ(root.name, "\"Root\"");
    EXPECT_EQ(root.parent, nullptr);
    EXPECT_EQ(root.flags, 8);
    EXPECT_EQ(root.index, 0);
    EXPECT_THAT(root.localPosition, isVector(1, 2, 3));
    EXPECT_THAT(root.localRotation, isVector(0.1F, 0.2F, 0.3F));
    EXPECT_THAT(root.position, isVector(1, 2, 3));
    EXPECT_THAT(root.rotation, isVector(0.1F, 0.2F, 0.3F));
    ASSERT_EQ(root.positionKeys.size(), 2U);
    EXPECT_EQ(root.positionKeys[1].time, 2.5F);
    EXPECT_THAT(root.positionKeys[1].value, isVector(7, 8, 9));
    ASSERT_EQ(root.rotationKeys.size(), 1U);
    EXPECT_EQ(root.rotationKeys[0].time, 3.0F);
    EXPECT_THAT(root.rotationKeys[0].value, isVector(0.4F, 0.5F, 0.6F));
    EXPECT_EQ(root.children, (std::vector<std::int32_t>{1}));
    const Bone& child = *model.bones[1];
    EXPECT_EQ(child.parent, &root);
    EXPECT_EQ(child.index, 1);
    EXPECT_EQ(child.flags, 16);
    EXPECT_TRUE(child.positionKeys.empty() && child.rotationKeys.empty());
    EXPECT_EQ(model.rootBones, (std::vector<Bone*>{model.bones[0]}));
}

/// A bone without keys.
std::string boneText(const std::string& name, const std::string& parent)
{
    return name + "\n" + parent + "\n0 0 0 0 0 0 0\n0\n0\n";
}

TEST(MS3DModelLoad, FindsTheLastOfSeveralParentsOfOneName)
{
    ModelFileText file;
    file.bones = "Bones: 4\n" + boneText("\"A\"", "\"\"") + boneText("\"A\"", "\"\"") +
                 boneText("\"B\"", "\"A\"") + boneText("\"A\"", "\"\"");
    MS3DModel model;
    load(model, file.text());

    EXPECT_EQ(model.bones[2]->parent, model.bones[1]);
    EXPECT_EQ(model.bones[1]->children, (std::vector<std::int32_t>{2}));
    EXPECT_EQ(model.rootBones.size(), 3U);
}

TEST(MS3DModelLoad, ComparesTheWholeLineOfTheParentsName)
{
    ModelFileText file;
    file.bones = "Bones: 4\n" + boneText("\"A\"", "\"\"") + boneText("\"B\"", "\"A\" ") +
                 boneText("\"C\"", "\"C\"") + boneText("\"D\"", "\"Later\"");
    MS3DModel model;
    load(model, file.text());

    // A blank too many, itself and nobody: each makes a root.
    EXPECT_EQ(model.rootBones, model.bones);
    for (const Bone* bone : model.bones)
        EXPECT_EQ(bone->parent, nullptr);
}

TEST(MS3DModelLoad, TakesTwoQuotesAloneForNoParent)
{
    ModelFileText file;
    file.bones = "Bones: 4\n" + boneText("\"\"", "\"\"") + boneText("\"\"x", "\"\"") +
                 boneText("\"B\"", "\"\"x") + boneText("\"C\"", "\"\"");
    MS3DModel model;
    load(model, file.text());

    EXPECT_EQ(model.bones[2]->parent, model.bones[1]);
    EXPECT_EQ(model.bones[3]->parent, nullptr);
    EXPECT_EQ(model.rootBones.size(), 3U);
}

TEST(MS3DModelLoad, ZeroesTheCountsOfKeysBeforeItReadsThem)
{
    ModelFileText file;
    file.bones = "Bones: 2\n"
                 "\"A\"\n\"\"\n0 0 0 0 0 0 0\n1\n1 2 3 4\n1\n1 2 3 4\n"
                 "\"B\"\n\"\"\n0 0 0 0 0 0 0\njunk\njunk\n";
    MS3DModel model;
    load(model, file.text());

    EXPECT_TRUE(model.bones[1]->positionKeys.empty());
    EXPECT_TRUE(model.bones[1]->rotationKeys.empty());
}

TEST(MS3DModelLoad, AttachesEachVertexToItsBoneInOrder)
{
    ModelFileText file;
    file.meshes =
        "Meshes: 2\n"
        "\"First\" 0 0\n4\n0 0 0 0 0 0 1\n0 0 0 0 0 0 -1\n0 0 0 0 0 0 0\n0 0 0 0 0 0 1\n0\n0\n"
        "\"Second\" 0 0\n3\n0 0 0 0 0 0 2\n0 0 0 0 0 0 0\n0 0 0 0 0 0 1\n0\n0\n";
    file.bones = "Bones: 2\n" + boneText("\"A\"", "\"\"") + boneText("\"B\"", "\"\"");
    MS3DModel model;
    load(model, file.text());

    // Vertices 1 and 4 name no bone there is.
    EXPECT_EQ(model.bones[0]->attached, (std::vector<std::int32_t>{2, 5}));
    EXPECT_EQ(model.bones[1]->attached, (std::vector<std::int32_t>{0, 3, 6}));
}

TEST(MS3DModelLoad, LeavesBonesToWhoeverHoldsThem)
{
    ModelFileText file;
    file.bones = "Bones: 1\n" + boneText("\"A\"", "\"\"");
    const Bone* bone = nullptr;
    {
        MS3DModel model;
        load(model, file.text());
        bone = model.bones[0];
    }

    EXPECT_EQ(bone->name, "\"A\"");
}

/// A full file: every kind of line is in it. No name has quotes, so that none is taken for a
/// texture, which would need a window.
std::vector<std::string> fullFileLines()
{
    std::istringstream text(
        "Frames: 30\nFrame: 1\nMeshes: 2\n"
        "A 0 0\n3\n0 0 0 0 0 0 0\n0 1 0 0 1 0 1\n0 0 1 0 0 1 -1\n"
        "2\n0 0 1\n0 1 0\n2\n0 0 1 2 0 0 1 1\n0 2 1 0 1 1 0 1\n"
        "B 0 1\n1\n0 2 2 2 0 0 1\n1\n1 0 0\n1\n0 0 0 0 -2 -2 -2 1\n"
        "Materials: 1\nM\n0 0 0 1\n1 1 1 1\n0 0 0 1\n0 0 0 1\n5\n1\n\"\"\n\"\"\n"
        "Bones: 2\nR\n\"\"\n0 0 0 0 0 0 0\n1\n1 0 0 0\n1\n1 0 0 1\n"
        "C\nR\n0 1 0 0 0 0 0\n0\n0\n");
    std::vector<std::string> lines;
    for (std::string line; std::getline(text, line);)
        lines.push_back(line);
    return lines;
}

/// Loads `text` and expects what the plain reader reads, and that nothing of it leads outside.
void loadAndCompare(const std::string& text)
{
    MS3DModel model;
    load(model, text);
    std::FILE* file = fmemopen(const_cast<char*>(text.data()), text.size(), "r");
    Model plain;
    readPlainly(plain, file);
    std::fclose(file);

    EXPECT_EQ(difference(model, plain), "") << text;

    for (const Bone* bone : plain.bones)
        delete bone;
    model.prepare(1);
    model.computeNormals(false);
    for (std::size_t i = 0; i < model.bones.size(); ++i)
        model.animateBone(static_cast<std::int32_t>(i), 0.5F);
}

TEST(MS3DModelLoad, ReadsAFileThatIsCutAnywhereByTheRules)
{
    const std::vector<std::string> lines = fullFileLines();
    std::string text;
    for (const std::string& line : lines) {
        text += line + "\n";
        loadAndCompare(text);
    }
}

TEST(MS3DModelLoad, ReadsAFileWithJunkForAnyNumberByTheRules)
{
    const std::vector<std::string> lines = fullFileLines();
    for (std::size_t changed = 0; changed < lines.size(); ++changed) {
        for (const std::string junk :
             {"x", "-1", "", "17", "1e9", "+", "0x7", "nan", "-99999999999"}) {
            std::size_t from = 0;
            while (from < lines[changed].size()) {
                const std::size_t number = lines[changed].find_first_of("0123456789", from);
                if (number == std::string::npos)
                    break;
                std::string text;
                for (std::size_t i = 0; i < lines.size(); ++i) {
                    std::string line = lines[i];
                    if (i == changed)
                        line.replace(number, 1, junk);
                    text += line + "\n";
                }
                // A last line that became blank would be waited out for ever.
                text += "end\n";
                loadAndCompare(text);
                from = number + 1;
            }
        }
    }
}

class MS3DModelTexturesGLTest : public WindowTest
{
protected:
    /// Two materials with these lines for textures.
    static std::string twoMaterials(const std::string& first, const std::string& second)
    {
        const std::string numbers = "\"M\"\n0 0 0 1\n0 0 0 1\n0 0 0 1\n0 0 0 1\n0\n1\n";
        ModelFileText file;
        file.materials =
            "Materials: 2\n" + numbers + first + "\n\"\"\n" + numbers + second + "\n\"\"\n";
        return file.text();
    }

    // A red pixel, run-length encoded.
    const std::string onePixel =
        std::string("\0\0\x0a\0\0\0\0\0\0\0\0\0\1\0\1\0\x18\0\x00\x00\x00\xff", 22);
};

TEST_F(MS3DModelTexturesGLTest, ShareOneObjectForOneFile)
{
    const TemporaryDirectory directory;
    directory.write("red.tga", onePixel);
    directory.write("model.ms3d", twoMaterials("\"red.tga\"", "\"red.tga\""));
    const CapturedErrors errors;
    MS3DModel model;

    EXPECT_EQ(model.load("model.ms3d"), 1);

    EXPECT_NE(model.materials[0].textureId, 0U);
    EXPECT_EQ(model.materials[1].textureId, model.materials[0].textureId);
    EXPECT_EQ(model.materials[0].texture, "red.tga");
    ASSERT_EQ(textureRegistry.size(), 1U);
    EXPECT_EQ(textureRegistry[0].key, (TextureKey{"red.tga", 0}));
    EXPECT_EQ(errors.text(), "not reloading texture\n");
}

TEST_F(MS3DModelTexturesGLTest, AreNamedUpToABlankOrTheClosingQuote)
{
    const TemporaryDirectory directory;
    directory.write("model.ms3d", twoMaterials("\"my pictures/red.tga\"", "\"a\"b\""));
    const CapturedErrors errors;
    MS3DModel model;

    model.load("model.ms3d");

    EXPECT_EQ(model.materials[0].texture, "my");
    EXPECT_EQ(model.materials[1].texture, "a");
}

TEST_F(MS3DModelTexturesGLTest, StayAsTheyWereForALineThatDoesNotMatch)
{
    const TemporaryDirectory directory;
    directory.write("red.tga", onePixel);
    directory.write("model.ms3d", twoMaterials("\"red.tga\"", "none"));
    const CapturedErrors errors;
    MS3DModel model;

    model.load("model.ms3d");

    EXPECT_EQ(model.materials[1].texture, "red.tga");
}
} // namespace
