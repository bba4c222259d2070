#include "tests/end_to_end/Goldens.h"

#include <cstdlib>
#include <filesystem>

namespace tamor::test
{
namespace
{
constexpr int channelTolerance = 32;
constexpr int pixelsThatMayDiffer = 6;

bool differs(const Pixel& a, const Pixel& b)
{
    for (std::size_t i = 0; i < 3; i++) {
        if (std::abs(a[i] - b[i]) > channelTolerance)
            return true;
    }
    return false;
}
} // namespace

testing::AssertionResult showsTheSame(const Picture& picture, const std::string& name)
{
    const std::string path =
        std::string(TAMOR_SOURCES "/tests/end_to_end/goldens/") + name + ".png";
    if (std::getenv("TAMOR_UPDATE_GOLDENS") != nullptr) {
        std::filesystem::create_directories(std::filesystem::path(path).parent_path());
        writePicture(picture, path);
        return testing::AssertionSuccess();
    }
    const Picture golden = readPicture(path);
    if (golden.width != picture.width || golden.height != picture.height)
        return testing::AssertionFailure() << path << " has another size";
    int count = 0;
    for (int y = 0; y < picture.height; y++) {
        for (int x = 0; x < picture.width; x++)
            count += differs(picture.at(x, y), golden.at(x, y)) ? 1 : 0;
    }
    if (count <= pixelsThatMayDiffer)
        return testing::AssertionSuccess();
    const std::string kept = std::filesystem::temp_directory_path() / ("tamor-" + name + ".png");
    writePicture(picture, kept);
    return testing::AssertionFailure()
           << count << " pixels differ from " << path << ": see " << kept;
}
} // namespace tamor::test
