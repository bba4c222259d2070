// The checker under a fuzzer. The first byte chooses the kind of file, the others are the file.

#include "tools/check/Check.h"
#include "tools/check/Output.h"

#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace tamor::check;
    if (size == 0)
        return 0;
    const std::string text(reinterpret_cast<const char*>(data + 1), size - 1);
    const FileKind kind = fileKinds()[data[0] % fileKinds().size()].kind;
    kindOfContent(text);
    const std::vector<Finding> findings = checkText("file", text, kind);
    for (const Finding& finding : findings) {
        // What is found stands in the file, on a line of its own.
        if (finding.line == 0 || finding.column == 0 || finding.column > size ||
            finding.message.find('\n') != std::string::npos)
            std::abort();
    }
    std::ostringstream output;
    writeText(output, findings, true);
    writeJSON(output, findings);
    return 0;
}
