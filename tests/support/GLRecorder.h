/// \file
/// The OpenGL calls that code makes, noted on their way to the real driver.
///
/// A program that uses `GLRecorder` gets its OpenGL functions, and a few of SDL's, from
/// GLRecorder.cpp, which forwards each call to the real one. While a recorder lives it notes them
/// too. What a GLU function calls in turn is part of that function and is not noted.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace tamor::test
{
/// One call: enough to write it out and to make it again.
struct RecordedCall
{
    static constexpr std::size_t argumentBytes = 72;

    std::string (*describe)(const RecordedCall&) = nullptr;
    void (*play)(const RecordedCall&) = nullptr;
    alignas(8) std::array<std::byte, argumentBytes> arguments{};
    /// What the call's pointer stood for: list names, a matrix, a light's parameters, the pixels of a
    /// picture. Not the contents of arrays, buffers and shaders.
    std::vector<std::uint8_t> data;
};

/// Notes all calls made while it lives. There may be one at a time.
class GLRecorder
{
public:
    GLRecorder();
    ~GLRecorder();
    GLRecorder(const GLRecorder&) = delete;
    GLRecorder& operator=(const GLRecorder&) = delete;

    /// The calls so far as text, such as "glEnable(GL_BLEND)", "glVertex2f(0.5, -1)",
    /// "glCallLists(2, GL_UNSIGNED_BYTE, \"ab\")". Floats have up to six digits; a pointer to much
    /// data is "data" or "null".
    std::vector<std::string> calls() const;

    /// Those of `calls` that begin with one of `names`, each a whole function name.
    std::vector<std::string> calls(const std::vector<std::string>& names) const;

    /// The calls themselves, to be made again.
    const std::vector<RecordedCall>& records() const { return recorded; }

    /// Forgets the calls so far.
    void clear() { recorded.clear(); }

private:
    friend struct RecorderAccess;
    std::vector<RecordedCall> recorded;
};

/// Makes the calls again, straight to the driver, past any recorder.
void replay(const std::vector<RecordedCall>& calls);
} // namespace tamor::test
