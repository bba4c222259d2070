// Ties the checker to the engine's readers of layouts, themes, configurations, models and pictures:
// a file without an error is read to its end and whole, over 10,000 wrong files of each format.
// What that means for a file is found here without the checker's help.

#include "gui/GLWidget.h"
#include "models/MS3DModel.h"
#include "textures/PNGReader.h"
#include "textures/TGAReader.h"
#include "tools/check/Check.h"

#include "tests/gui/ProbeWidget.h"
#include "tests/support/CapturedErrors.h"
#include "tests/support/TemporaryDirectory.h"
#include "tests/support/TestWindow.h"
#include "tests/tools/check/Findings.h"
#include "tests/tools/check/Mutation.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <sstream>

namespace tamor::test
{
namespace
{
constexpr std::uint32_t fileCount = 10000;

const std::string layout = "// a layout\n"
                           "CONF gui.conf\n"
                           "THEM default.theme x\n"
                           "CADD Win main NULL 0 0.2 1 Colour of it\n"
                           "CADD Frame colour main 0 0.12 1\n"
                           "CADD Slide red colour 0.1 0.05 0 0.4\n"
                           "CADD Butt redbut main 0 0 Red\n"
                           "CADD Butt pic main 0.3 0 TEX 0.3 0.2\n"
                           "CADD TWin pages NULL -1.2 -0.9\n"
                           "NTAB pages 0 Sound\n"
                           "NTAB pages 1 Name\n"
                           "TADD 0 pages Slide volume 0 0.1 0.5 0\n"
                           "TADD 0 pages Label volumetext 0 0 Volume\n"
                           "TADD 1 pages Text name 0 0 12 1\n"
                           "TADD 1 pages Frame inner 0 0 1\n"
                           "CADD Label status NULL -1.3 0.9 Status: ok\\nsecond line\n"
                           "CADD Combo size NULL 0.4 -0.5\n"
                           "TEXT size Small\n"
                           "TEXT size Large\n"
                           "CADD Check full NULL 0.4 -0.8 Full screen\n"
                           "CADD Opt one colour 0 0 One\n"
                           "CHLD\n"
                           "SOLID\n"
                           "CENTREX main\n"
                           "CENTREY redbut\n"
                           "CENTRE main\n";

const std::string theme = "1 1 1        text\n0.9 0.71 0.16  edge\n0.8 0.8 0.8  body\n"
                          "0.3 0.3 0.3  spare\n1\n0.8\n2\n0.005\n0.1\n0.003\n0.04 0.05    font\n"
                          "0.7 1        dim, lit\n0.005 -0.005 0\n0.1\nNULL\n1\n";

const std::string config = "none.ttf\n-\n0 0.5 0.25 0.75   option\n0.25 0.5 0.5 0.75\n"
                           "0 0.75 0.25 1\n0.25 0.75 0.5 1\n0.5 0.75 0.75 1\n0.005 rate\n";

const std::string model = "// a model\n"
                          "Frames: 30\nFrame: 1\n\nMeshes: 2\n\"Left\" 0 0\n3\n"
                          "0 0 0 0 0 0 -1\n0 1 0 0 1 0 0\n0 0 1.5 0 0 1 1\n1\n0 0 1\n1\n"
                          "0 0 1 2 0 0 0 1\n\"Right\" 0 -1\n2\n0 1 1 1 0 0 -1\n0 2 0 0 1 0 0\n"
                          "1\n0 1 0\n0\nMaterials: 1\n\"Paint\"\n0 0 0 1\n1 1 1 1\n0 0 0 1\n"
                          "0 0 0 1\n0\n1\n\"\"\n\"\"\nBones: 2\n\"arm\"\n\"\"\n"
                          "0 0 0 0 0 0 0\n1\n1 0 0 0\n0\n\"hand\"\n\"arm\"\n8 0 1 0 0 0 0\n0\n2\n"
                          "1 0 0 0\n20 0 0 0.5\n";

const std::string tga("\0\0\x0A\0\0\0\0\0\0\0\0\0\x04\0\x04\0\x18\0"
                      "\x82\x01\x02\x03\x02\x01\x02\x03\x04\x05\x06\x07\x08\x09\x89\xFF\xFE\xFD",
                      36);

const std::vector<std::string> layoutWords = {
    "NULL", "main", "pages", "size", "Label", "Win",  "Frame", "TWin", "Butt",  "TEX",
    "0",    "1",    "-1",    "0.5",  "x",     "CADD", "TADD",  "NTAB", "SOLID", "2"};
const std::vector<std::string> numberWords = {"0", "1", "-1", "0.5", "x", "2", "1e9", ".", "99"};
const std::vector<std::string> modelWords = {"0", "1",  "-1", "0.5", "x",          "2",
                                             "3", "//", "99", "\"",  "Materials:", "\"arm\""};

std::vector<std::string> wordsOf(const std::string& line)
{
    std::istringstream stream(line);
    std::vector<std::string> words;
    for (std::string word; stream >> word;)
        words.push_back(word);
    return words;
}

using Findings = std::vector<check::Finding>;
using ReadFile = std::function<void(const std::string& text, const Findings& findings)>;

class CheckedReadersGLTest : public WindowTest
{
protected:
    /// Has the reader read every wrong file that the checker finds no error in.
    void tie(const std::string& name, const std::string& right, check::FileKind kind,
             const std::function<std::string(std::uint32_t seed)>& wrong, const ReadFile& read)
    {
        ASSERT_FALSE(hasError(check::checkText(name, right, kind)));
        std::uint32_t withoutError = 0;
        for (std::uint32_t seed = 1; seed <= fileCount && !HasFailure(); ++seed) {
            const std::string text = wrong(seed);
            const Findings findings = check::checkText(name, text, kind);
            if (hasError(findings))
                continue;
            ++withoutError;
            const std::string what = name + " of seed " + std::to_string(seed) + ":\n" + text;
            SCOPED_TRACE(what);
            directory.write(name, text);
            const ReaderLimit limit(what);
            read(text, findings);
        }
        // The checker must not find an error in everything, either.
        EXPECT_GT(withoutError, fileCount / 20);
    }

