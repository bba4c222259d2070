// Saves models of any parts as VRX, and loads files of any bytes: the body must be what the format's
// rules say, a save hands on nothing else, and a load leaves the model alone. With libFuzzer's own
// main this is the fuzzer; with ReplayCorpus.cpp it runs the kept corpus, as ctest does.
#include "models/VRXModel.h"
#include "tests/support/FuzzFile.h"
#include "tests/support/FuzzInput.h"
#include "tests/support/PrintedBy.h"

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

namespace
{
using namespace tamor;
using namespace tamor::test;

using Bytes = std::vector<std::uint8_t>;

/// A model with some of everything, and its bones, which it does not own.
struct OwnedModel
{
    explicit OwnedModel(FuzzInput& input)
    {
        for (int bone = input.below(8); bone > 0; bone--) {
            bones.emplace_back().flags = input.take<std::int32_t>();
            bones.back().name = std::string(static_cast<std::size_t>(input.below(40)), 'n');
            bones.back().attached.resize(static_cast<std::size_t>(input.below(5)));
            model.bones.push_back(&bones.back());
        }
        model.vertices.resize(static_cast<std::size_t>(input.below(9)));
        model.restVertices.resize(static_cast<std::size_t>(input.below(40)));
        model.faces.resize(static_cast<std::size_t>(input.below(40)));
        model.materials.resize(static_cast<std::size_t>(input.below(40)));
        for (Vector* const vector : {&model.position, &model.rotation})
            *vector = Vector{input.take<float>(), input.take<float>(), input.take<float>()};
        model.frameCount = input.take<std::int32_t>();
        model.renderMode = input.take<std::int32_t>();
    }

    std::deque<Bone> bones;
    VRXModel model;
};

/// The model's bytes from a member on, and zeros behind the last field.
void addSection(Bytes& body, const Model& model, const void* member, std::size_t size)
{
    const auto* const first = static_cast<const std::uint8_t*>(member);
    const auto* const end = reinterpret_cast<const std::uint8_t*>(&model.renderMode + 1);
    for (std::size_t k = 0; k < size; k++)
        body.push_back(first + k < end ? first[k] : std::uint8_t{0});
}

Bytes plainBody(const Model& model)
{
    Bytes body;
    for (const Bone* const bone : model.bones) {
        const auto* const bytes = reinterpret_cast<const std::uint8_t*>(bone);
        body.insert(body.end(), bytes, bytes + 208);
    }
    addSection(body, model, &model.restVertices, model.restVertices.size() * 44);
    addSection(body, model, &model.faces, model.faces.size() * 64);
    addSection(body, model, &model.materials, model.materials.size() * 80);
    return body;
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    OwnedModel owned(input);
    VRXModel& model = owned.model;
    const Bytes body = plainBody(model);
    if (makeVRXBody(model) != body)
        failFuzzing("the body is not what the rules say");

    const FuzzFile file(std::string(data, data + size));
    std::int32_t saved = 0;
    std::int32_t loaded = 0;
    std::int32_t missed = 1;
    const std::string errors = printedBy([&] {
        saved = model.save();
        loaded = model.load(file.path());
        missed = model.load(file.path() + "x");
    });
    if (saved != 1 || loaded != 1 || missed != 0 ||
        errors != "writing\n'" + file.path() + "x': Invalid model filename\n")
        failFuzzing("this was printed: " + errors);
    if (makeVRXBody(model) != body)
        failFuzzing("saving or loading has changed the model");
    return 0;
}
