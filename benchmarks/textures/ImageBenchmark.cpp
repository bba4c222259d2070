// The conversion of an upload: floats to bytes, into memory that was never touched before.
//
//   BM_uploadTexture_bytes/N   uploadTexture of N by N pixels. GLU's part is taken away: this
//                              program has a gluBuild2DMipmaps of its own, which does nothing
//   BM_memcpy_bytes/N          as many bytes copied into fresh memory
//
// Both leave what they allocate, as an upload does. "bytes_per_second" counts the bytes made, four
// a pixel. Run by scripts/bench, or by hand under a display.

#include "benchmarks/support/NoOpWindow.h"
#include "textures/Image.h"

#include <GL/gl.h>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstring>
#include <vector>

namespace
{
const std::uint8_t* lastUpload = nullptr;
} // namespace

extern "C" GLint gluBuild2DMipmaps(GLenum /*target*/, GLint /*format*/, GLsizei /*width*/,
                                   GLsizei /*height*/, GLenum /*dataFormat*/, GLenum /*type*/,
                                   const void* data)
{
    lastUpload = static_cast<const std::uint8_t*>(data);
    return 0;
}

namespace tamor::bench
{
namespace
{
constexpr int iterations = 200; // each leaves its bytes

void BM_uploadTexture_bytes(benchmark::State& state)
{
    openNoOpWindow();
    const auto size = static_cast<std::int32_t>(state.range(0));
    Image image;
    image.allocate(size, size);
    const std::size_t count = image.pixelCount() * 4;
    for (std::size_t k = 0; k < count; k++)
        image.pixels[k] = static_cast<float>(k % 256) / 255.0F;
    std::uint32_t id = 0;
    uploadTexture(id, image, {"", 0});
    if (lastUpload[200] != 200)
        state.SkipWithError("these are not the image's bytes");

    for (auto each : state)
        uploadTexture(id, image, {"", 0});
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(count));
}
BENCHMARK(BM_uploadTexture_bytes)->Arg(512)->Arg(1024)->Iterations(iterations);

void BM_memcpy_bytes(benchmark::State& state)
{
    const auto count = static_cast<std::size_t>(state.range(0) * state.range(0) * 4);
    const std::vector<std::uint8_t> source(count, 1);

    for (auto each : state) {
        auto* const bytes = new std::uint8_t[count];
        std::memcpy(bytes, source.data(), count);
        lastUpload = bytes;
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(count));
}
BENCHMARK(BM_memcpy_bytes)->Arg(512)->Arg(1024)->Iterations(iterations);
} // namespace
} // namespace tamor::bench
