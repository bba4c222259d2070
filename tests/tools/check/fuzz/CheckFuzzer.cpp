// The checker under a fuzzer. The first byte chooses the kind of file, the others are the file. Where
// TAMOR_FUZZ_KIND names a kind, all files are of that one.

#include "tools/check/Check.h"
#include "tools/check/Output.h"

#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>

namespace
{
using namespace tamor::check;

FileKind kindChosenBy(std::uint8_t byte)
{
    if (const char* const only = std::getenv("TAMOR_FUZZ_KIND"))
        for (const FileKindName& name : fileKinds())
            if (name.word == only)
                return name.kind;
    return fileKinds()[byte % fileKinds().size()].kind;
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return 0;
    const std::string text(reinterpret_cast<const char*>(data + 1), size - 1);
    const FileKind kind = kindChosenBy(data[0]);
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