    TemporaryDirectory directory;
};

/// What a layout's lines add, when each is looked at by itself: kind and name.
std::vector<std::pair<std::string, std::string>> addsOf(const std::string& text)
{
    std::vector<std::pair<std::string, std::string>> adds;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        const std::vector<std::string> words = wordsOf(line);
        if (words.empty())
            continue;
        if (words[0] == "CADD" && words.size() >= 6)
            adds.emplace_back(words[1], words[2]);
        else if (words[0] == "TADD" && words.size() >= 7)
            adds.emplace_back(words[3], words[4]);
        else if (words[0] == "CADD" || words[0] == "TADD")
            adds.emplace_back("a short line", line);
        else if (words[0] == "CHLD")
            adds.emplace_back("", "");
    }
    return adds;
}

TEST_F(CheckedReadersGLTest, LayoutsWithoutAnErrorAreReadWhole)
{
    const std::map<std::string, std::string> classes = {
        {"Win", "GLWindow"},   {"Frame", "Frame"},   {"Slide", "Slider"}, {"Butt", "Button"},
        {"TWin", "TabWindow"}, {"Label", "Label"},   {"Text", "Textbox"}, {"Combo", "Combobox"},
        {"Check", "Checkbox"}, {"Opt", "Optionbox"},
    };
    directory.write("gui.conf", config);
    directory.write("default.theme", theme);
    const auto read = [&](const std::string& text, const Findings& findings) {
        clearGui();
        const CapturedErrors errors;

        GLWidget::loadLayout("my.gui");

        // Where fields stand in other lines than their own, lines say nothing by themselves.
        if (hasCode(findings, "layout-line-break") || hasCode(findings, "layout-number-tail"))
            return;
        std::string log;
        std::map<std::string, std::string> last;
        for (const auto& [kind, name] : addsOf(text)) {
            log += "adding a '" + kind + "' - " + name + "\n";
            if (!kind.empty())
                last[name] = kind;
        }
        std::string adds;
        std::istringstream lines(errors.text());
        for (std::string line; std::getline(lines, line);)
            adds += line.starts_with("adding a ") ? line + "\n" : "";
        EXPECT_EQ(adds, log);
        for (const auto& [name, kind] : last) {
            ASSERT_NE(GLWidget::find(name), nullptr) << name;
            EXPECT_EQ(GLWidget::find(name)->typeName(), classes.at(kind));
        }
    };

    tie(
        "my.gui", layout, check::FileKind::layout,
        [](std::uint32_t seed) { return mutate(layout, seed, layoutWords); }, read);
}

TEST_F(CheckedReadersGLTest, ThemesWithoutAnErrorAreReadWhole)
{
    const auto read = [](const std::string&, const Findings&) {
        constexpr float unread = -12345.0F;
        const CapturedErrors errors;
        Theme own;
        Vector* const colours[] = {&own.textColour,  &own.edgeColour, &own.bodyColour,
                                   &own.spareColour, &own.fontSize,   &own.pressOffset};
        float* const numbers[] = {&own.bodyAlpha, &own.listAlpha,     &own.lineWidth,
                                  &own.margin,    &own.chamfer,       &own.spareSize,
                                  &own.iconSize,  &own.dimBrightness, &own.litBrightness};
        for (Vector* colour : colours)
            *colour = {unread, unread, unread};
        for (float* number : numbers)
            *number = unread;

        own.read("default.theme");

        for (const Vector* colour : colours) {
            EXPECT_NE(colour->x, unread);
            EXPECT_NE(colour->y, unread);
            EXPECT_TRUE(colour == &own.fontSize || colour->z != unread);
        }
        for (const float* number : numbers)
            EXPECT_NE(*number, unread);
        EXPECT_STRNE(own.textureFile, "");
    };

    tie(
        "default.theme", theme, check::FileKind::theme,
        [](std::uint32_t seed) { return mutate(theme, seed, numberWords); }, read);
}

TEST_F(CheckedReadersGLTest, ConfigurationsWithoutAnErrorAreReadWhole)
{
    const auto read = [](const std::string&, const Findings&) {
        constexpr float unread = -12345.0F;
        const CapturedErrors errors;
        Vector* const places[] = {&GLWidget::optionFrame, &GLWidget::optionMark,
                                  &GLWidget::checkFrame, &GLWidget::checkMark,
                                  &GLWidget::sliderKnob};
        for (Vector* place : places)
            *place = {unread, unread, unread, unread};
        GLWidget::glowRate = unread;

        GLWidget::readConfig("gui.conf");

        for (const Vector* place : places) {
            EXPECT_NE(place->x, unread);
            EXPECT_NE(place->y, unread);
            EXPECT_NE(place->z, unread);
            EXPECT_NE(place->w, unread);
        }
        EXPECT_NE(GLWidget::glowRate, unread);
    };

    tie(
        "gui.conf", config, check::FileKind::configuration,
        [](std::uint32_t seed) { return mutate(config, seed, numberWords); }, read);
}

/// Walks through a model's lines by the manual's table, and sums its numbers up.
class PlainModel
{
public:
    explicit PlainModel(const std::string& text)
    {
        std::istringstream stream(text);
        for (std::string line; std::getline(stream, line);) {
            if (!line.empty() && line.find("//") == std::string::npos)
                lines.push_back(line);
        }
        read();
    }

