#include "models/ModelFactory.h"

#include "models/MS3DModel.h"

#include <memory>
#include <tuple>

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

/// The plain model of a name that goes to the reader of MilkShape 3D's files.
///
/// Meant: never freed, though another takes its place: a host that counts what the factory makes
/// finds two for such a name; `CreateModel.LeavesThePlainModelOfAnMS3DName` holds it.
Model* newAbandonedModel()
{
    return new Model;
}
} // namespace

Model* createModel(const std::string& name)
{
    const bool isBuiltIn = name == "cube" || name == "teapot";
    const bool isMS3D = !isBuiltIn && endsIn(name, ".ms3d");
    std::unique_ptr<Model> model(isMS3D ? newAbandonedModel() : new Model);
    if (isBuiltIn) {
        if (name == "cube")
            model->makeCube();
        else
            model->makeTeapot();
        return model.release();
    }

    // Meant: this is the plain model, which reads nothing, and not a `VRXModel`, whose format is
    // unfinished; `CreateModel.GivesAnEmptyModelForAVRXName` holds it.
    if (endsIn(name, ".vrx"))
        model->load(name);
    if (isMS3D) {
        std::ignore = model.release();
        model = std::make_unique<MS3DModel>();
        model->load(name);
    }
    model->prepare(0);
    return model.release();
}
} // namespace tamor
