#include "tests/end_to_end/Goldens.h"

namespace tamor::test
{
testing::AssertionResult showsTheSame(const Picture& picture, const std::string& name)
{
    return matchesGolden(picture, TAMOR_SOURCES "/tests/end_to_end/goldens/" + name + ".png");
}
} // namespace tamor::test
