#include "models/ModelFactory.h"

#include "models/MS3DModel.h"

#include <memory>

namespace tamor
{
namespace
{
/// Whether `name` ends in `suffix`.
///
/// Meant: a name one character shorter than the suffix passes too, since not found is -1 in
/// unsigned arithmetic; `CreateModel.TakesAnyNameOfFourCharactersForAnMS3DFile` holds it.
bool endsIn(const std::string& name, const std::string& suffix)
{
    return name.rfind(suffix) == name.size() - suffix.size();
}
} // namespace

Model* createModel(const std::string& name)
{
    auto model = std::make_unique<Model>();
    if (name == "cube") {
        model->makeCube();
        return model.release();
    }
    if (name == "teapot") {
        model->makeTeapot();
        return model.release();
    }

    // Meant: this is the plain model, which reads nothing, and not a `VRXModel`, whose format is
    // unfinished; `CreateModel.GivesAnEmptyModelForAVRXName` holds it.
    if (endsIn(name, ".vrx"))
        model->load(name);
    if (endsIn(name, ".ms3d")) {
        model = std::make_unique<MS3DModel>();
        model->load(name);
    }
    model->prepare(0);
    return model.release();
}
} // namespace tamor
