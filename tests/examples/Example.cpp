#include "tests/examples/Example.h"

#include "tests/support/ChildProcess.h"
#include "tests/support/VirtualDisplay.h"

#include <gtest/gtest.h>

#include <fstream>

namespace tamor::test
{
int runExample(const std::vector<std::string>& arguments, const std::string& expectedErrors)
{
    useTestDisplay();
    ChildProcess example(arguments);
    const ProcessEnd end = example.wait();
    EXPECT_FALSE(end.timedOut);
    EXPECT_EQ(example.errors(), expectedErrors);
    return end.status;
}

Picture readScreenshot(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::string kind;
    int largest = 0;
    Picture picture;
    file >> kind >> picture.width >> picture.height >> largest;
    file.get();
    if (!file || kind != "P6" || largest != 255)
        return {};
    picture.bytes.resize(static_cast<std::size_t>(picture.width * picture.height) * 3);
    file.read(reinterpret_cast<char*>(picture.bytes.data()),
              static_cast<std::streamsize>(picture.bytes.size()));
    return picture;
}
} // namespace tamor::test
