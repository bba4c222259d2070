#include "art/TGAWriter.h"
#include "benchmarks/cold/Operation.h"
#include "benchmarks/generator/PlainMesh.h"
#include "benchmarks/gui/Scene.h"
#include "benchmarks/models/Torus.h"
#include "benchmarks/support/NoOpWindow.h"
#include "benchmarks/textures/SmallPNG.h"
#include "generator/MeshGenerator.h"
#include "gui/GLWidget.h"
#include "models/MS3DModel.h"
#include "textures/Font.h"
#include "textures/PNGReader.h"
#include "textures/TGAReader.h"

#include <GL/glu.h>
#include <ft2build.h>
#include <png.h>
#include FT_FREETYPE_H
#ifdef TAMOR_HAS_CIMG
#define cimg_display 0
#define cimg_use_openmp 0
#include <CImg.h>
#endif
#ifdef TAMOR_HAS_STB
#include <stb_image.h>
#endif
#ifdef TAMOR_HAS_OPENCV
#include <opencv2/imgproc.hpp>
#endif
#ifdef TAMOR_HAS_LIBNOISE
#include <libnoise/noise.h>
#endif
#ifdef TAMOR_HAS_TINYOBJLOADER
#include <tiny_obj_loader.h>
#endif

#include <algorithm>
#include <array>
#include <bit>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

