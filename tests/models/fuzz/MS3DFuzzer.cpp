// Feeds the reader of model files with any bytes: it must read what the plain reader reads, to the
// last bit, and nothing that is done with the model may lead outside of it. With libFuzzer's own
// main this is the fuzzer; with ReplayCorpus.cpp it runs the kept corpus, as ctest does.
#include "models/MS3DModel.h"
#include "models/internal/CornerArrays.h"
#include "tests/models/PlainMS3DReader.h"
#include "textures/TextureRegistry.h"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace tamor
{
// There is no OpenGL here: every texture is the first one.
bool assignTexture(std::uint32_t& id, const TextureKey& /*key*/)
{
    id = 1;
    return true;
}
} // namespace tamor

namespace
{
using namespace tamor;

constexpr std::size_t longest = 8192;

/// Whether a count may be so large that the reader would rightly ask for more memory than there is:
/// a number of more than two digits. Behind a point more are let through, unless the line is so
/// long that a piece of it may begin there.
bool asksForTooMuch(const std::string& text)
{
    std::size_t lineStart = 0;
    while (lineStart < text.size()) {
        const std::size_t lineEnd = std::min(text.find('\n', lineStart), text.size());
        const bool isShort = lineEnd - lineStart < 255;
        std::size_t digits = 0;
        bool isFraction = false;
        for (std::size_t i = lineStart; i < lineEnd; ++i) {
            if (text[i] < '0' || text[i] > '9') {
                isFraction = isShort && text[i] == '.';
                digits = 0;
            } else if (++digits > 2 && !isFraction) {
                return true;
            }
        }
        lineStart = lineEnd + 1;
    }
    return false;
}

void useModel(Model& model)
{
    model.prepare(1);
    model.computeNormals(false);
    for (Bone* bone : model.rootBones) {
        model.animateBone(bone->index, 0.5F);
        model.poseBone(bone, Matrix(), false);
    }
    makeCornerArrays(model, false, true);
    makeCornerArrays(model, true, true);
}

void deleteBones(const Model& model)
{
    for (const Bone* bone : model.bones)
        delete bone;
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size > longest)
        return 0;
    // The last line must count, or the readers would wait for one that does for ever.
    const std::string text = std::string(data, data + size) + "\n0\n";
    if (asksForTooMuch(text))
        return 0;
    const int file = memfd_create("model", 0);
    if (write(file, text.data(), text.size()) != static_cast<ssize_t>(text.size()))
        std::abort();
    const std::string path = "/proc/self/fd/" + std::to_string(file);

    MS3DModel model;
    model.load(path);
    Model plain;
    std::FILE* stream = std::fopen(path.c_str(), "r");
    test::readPlainly(plain, stream);
    std::fclose(stream);
    close(file);

    const std::string found = test::difference(model, plain);
    if (!found.empty()) {
        std::fprintf(stderr, "the plain reader differs: %s\n", found.c_str());
        std::abort();
    }
    useModel(model);
    deleteBones(model);
    deleteBones(plain);
    return 0;
}
