/// \file
/// Runs a fuzz target without a fuzzer.
///
///     replay DIRECTORY...              over the files of the directories
///     replay --damaged PLACES FILE...  over each file, cut at each of its bytes and with each bit of
///                                      each byte turned; of a longer file, at so many bytes
///
/// Where it ends, it says at which input.
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
// The sanitisers' own, where there are any.
extern "C" [[gnu::weak]] void
__sanitizer_set_death_callback(void (*callback)()); // NOLINT(clang-diagnostic-reserved-identifier)

namespace
{
/// What is being read.
std::string current;
long readings = 0;

void sayWhere()
{
    std::fprintf(stderr, "while reading %s\n", current.c_str());
}

void sayWhereAtASignal(int signal)
{
    sayWhere();
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

std::string bytesOf(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// A file, read before the target may go to another folder.
struct Sample
{
    std::string path;
    std::string bytes;
};

void read(const std::string& bytes, const std::string& what)
{
    current = what;
    // A copy of just this size, so that the sanitisers see who reads the byte behind it.
    const std::vector<std::uint8_t> copy(bytes.begin(), bytes.end());
    LLVMFuzzerTestOneInput(copy.data(), copy.size());
    readings++;
}

void readDamaged(const std::string& path, const std::string& whole, std::size_t mostPlaces)
{
    const std::size_t step = (whole.size() + mostPlaces - 1) / mostPlaces;
    for (std::size_t at = 0; at < whole.size(); at += step) {
        const std::string place = path + " at byte " + std::to_string(at);
        read(whole.substr(0, at), place + ", cut");
        for (int bit = 0; bit < 8; bit++) {
            std::string damaged = whole;
            damaged[at] = static_cast<char>(damaged[at] ^ (1 << bit));
            read(damaged, place + ", bit " + std::to_string(bit));
        }
    }
}
} // namespace

int main(int count, char** arguments)
{
    for (const int signal : {SIGABRT, SIGSEGV, SIGFPE, SIGILL})
        if (signal == SIGABRT || &__sanitizer_set_death_callback == nullptr)
            std::signal(signal, sayWhereAtASignal);
    if (&__sanitizer_set_death_callback != nullptr)
        __sanitizer_set_death_callback(sayWhere);

    const bool isDamaged = count > 2 && std::string(arguments[1]) == "--damaged";
    std::vector<Sample> samples;
    for (int i = isDamaged ? 3 : 1; i < count; ++i) {
        if (isDamaged)
            samples.push_back({arguments[i], bytesOf(arguments[i])});
        else
            for (const auto& entry : std::filesystem::directory_iterator(arguments[i]))
                samples.push_back({entry.path(), bytesOf(entry.path())});
    }
    for (const auto& [path, bytes] : samples) {
        read(bytes, path);
        if (isDamaged)
            readDamaged(path, bytes, std::stoul(arguments[2]));
        if (isDamaged && bytes.empty())
            return 1; // it is not there
    }
    std::printf("%ld readings\n", readings);
    return readings > 0 ? 0 : 1;
}
