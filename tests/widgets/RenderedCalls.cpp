#include "tests/widgets/RenderedCalls.h"

#include "tests/support/GLRecorder.h"

#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

namespace tamor::test
{
namespace
{
/// What stands between `front` and `back`, if `call` begins and ends with them.
bool isCall(std::string_view call, std::string_view front, std::string_view back,
            std::string& inside)
{
    if (call.size() < front.size() + back.size() || !call.starts_with(front) ||
        !call.ends_with(back))
        return false;
    inside = call.substr(front.size(), call.size() - front.size() - back.size());
    return true;
}

std::string withoutBlanks(std::string text)
{
    std::erase(text, ' ');
    return text;
}

/// Folds what follows a glBegin of `primitive` at `next`, up to its glEnd.
std::string foldPrimitive(const std::string& primitive, const std::vector<std::string>& calls,
                          std::size_t& next)
{
    std::string line = primitive;
    std::string coordinates;
    std::string inside;
    for (; next < calls.size() && calls[next] != "glEnd()"; ++next) {
        if (isCall(calls[next], "glTexCoord2f(", ")", inside))
            coordinates = "[" + withoutBlanks(inside) + "]";
        else if (isCall(calls[next], "glVertex2f(", ")", inside))
            line += " " + withoutBlanks(inside) + std::exchange(coordinates, "");
        else
            line += " " + calls[next];
    }
    ++next;
    return line + "\n";
}

/// Folds what follows a glPushAttrib at `next`, up to its glPopAttrib.
std::string foldText(const std::vector<std::string>& calls, std::size_t& next)
{
    std::string text;
    std::string separator;
    for (; next < calls.size() && calls[next] != "glPopAttrib()"; ++next) {
        const std::string& call = calls[next];
        if (!call.starts_with("glCallLists("))
            continue;
        const std::size_t quote = call.find('"');
        const bool isEmpty = quote == std::string::npos;
        text += separator + (isEmpty ? "" : call.substr(quote + 1, call.size() - quote - 3));
        separator = "/";
    }
    ++next;
    return "print \"" + text + "\"\n";
}
} // namespace

std::string callsOfRender(GLWidget& widget)
{
    GLRecorder recorder;
    widget.render();
    const std::vector<std::string> calls = recorder.calls();

    std::string text = "\n";
    std::string inside;
    for (std::size_t next = 0; next < calls.size();) {
        const std::string& call = calls[next++];
        if (isCall(call, "glBegin(", ")", inside))
            text += foldPrimitive(inside, calls, next);
        else if (call.starts_with("glPushAttrib("))
            text += foldText(calls, next);
        else
            text += call + "\n";
    }
    return text;
}
} // namespace tamor::test
