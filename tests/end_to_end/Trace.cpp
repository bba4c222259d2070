#include "tests/end_to_end/Trace.h"

#include "tests/support/ChildProcess.h"

#include <gtest/gtest.h>

#include <sstream>

namespace tamor::test
{
std::map<std::string, std::string> Trace::environment()
{
    // The tracer comes before the sanitiser's library, which is harmless here.
    return {{"ASAN_OPTIONS", "verify_asan_link_order=0:detect_leaks=0"}};
}

std::vector<std::vector<std::string>> Trace::frames() const
{
    ChildProcess dumper({"apitrace", "dump", "--color=never", "--call-nos=no", "--arg-names=no",
                         "--thread-ids=no", path});
    EXPECT_EQ(dumper.wait(std::chrono::seconds(200)).status, 0) << dumper.errors();
    std::vector<std::vector<std::string>> frames(1);
    std::istringstream lines(dumper.output());
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("glXSwapBuffers("))
            frames.emplace_back();
        else if (line.starts_with("gl"))
            frames.back().push_back(line);
    }
    return frames;
}
} // namespace tamor::test