namespace tamor::bench
{
namespace
{
using Work = std::function<Outcome()>;

constexpr std::int32_t side = 1024;
constexpr std::size_t pixelCount = std::size_t{side} * side;
constexpr std::size_t floatSize = pixelCount * 4 * sizeof(float);

template <typename Element>
std::size_t sizeOf(const std::vector<Element>& elements)
{
    return elements.size() * sizeof(Element);
}

/// Runs of up to 60 pixels.
std::string tgaFile()
{
    std::mt19937 random(11);
    std::vector<std::uint8_t> bytes;
    while (bytes.size() < 4 * pixelCount) {
        const auto colour = static_cast<std::uint32_t>(random());
        for (std::size_t left = 1 + random() % 60; left > 0 && bytes.size() < 4 * pixelCount;
             --left)
            for (int shift = 0; shift < 32; shift += 8)
                bytes.push_back(static_cast<std::uint8_t>(colour >> shift));
    }
    std::string path = writeTemporary("tamor-cold.tga", "");
    tools::writeTGA(path, side, side, 4, bytes);
    return path;
}

Work tga()
{
    return [path = tgaFile()] {
        Image image;
        const bool isRead = readTGA(image, {path, 0}) && image.pixelCount() == pixelCount;
        return Outcome{isRead, floatSize, 4 * pixelCount};
    };
}

Work png()
{
    return [path = writeTemporary("tamor-cold.png", makeSmallPNG(frontOfOurs, 1000))] {
        Image image;
        const bool isRead = readPNG(image, {path, 0});
        return Outcome{isRead && image.pixels[23] == smallPNGsPixels()[23]};
    };
}

Work libpng()
{
    return [path = writeTemporary("tamor-cold-peer.png", makeSmallPNG("", 1000))] {
        png_image picture{};
        picture.version = PNG_IMAGE_VERSION;
        png_image_begin_read_from_file(&picture, path.c_str());
        picture.format = PNG_FORMAT_RGBA;
        std::vector<std::uint8_t> bytes(PNG_IMAGE_SIZE(picture));
        png_image_finish_read(&picture, nullptr, bytes.data(), 0, nullptr);
        const std::vector<float> pixels(bytes.begin(), bytes.end());
        return Outcome{pixels.size() == 24 && pixels[23] / 255.0F == smallPNGsPixels()[23]};
    };
}

Work ms3d()
{
    return [path = writeTemporary("tamor-cold.ms3d", makeTorusMS3D())] {
        auto* const model = new MS3DModel;
        const bool isLoaded = model->load(path) && model->vertices.size() == torusVertices;
        return Outcome{isLoaded, sizeOf(model->vertices) + sizeOf(model->faces) +
                                     sizeOf(model->restVertices)};
    };
}

Work layout()
{
    openScene();
    return [] {
        loadScene(layoutOf(1000));
        return Outcome{GLWidget::widgets.size() >= 1000};
    };
}

Work font()
{
    openNoOpWindow();
    return [] {
        Font font;
        font.load(TAMOR_TEST_FONT);
        font.setScale(0.04F, 0.05F);
        return Outcome{font.textWidth("%s", "Tamor") > 0.0F};
    };
}

Outcome outcomeOf(const TerrainMesh& mesh, std::size_t points)
{
    return {mesh.vertices.size() == points,
            sizeOf(mesh.vertices) + sizeOf(mesh.normalTable) + sizeOf(mesh.faces)};
}

Work fractal()
{
    return [] {
        std::srand(1);
        const TerrainMesh mesh = fractalTerrain(side, 0.5F, 0.5F, 100.0F, 100.0F, 100.0F);
        return outcomeOf(mesh, (std::size_t{side} + 1) * (side + 1));
    };
}

Work picturesTerrain()
{
    return [path = tgaFile()] {
        Outcome outcome = outcomeOf(fileTerrain(path, 100.0F, 100.0F, 100.0F), pixelCount);
        // The picture, too, which is not given back.
        outcome.leftBy = 4 * pixelCount + floatSize;
        return outcome;
    };
}

/// The same characters, a texture and a list each, as anyone would make them: without the bytes and
/// floats of each that a font keeps, which are a third of its time.
Work plainFont()
{
    openNoOpWindow();
    return [] {
        FT_Library library = nullptr;
        FT_Face face = nullptr;
        FT_Init_FreeType(&library);
        FT_New_Face(library, TAMOR_TEST_FONT, 0, &face);
        FT_Set_Char_Size(face, 32 * 64, 32 * 64, 96, 96);
        const GLuint lists = glGenLists(128);
        std::array<GLuint, 128> textures{};
        glGenTextures(128, textures.data());
        FT_Pos width = 0;
        for (GLuint character = 0; character < 128; character++) {
            FT_Load_Char(face, character, FT_LOAD_RENDER);
            const FT_GlyphSlotRec_& glyph = *face->glyph;
            width += glyph.advance.x >> 6;
            const auto columns = static_cast<GLsizei>(std::bit_ceil(glyph.bitmap.width));
            const auto rows = static_cast<GLsizei>(std::bit_ceil(glyph.bitmap.rows));
            std::vector<std::uint8_t> bytes(4 * static_cast<std::size_t>(columns * rows));
            for (unsigned int y = 0; y < glyph.bitmap.rows; y++)
                for (unsigned int x = 0; x < glyph.bitmap.width; x++)
                    std::fill_n(&bytes[4 * (y * static_cast<std::size_t>(columns) + x)], 4,
                                glyph.bitmap.buffer[y * glyph.bitmap.width + x]);
            glBindTexture(GL_TEXTURE_2D, textures[character]);
            gluBuild2DMipmaps(GL_TEXTURE_2D, GL_RGBA, columns, rows, GL_RGBA, GL_UNSIGNED_BYTE,
                              bytes.data());
            glNewList(lists + character, GL_COMPILE);
            glBindTexture(GL_TEXTURE_2D, textures[character]);
            glRecti(0, 0, columns, rows);
            glTranslatef(static_cast<GLfloat>(glyph.advance.x >> 6), 0.0F, 0.0F);
            glEndList();
        }
        return Outcome{lists != 0 && width > 0};
    };
}

/// Opaque.
Image randomImage()
{
    std::mt19937 random(1);
    Image image;
    image.clear(side, side);
    for (std::size_t n = 0; n < 4 * pixelCount; n++)
        if (n % 4 != 3)
            image.pixels[n] = static_cast<float>(random() % 1000) / 1000.0F;
    return image;
}

Work perlin()
{
    return [] {
        Image image;
        image.clear(side / 2, side / 2);
        image.perlin(6, 1.0F / 64.0F, 1.0F, 2.0F, 0.5F);
        return Outcome{image.pixels[4 * 12345] != 0.0F, floatSize / 4};
    };
}

Work blur()
{
    return [image = randomImage()]() mutable {
        const float before = image.pixels[4 * 12345];
        image.blur(4);
        return Outcome{image.pixels[4 * 12345] != before};
    };
}

Work upload()
{
    openNoOpWindow();
    return [image = randomImage()] {
        std::uint32_t id = 0;
        uploadTexture(id, image, {"", 0});
        return Outcome{id != 0, 4 * pixelCount};
    };
}

/// The bytes as anyone would make them, and the same call.
Work plainUpload()
{
    openNoOpWindow();
    return [image = randomImage()] {
        auto* const bytes = new std::uint8_t[4 * pixelCount];
        for (std::size_t n = 0; n < 4 * pixelCount; n++)
            bytes[n] = static_cast<std::uint8_t>(image.pixels[n] * 255.0F);
        GLuint id = 0;
        glGenTextures(1, &id);
        glBindTexture(GL_TEXTURE_2D, id);
        gluBuild2DMipmaps(GL_TEXTURE_2D, GL_RGBA, side, side, GL_RGBA, GL_UNSIGNED_BYTE, bytes);
        return Outcome{id != 0, 4 * pixelCount};
    };
}

#ifdef TAMOR_HAS_STB
Work stbTGA()
{
    return [path = tgaFile()] {
        int width = 0;
        int height = 0;
        int channels = 0;
        stbi_uc* const bytes = stbi_load(path.c_str(), &width, &height, &channels, 4);
        auto* const floats = new float[4 * pixelCount];
        for (std::size_t k = 0; k < 4 * pixelCount; k++)
            floats[k] = static_cast<float>(bytes[k]) / 255.0F;
        stbi_image_free(bytes);
        return Outcome{width == side && floats[3] <= 1.0F, floatSize};
    };
}

Work stbTerrain()
{
    return [path = tgaFile()] {
        int width = 0;
        int height = 0;
        int channels = 0;
        stbi_uc* const bytes = stbi_load(path.c_str(), &width, &height, &channels, 4);
        const TerrainMesh mesh = plainMesh(side, [bytes](std::int32_t r, std::int32_t c) {
            return static_cast<float>(bytes[4 * (side * r + c)]) / 255.0F;
        });
        stbi_image_free(bytes);
        return outcomeOf(mesh, pixelCount);
    };
}
#endif

#ifdef TAMOR_HAS_CIMG
Work plasma()
{
    return [] {
        cimg_library::CImg<float> plasma(side + 1, side + 1, 1, 1, 0.0F);
        plasma.draw_plasma(1.0F, 0.0F, 10);
        const TerrainMesh mesh = plainMesh(side + 1, [&plasma](std::int32_t r, std::int32_t c) {
            return plasma(static_cast<unsigned>(r), static_cast<unsigned>(c));
        });
        return outcomeOf(mesh, (std::size_t{side} + 1) * (side + 1));
    };
}
#endif

#ifdef TAMOR_HAS_TINYOBJLOADER
Work tinyobjloader()
{
    return [path = writeTemporary("tamor-cold.obj", makeTorusOBJ())] {
        tinyobj::attrib_t attributes;
        std::vector<tinyobj::shape_t> shapes;
        std::vector<tinyobj::material_t> materials;
        std::string warning;
        std::string error;
        tinyobj::LoadObj(&attributes, &shapes, &materials, &warning, &error, path.c_str());
        return Outcome{attributes.vertices.size() == 3 * torusVertices};
    };
}
#endif

#ifdef TAMOR_HAS_OPENCV
Work openCVBlur()
{
    return [image = randomImage()] {
        cv::setNumThreads(1);
        const cv::Mat source(side, side, CV_32FC4, image.pixels);
        cv::Mat blurred(side, side, CV_32FC4);
        const cv::Mat kernel(1, 9, CV_32F, cv::Scalar(1.0 / 9.0));
        cv::sepFilter2D(source, blurred, CV_32F, kernel, kernel, {-1, -1}, 0, cv::BORDER_REPLICATE);
        return Outcome{blurred.at<cv::Vec4f>(12, 345)[0] != image.pixels[4 * (12 * side + 345)]};
    };
}
#endif

#ifdef TAMOR_HAS_LIBNOISE
Work libnoise()
{
    return [] {
        noise::module::Perlin perlin;
        perlin.SetOctaveCount(6);
        perlin.SetFrequency(8.0);
        Image image;
        image.clear(side / 2, side / 2);
        for (std::int32_t i = 0; i < side / 2; i++)
            for (std::int32_t j = 0; j < side / 2; j++)
                image.pixels[4 * (side / 2 * i + j)] +=
                    static_cast<float>(perlin.GetValue(2.0 * j / side, 2.0 * i / side, 0.0));
        return Outcome{image.pixels[4 * 12345] != 0.0F, floatSize / 4};
    };
}
#endif
} // namespace

std::span<const Operation> operations()
{
    static const std::vector<Operation> all = {
        {"readTGA", tga,
#ifdef TAMOR_HAS_STB
         "stb_image", stbTGA
#endif
        },
        {"readPNG", png, "libpng", libpng},
        {"MS3DModel::load", ms3d,
#ifdef TAMOR_HAS_TINYOBJLOADER
         "tinyobjloader", tinyobjloader
#endif
        },
        // The toolkits that one would use instead read no layouts.
        {"loadLayout", layout},
        {"Font::load", font, "FreeType and GLU", plainFont},
        {"fractalTerrain", fractal,
#ifdef TAMOR_HAS_CIMG
         "CImg and a loop", plasma
#endif
        },
        {"fileTerrain", picturesTerrain,
#ifdef TAMOR_HAS_STB
         "stb_image and a loop", stbTerrain
#endif
        },
        {"Image::perlin", perlin,
#ifdef TAMOR_HAS_LIBNOISE
         "libnoise", libnoise
#endif
        },
        {"Image::blur", blur,
#ifdef TAMOR_HAS_OPENCV
         "OpenCV", openCVBlur
#endif
        },
        {"uploadTexture", upload, "plain loop and GLU", plainUpload},
    };
    return all;
}
} // namespace tamor::bench