    bool isWhole = true;
    std::size_t vertices = 0;
    std::size_t faces = 0;
    std::size_t materials = 0;
    std::size_t bones = 0;
    std::size_t keys = 0;
    double sum = 0.0; ///< of all places of vertices

private:
    std::string line()
    {
        if (next < lines.size())
            return lines[next++];
        isWhole = false;
        return "";
    }

    /// The numbers of the next line, which has at least as many.
    std::vector<double> numbers(std::size_t count)
    {
        std::vector<double> found;
        for (const std::string& word : wordsOf(line())) {
            char* end = nullptr;
            found.push_back(std::strtod(word.c_str(), &end));
            if (*end != '\0' && found.size() <= count)
                isWhole = false;
        }
        isWhole = isWhole && found.size() >= count;
        found.resize(std::max(found.size(), count));
        return found;
    }

    std::size_t count() { return static_cast<std::size_t>(std::max(numbers(1)[0], 0.0)); }

    std::size_t count(const std::string& head)
    {
        const std::string text = line();
        isWhole = isWhole && text.starts_with(head);
        return isWhole
                   ? static_cast<std::size_t>(std::max(std::atoi(text.c_str() + head.size()), 0))
                   : 0;
    }

    void read()
    {
        count("Frames:");
        line();
        for (std::size_t left = count("Meshes:"); left > 0 && isWhole; --left) {
            line();
            for (std::size_t rest = count(); rest > 0 && isWhole; --rest, ++vertices) {
                const std::vector<double> vertex = numbers(7);
                sum += vertex[1] + vertex[2] + vertex[3];
            }
            for (std::size_t rest = count(); rest > 0 && isWhole; --rest)
                numbers(3);
            for (std::size_t rest = count(); rest > 0 && isWhole; --rest, ++faces)
                numbers(8);
        }
        for (std::size_t left = count("Materials:"); left > 0 && isWhole; --left, ++materials) {
            line();
            for (const std::size_t each : {3U, 3U, 3U, 3U, 1U, 1U})
                numbers(each);
            isWhole = isWhole && line().starts_with('"');
            line();
        }
        for (std::size_t left = count("Bones:"); left > 0 && isWhole; --left, ++bones) {
            line();
            line();
            numbers(7);
            for (int list = 0; list < 2; ++list) {
                for (std::size_t rest = count(); rest > 0 && isWhole; --rest, ++keys)
                    numbers(4);
            }
        }
    }

