#include "benchmarks/support/CallWriter.h"

#include <fstream>

namespace tamor::bench
{
bool writeCalls(const std::vector<test::RecordedCall>& calls, const std::string& file)
{
    std::ofstream stream(file, std::ios::binary);
    for (const test::RecordedCall& call : calls) {
        const std::string text = call.describe(call);
        stream << text.substr(0, text.find('(')) << ' ' << call.data.size() << ' ';
        stream.write(reinterpret_cast<const char*>(call.arguments.data()),
                     static_cast<std::streamsize>(call.arguments.size()));
        stream.write(reinterpret_cast<const char*>(call.data.data()),
                     static_cast<std::streamsize>(call.data.size()));
    }
    return stream.good();
}
} // namespace tamor::bench
