#include "models/internal/ModelFile.h"

#include <cstring>

namespace tamor
{
void ModelFile::refill()
{
    std::memmove(block.data(), rest.data(), rest.size());
    const std::size_t free = block.size() - rest.size();
    const std::size_t count = std::fread(block.data() + rest.size(), 1, free, stream);
    rest = std::string_view(block.data(), rest.size() + count);
    streamEnded = count < free;
}
} // namespace tamor
