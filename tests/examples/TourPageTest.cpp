#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

namespace tamor::test
{
namespace
{
std::string readWhole(const std::string& path)
{
    std::ifstream file(TAMOR_SOURCES + path);
    return {std::istreambuf_iterator<char>(file), {}};
}

class TourPageTest : public testing::TestWithParam<const char*>
{};

TEST_P(TourPageTest, ListsPiecesOfTheFilesThatItNames)
{
    const std::string page = readWhole(GetParam());
    const std::string name = "examples/tour/";
    int listings = 0;

    // The first line of a listing is "```cpp examples/tour/Tour.cpp".
    for (std::size_t at = page.find(" " + name); at != std::string::npos;
         at = page.find(" " + name, at + 1)) {
        const std::size_t start = page.rfind('\n', at) + 1;
        if (page.compare(start, 3, "```") != 0)
            continue;
        const std::size_t end = page.find('\n', at);
        const std::string file = page.substr(at + 1, end - at - 1);
        const std::string listing = page.substr(end + 1, page.find("```", end) - end - 1);
        EXPECT_NE(readWhole(file).find(listing), std::string::npos) << file << ":\n" << listing;
        ++listings;
    }

    EXPECT_GT(listings, 0);
}

INSTANTIATE_TEST_SUITE_P(Manual, TourPageTest, testing::Values("docs/tour.md", "docs/hosting.md"));
} // namespace
} // namespace tamor::test
