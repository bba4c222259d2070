#include "tests/end_to_end/Demonstration.h"
#include "tests/support/ChildProcess.h"

#include <gtest/gtest.h>

namespace tamor::test
{
namespace
{
/// Runs a script in `directory` and expects it to end with `status`. Returns what it wrote.
std::string runScript(const std::string& name, const std::string& argument, int status)
{
    ChildProcess script({TAMOR_SOURCES "/scripts/" + name, argument});
    EXPECT_EQ(script.wait().status, status);
    return script.output() + script.errors();
}

TEST(TheDemoScript, RefusesAnArgumentThatItDoesNotKnow)
{
    EXPECT_EQ(runScript("demo", "--nonsense", 1),
              "demo: unknown argument '--nonsense': see the head of scripts/demo\n");
}
} // namespace
} // namespace tamor::test
