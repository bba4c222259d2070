#include "platform/InputRecorder.h"

#include "platform/internal/InputLines.h"

#include <iostream>
#include <locale>
#include <utility>

namespace tamor
{
namespace
{
constexpr std::int32_t subscription =
    1 << CLASS_RESOURCES | 1 << CLASS_UPDATE | 1 << CLASS_MOUSE | 1 << CLASS_KEYBOARD;
constexpr std::int32_t priority = 500;
} // namespace

InputRecorder::InputRecorder(const ObjectRef<Kernel>& kernel, std::string newPath)
    : path(std::move(newPath))
{
    kernel->addCatcher(this, subscription, priority);
}

bool InputRecorder::handleEvent(Event event)
{
    switch (event.kind) {
    case EV_LOAD_RESOURCES:
        file.open(path, std::ios::binary);
        file.imbue(std::locale::classic());
        file << recordingTitle << '\n';
        break;
    case EV_RELEASE_RESOURCES:
        file.close();
        break;
    default:
        writeInput(file, event);
        break;
    }
    file.flush();
    if (file.fail()) {
        std::cerr << "Error writing input file '" << path << "'" << std::endl;
        return false;
    }
    return true;
}
} // namespace tamor