    std::vector<std::string> lines;
    std::size_t next = 0;
};

TEST_F(CheckedReadersGLTest, ModelsWithoutAnErrorAreReadWhole)
{
    const auto read = [](const std::string& text, const Findings&) {
        const PlainModel plain(text);
        EXPECT_TRUE(plain.isWhole);
        const CapturedErrors errors;
        MS3DModel own;

        own.load("a.ms3d");

        EXPECT_EQ(own.vertices.size(), plain.vertices);
        EXPECT_EQ(own.faces.size(), plain.faces);
        EXPECT_EQ(own.materials.size(), plain.materials);
        EXPECT_EQ(own.bones.size(), plain.bones);
        double sum = 0.0;
        for (const Vertex& vertex : own.vertices)
            sum +=
                double{vertex.position.x} + double{vertex.position.y} + double{vertex.position.z};
        std::size_t keys = 0;
        for (const Bone* bone : own.bones)
            keys += bone->positionKeys.size() + bone->rotationKeys.size();
        EXPECT_EQ(keys, plain.keys);
        // Single precision keeps seven digits.
        EXPECT_NEAR(sum, plain.sum, 1e-6 * std::max(std::abs(plain.sum), 1.0));
    };

    tie(
        "a.ms3d", model, check::FileKind::model,
        [](std::uint32_t seed) { return mutate(model, seed, modelWords); }, read);
}

TEST_F(CheckedReadersGLTest, TGAPicturesWithoutAnErrorAreReadWhole)
{
    const auto read = [](const std::string& bytes, const Findings&) {
        const CapturedErrors errors;
        Image image;

        const bool wasRead = readTGA(image, {"a.tga", 0});

        ASSERT_TRUE(wasRead);
        // Each pixel stands in the file.
        const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(bytes[at]); };
        ASSERT_EQ(image.width, byte(12) | byte(13) << 8);
        ASSERT_EQ(image.height, byte(14) | byte(15) << 8);
        const std::size_t size = byte(16) / 8;
        std::size_t at = 18;
        std::size_t pixel = 0;
        while (pixel < image.pixelCount()) {
            ASSERT_LT(at, bytes.size());
            const bool isRun = byte(at) > 127;
            const std::size_t count = byte(at) % 128U + 1U;
            ++at;
            for (std::size_t i = 0; i < count; ++i, ++pixel) {
                const std::size_t from = at + (isRun ? 0 : i * size);
                if (pixel >= image.pixelCount())
                    continue; // what is behind the picture may be missing
                ASSERT_LE(from + size, bytes.size());
                EXPECT_EQ(image.pixels[4 * pixel], static_cast<float>(byte(from + 2)) / 255.0F);
            }
            at += isRun ? size : count * size;
        }
    };

    tie(
        "a.tga", tga, check::FileKind::tga,
        [](std::uint32_t seed) { return mutateBytes(tga, seed); }, read);
}

TEST_F(CheckedReadersGLTest, PNGPicturesWithoutAnErrorAreReadWhole)
{
    // Two pixels in a row of filter type 0, compressed once more behind the two bytes of a header.
    const std::string png("\x89PNG\x0D\x0A\x1A\x0A\x00\x00\x00\x0DIHDR"
                          "\x00\x00\x00\x02\x00\x00\x00\x01\x08\x06\x00\x00\x00\xF4\x22\x7F"
                          "\x8A\x00\x00\x00\x18IDATx\x01x\x01\x01\x09\x00"
                          "\xF6\xFF\x00\x01\x02\x03\x04\x05\x06\x07\x08\x00\x81\x00%\x00"
                          "\x00\xD1\x43\x11\x9E\x00\x00\x00\x00IEND\xAE\x42`"
                          "\x82",
                          81);
    const auto read = [](const std::string&, const Findings&) {
        const CapturedErrors errors;
        Image image;

        EXPECT_TRUE(readPNG(image, {"a.png", 0})) << errors.text();
    };

    tie(
        "a.png", png, check::FileKind::png,
        [&](std::uint32_t seed) { return mutateBytes(png, seed); }, read);
}
} // namespace
} // namespace tamor::test
