#include "benchmarks/support/CallList.h"

#include <GL/gl.h>
#include <GL/glu.h>
#include <SDL.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <tuple>
#include <type_traits>

namespace tamor::bench
{
namespace
{
// As the recorder keeps them, whatever a call needs of it.
constexpr std::size_t recordedBytes = 72;

struct Function
{
    std::size_t argumentBytes;
    void (*make)(const std::byte* arguments);
    /// Lets a pointer among the arguments point to `data`.
    void (*point)(std::byte* arguments, std::byte* data);
};

template <auto Called>
struct FunctionOf;
template <typename Result, typename... Arguments, Result (*Called)(Arguments...)>
struct FunctionOf<Called>
{
    using Tuple = std::tuple<std::decay_t<Arguments>...>;

    static Tuple load(const std::byte* arguments)
    {
        Tuple values;
        std::memcpy(static_cast<void*>(&values), arguments, sizeof values);
        return values;
    }

    static void make(const std::byte* arguments) { std::apply(Called, load(arguments)); }

    static void point(std::byte* arguments, std::byte* data)
    {
        Tuple values = load(arguments);
        const auto pointOne = [data]<typename Value>(Value& value) {
            if constexpr (std::is_pointer_v<Value>)
                value = reinterpret_cast<Value>(data);
        };
        std::apply([&](auto&... each) { (pointOne(each), ...); }, values);
        std::memcpy(arguments, static_cast<const void*>(&values), sizeof values);
    }

    static constexpr Function entry = {sizeof(Tuple), make, point};
};

#define ENTRY(function)                                                                            \
    {                                                                                              \
#function, FunctionOf < function> ::entry                                                  \
    }

const std::map<std::string, Function> functions = {
    ENTRY(SDL_GL_SwapBuffers),
    ENTRY(SDL_ShowCursor),
    ENTRY(glBegin),
    ENTRY(glBindTexture),
    ENTRY(glBlendFunc),
    ENTRY(glCallLists),
    ENTRY(glClear),
    ENTRY(glClearColor),
    ENTRY(glColor3f),
    ENTRY(glColor4f),
    ENTRY(glDisable),
    ENTRY(glEnable),
    ENTRY(glEnd),
    ENTRY(glEndList),
    ENTRY(glGenLists),
    ENTRY(glGenTextures),
    ENTRY(glGetFloatv),
    ENTRY(glGetIntegerv),
    ENTRY(glIsTexture),
    ENTRY(glLineWidth),
    ENTRY(glListBase),
    ENTRY(glLoadIdentity),
    ENTRY(glLoadMatrixf),
    ENTRY(glMatrixMode),
    ENTRY(glMultMatrixf),
    ENTRY(glNewList),
    ENTRY(glOrtho),
    ENTRY(glPointSize),
    ENTRY(glPolygonMode),
    ENTRY(glPopAttrib),
    ENTRY(glPopMatrix),
    ENTRY(glPushAttrib),
    ENTRY(glPushMatrix),
    ENTRY(glRotatef),
    ENTRY(glScalef),
    ENTRY(glTexCoord2f),
    ENTRY(glTexImage2D),
    ENTRY(glTexParameteri),
    ENTRY(glTranslatef),
    ENTRY(glVertex2f),
    ENTRY(glVertex3f),
    ENTRY(glViewport),
    ENTRY(gluBuild2DMipmaps),
    ENTRY(gluPerspective),
};

const Function& functionOf(const std::string& name)
{
    const auto found = functions.find(name);
    if (found != functions.end())
        return found->second;
    std::printf("CallList.cpp knows no %s\n", name.c_str());
    std::exit(2);
}
} // namespace

CallList::CallList(const std::string& file)
{
    std::ifstream stream(file, std::ios::binary);
    std::string name;
    std::size_t dataBytes = 0;
    while (stream >> name >> dataBytes && stream.ignore()) {
        const Function& function = functionOf(name);
        calls.push_back({function.make, arguments.size()});
        arguments.resize(arguments.size() + function.argumentBytes);
        std::byte* own = arguments.data() + calls.back().offset;
        stream.read(reinterpret_cast<char*>(own),
                    static_cast<std::streamsize>(function.argumentBytes));
        stream.ignore(static_cast<std::streamsize>(recordedBytes - function.argumentBytes));
        if (dataBytes == 0)
            continue;
        data.emplace_back(dataBytes);
        stream.read(reinterpret_cast<char*>(data.back().data()),
                    static_cast<std::streamsize>(dataBytes));
        function.point(own, data.back().data());
    }
}

CallList CallList::ofFrame(const std::string& recorder, std::int64_t widgets)
{
    const std::string file = std::filesystem::absolute("frame.calls").string();
    if (std::system((recorder + " " + std::to_string(widgets) + " " + file).c_str()) != 0)
        return {};
    CallList list(file);
    if (list.size() < 10 * static_cast<std::size_t>(widgets))
        return {};
    return list;
}

void CallList::play() const
{
    for (const Call& call : calls)
        call.make(arguments.data() + call.offset);
}
} // namespace tamor::bench
