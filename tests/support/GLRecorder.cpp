#include "platform/GLee.h"

#include "tests/support/GLRecorder.h"

#include <GL/glu.h>
#include <SDL.h>
#include <dlfcn.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <tuple>
#include <type_traits>

namespace tamor::test
{
struct RecorderAccess
{
    static std::vector<RecordedCall>& calls(GLRecorder& recorder) { return recorder.recorded; }
};

namespace
{
GLRecorder* activeRecorder = nullptr;

/// Above 0 while a noted function runs, whose own calls are not noted.
int nesting = 0;

// --- Words ----------------------------------------------------------------------------------

struct NamedValue
{
    GLenum value;
    const char* name;
};

#define NAMED(name)                                                                                \
    NamedValue                                                                                     \
    {                                                                                              \
        name, #name                                                                                \
    }

constexpr std::array primitives = {
    NAMED(GL_POINTS),     NAMED(GL_LINES),          NAMED(GL_LINE_LOOP),    NAMED(GL_LINE_STRIP),
    NAMED(GL_TRIANGLES),  NAMED(GL_TRIANGLE_STRIP), NAMED(GL_TRIANGLE_FAN), NAMED(GL_QUADS),
    NAMED(GL_QUAD_STRIP), NAMED(GL_POLYGON),
};

constexpr std::array bits = {
    NAMED(GL_DEPTH_BUFFER_BIT), NAMED(GL_COLOR_BUFFER_BIT), NAMED(GL_ENABLE_BIT),
    NAMED(GL_CURRENT_BIT),      NAMED(GL_LINE_BIT),         NAMED(GL_POLYGON_BIT),
    NAMED(GL_LIGHTING_BIT),     NAMED(GL_TEXTURE_BIT),      NAMED(GL_TRANSFORM_BIT),
};

constexpr std::array enumerants = {
    NAMED(GL_BLEND),
    NAMED(GL_TEXTURE_2D),
    NAMED(GL_DEPTH_TEST),
    NAMED(GL_LIGHTING),
    NAMED(GL_LIGHT0),
    NAMED(GL_LIGHT1),
    NAMED(GL_COLOR_MATERIAL),
    NAMED(GL_CULL_FACE),
    NAMED(GL_NORMALIZE),
    NAMED(GL_PROJECTION),
    NAMED(GL_MODELVIEW),
    NAMED(GL_MODELVIEW_MATRIX),
    NAMED(GL_PROJECTION_MATRIX),
    NAMED(GL_VIEWPORT),
    NAMED(GL_SRC_ALPHA),
    NAMED(GL_ONE_MINUS_SRC_ALPHA),
    NAMED(GL_FRONT),
    NAMED(GL_BACK),
    NAMED(GL_FRONT_AND_BACK),
    NAMED(GL_POINT),
    NAMED(GL_LINE),
    NAMED(GL_FILL),
    NAMED(GL_COMPILE),
    NAMED(GL_UNSIGNED_BYTE),
    NAMED(GL_UNSIGNED_INT),
    NAMED(GL_FLOAT),
    NAMED(GL_RGB),
    NAMED(GL_RGBA),
    NAMED(GL_LUMINANCE),
    NAMED(GL_TEXTURE_MIN_FILTER),
    NAMED(GL_TEXTURE_MAG_FILTER),
    NAMED(GL_TEXTURE_WRAP_S),
    NAMED(GL_TEXTURE_WRAP_T),
    NAMED(GL_NEAREST),
    NAMED(GL_LINEAR),
    NAMED(GL_LINEAR_MIPMAP_NEAREST),
    NAMED(GL_CLAMP_TO_EDGE),
    NAMED(GL_POSITION),
    NAMED(GL_SPOT_DIRECTION),
    NAMED(GL_AMBIENT),
    NAMED(GL_DIFFUSE),
    NAMED(GL_SPECULAR),
    NAMED(GL_EMISSION),
    NAMED(GL_SHININESS),
    NAMED(GL_AMBIENT_AND_DIFFUSE),
    NAMED(GL_CONSTANT_ATTENUATION),
    NAMED(GL_LINEAR_ATTENUATION),
    NAMED(GL_QUADRATIC_ATTENUATION),
    NAMED(GL_SMOOTH),
    NAMED(GL_FLAT),
    NAMED(GL_LESS),
    NAMED(GL_LEQUAL),
    NAMED(GL_VERTEX_ARRAY),
    NAMED(GL_NORMAL_ARRAY),
    NAMED(GL_COLOR_ARRAY),
    NAMED(GL_TEXTURE_COORD_ARRAY),
    NAMED(GL_ARRAY_BUFFER),
    NAMED(GL_ELEMENT_ARRAY_BUFFER),
    NAMED(GL_STATIC_DRAW),
    NAMED(GL_DYNAMIC_DRAW),
    NAMED(GL_STREAM_DRAW),
    NAMED(GL_VERTEX_SHADER),
    NAMED(GL_FRAGMENT_SHADER),
    NAMED(GL_COMPILE_STATUS),
    NAMED(GL_LINK_STATUS),
    NAMED(GL_INFO_LOG_LENGTH),
};

template <typename Table>
std::string nameOf(const Table& table, GLenum value)
{
    const auto found = std::find_if(table.begin(), table.end(), [value](const NamedValue& named) {
        return named.value == value;
    });
    if (found != table.end())
        return found->name;
    char text[16];
    std::snprintf(text, sizeof text, "0x%X", value);
    return text;
}

std::string namesOfBits(GLbitfield mask)
{
    std::string text;
    for (const NamedValue& bit : bits) {
        if ((mask & bit.value) == 0)
            continue;
        if (!text.empty())
            text += '|';
        text += bit.name;
        mask &= ~bit.value;
    }
    return mask == 0 ? text : nameOf(bits, mask);
}

std::string wordOf(double number)
{
    char text[32];
    // Adding 0 turns -0 into 0: the sign of a zero is free.
    std::snprintf(text, sizeof text, "%.6g", number + 0.0);
    return std::strcmp(text, "-0") == 0 ? "0" : text;
}

std::string floatsOf(const std::vector<std::uint8_t>& data)
{
    std::string text = "[";
    for (std::size_t offset = 0; offset + sizeof(float) <= data.size(); offset += sizeof(float)) {
        float number = 0;
        std::memcpy(&number, &data[offset], sizeof number);
        text += (offset == 0 ? "" : ", ") + wordOf(static_cast<double>(number));
    }
    return text + "]";
}

/// Writes an argument by its letter in a function's format:
/// p primitive, e enumerant, b bits, n number, 4 and m that many floats (m is 16), t text as long
/// as the first argument says, o a place for an answer, i a picture's pixels, v any other pointer.
template <typename T>
std::string argumentText(char letter, T value, const RecordedCall& call)
{
    if constexpr (std::is_pointer_v<T>) {
        if (letter == '4' || letter == 'm')
            return floatsOf(call.data);
        if (letter == 't')
            return '"' + std::string(call.data.begin(), call.data.end()) + '"';
        if (letter == 'o')
            return "answer";
        return value == nullptr ? "null" : "data";
    } else {
        if (letter == 'p')
            return nameOf(primitives, static_cast<GLenum>(value));
        if (letter == 'e')
            return nameOf(enumerants, static_cast<GLenum>(value));
        if (letter == 'b')
            return namesOfBits(static_cast<GLbitfield>(value));
        return wordOf(static_cast<double>(value));
    }
}

// --- One function ---------------------------------------------------------------------------

[[noreturn]] void endForLackOf(const char* name)
{
    std::fprintf(stderr, "%s: no such function in the libraries\n", name);
    std::abort();
}

void* realFunction(const char* name)
{
    for (const char* library : {"libGL.so.1", "libGLU.so.1", "libSDL-1.2.so.0"}) {
        void* handle = dlopen(library, RTLD_LAZY | RTLD_GLOBAL);
        if (void* function = handle == nullptr ? nullptr : dlsym(handle, name))
            return function;
    }
    endForLackOf(name);
}

template <std::size_t Length>
struct FixedText
{
    constexpr FixedText(const char (&source)[Length]) { std::copy_n(source, Length, text); }
    char text[Length];
};

/// The arguments of a call side by side, as bytes that may be copied.
template <typename Function>
struct Signature;
template <typename Result, typename... Arguments>
struct Signature<Result(Arguments...)>
{
    using Tuple = std::tuple<std::decay_t<Arguments>...>;
    static_assert(sizeof(Tuple) <= RecordedCall::argumentBytes);

    static Tuple load(const RecordedCall& call)
    {
        Tuple arguments;
        std::memcpy(static_cast<void*>(&arguments), call.arguments.data(), sizeof arguments);
        return arguments;
    }
};

/// The bytes that OpenGL reads of a picture, whose rows begin at multiples of four.
std::size_t pictureBytes(GLsizei width, GLsizei height, GLenum format, GLenum type)
{
    if (width <= 0 || height <= 0)
        return 0;
    const std::size_t channels = format == GL_RGBA ? 4 : format == GL_RGB ? 3 : 1;
    const std::size_t row =
        static_cast<std::size_t>(width) * channels * (type == GL_FLOAT ? sizeof(float) : 1);
    return (row + 3) / 4 * 4 * (static_cast<std::size_t>(height) - 1) + row;
}

/// How many bytes behind a pointer argument are kept with the call. A picture's size, format and
/// type stand before its pixels, with a border between them in glTexImage2D.
template <typename Tuple>
std::size_t dataBytes(char letter, const Tuple& arguments)
{
    if constexpr (std::tuple_size_v<Tuple> >= 7) {
        constexpr std::size_t last = std::tuple_size_v<Tuple> - 1;
        constexpr std::size_t size = last == 8 ? 3 : 2;
        if (letter == 'i')
            return pictureBytes(std::get<size>(arguments), std::get<size + 1>(arguments),
                                std::get<last - 2>(arguments), std::get<last - 1>(arguments));
    }
    if (letter == 'm' || letter == 'o')
        return 16 * sizeof(float);
    if (letter == '4')
        return 4 * sizeof(float);
    if constexpr (std::is_integral_v<std::tuple_element_t<0, Tuple>>) {
        if (letter == 't')
            return static_cast<std::size_t>(std::get<0>(arguments));
    }
    return 0;
}

/// Keeps what a pointer argument stands for. An answer is not there yet: its place is kept.
template <typename T>
void keepData(RecordedCall& call, char letter, T value, std::size_t byteCount)
{
    if constexpr (std::is_pointer_v<T>) {
        const auto* bytes = reinterpret_cast<const std::uint8_t*>(value);
        if (letter == 'o')
            call.data.assign(byteCount, 0);
        else if (bytes != nullptr && byteCount != 0)
            call.data.assign(bytes, bytes + byteCount);
    }
}

template <FixedText Name, FixedText Format, typename Function, Function** Real>
struct Forward;
template <FixedText Name, FixedText Format, typename Result, typename... Arguments,
          Result (**Real)(Arguments...)>
struct Forward<Name, Format, Result(Arguments...), Real>
{
    using Tuple = typename Signature<Result(Arguments...)>::Tuple;

    static std::string describe(const RecordedCall& call)
    {
        std::string text = std::string(Name.text) + "(";
        std::size_t index = 0;
        std::apply(
            [&](auto... values) {
                ((text += (index == 0 ? "" : ", ") + argumentText(Format.text[index], values, call),
                  ++index),
                 ...);
            },
            Signature<Result(Arguments...)>::load(call));
        return text + ")";
    }

    static void play(const RecordedCall& call)
    {
        std::apply([&](auto... values) { (*Real)(withData(values, call)...); },
                   Signature<Result(Arguments...)>::load(call));
    }

    static Result run(Arguments... values)
    {
        if (activeRecorder != nullptr && nesting == 0)
            note(Tuple(values...));
        ++nesting;
        struct Leave
        {
            ~Leave() { --nesting; }
        } leave;
        return (*Real)(values...);
    }

private:
    template <typename T>
    static T withData(T value, const RecordedCall& call)
    {
        if constexpr (std::is_pointer_v<T>) {
            if (!call.data.empty())
                return reinterpret_cast<T>(const_cast<std::uint8_t*>(call.data.data()));
        }
        return value;
    }

    static void note(const Tuple& arguments)
    {
        RecordedCall call;
        call.describe = describe;
        call.play = play;
        std::memcpy(call.arguments.data(), static_cast<const void*>(&arguments), sizeof arguments);
        std::size_t index = 0;
        std::apply(
            [&](auto... values) {
                ((keepData(call, Format.text[index], values,
                           dataBytes(Format.text[index], arguments)),
                  ++index),
                 ...);
            },
            arguments);
        RecorderAccess::calls(*activeRecorder).push_back(std::move(call));
    }
};
} // namespace
} // namespace tamor::test

// FORWARDED(FORMAT, RESULT, NAME, PARAMETERS, ARGUMENTS): a function of the libraries, found at its
// first call and called through the pointer that stands before it.
#define FORWARDED(format, result, name, parameters, arguments)                                     \
    namespace                                                                                      \
    {                                                                                              \
    result(*real_##name) parameters = nullptr;                                                     \
    }                                                                                              \
    extern "C" result name parameters                                                              \
    {                                                                                              \
        if (real_##name == nullptr)                                                                \
            real_##name =                                                                          \
                reinterpret_cast<result(*) parameters>(tamor::test::realFunction(#name));          \
        return tamor::test::Forward<#name, format, result parameters, &real_##name>::run           \
            arguments;                                                                             \
    }

// --- OpenGL 1.1, GLU and SDL ------------------------------------------------------------------

FORWARDED("p", void, glBegin, (GLenum mode), (mode))
FORWARDED("", void, glEnd, (), ())
FORWARDED("nn", void, glVertex2f, (GLfloat x, GLfloat y), (x, y))
FORWARDED("nnn", void, glVertex3f, (GLfloat x, GLfloat y, GLfloat z), (x, y, z))
FORWARDED("nn", void, glTexCoord2f, (GLfloat s, GLfloat t), (s, t))
FORWARDED("nnn", void, glNormal3f, (GLfloat x, GLfloat y, GLfloat z), (x, y, z))
FORWARDED("nnn", void, glColor3f, (GLfloat red, GLfloat green, GLfloat blue), (red, green, blue))
FORWARDED("nnnn", void, glColor4f, (GLfloat red, GLfloat green, GLfloat blue, GLfloat alpha),
          (red, green, blue, alpha))
FORWARDED("e", void, glEnable, (GLenum capability), (capability))
FORWARDED("e", void, glDisable, (GLenum capability), (capability))
FORWARDED("ee", void, glBlendFunc, (GLenum source, GLenum destination), (source, destination))
FORWARDED("ee", void, glPolygonMode, (GLenum face, GLenum mode), (face, mode))
FORWARDED("n", void, glLineWidth, (GLfloat width), (width))
FORWARDED("n", void, glPointSize, (GLfloat size), (size))
FORWARDED("e", void, glShadeModel, (GLenum mode), (mode))
FORWARDED("e", void, glDepthFunc, (GLenum function), (function))
FORWARDED("e", void, glMatrixMode, (GLenum mode), (mode))
FORWARDED("", void, glLoadIdentity, (), ())
FORWARDED("", void, glPushMatrix, (), ())
FORWARDED("", void, glPopMatrix, (), ())
FORWARDED("nnn", void, glTranslatef, (GLfloat x, GLfloat y, GLfloat z), (x, y, z))
FORWARDED("nnn", void, glScalef, (GLfloat x, GLfloat y, GLfloat z), (x, y, z))
FORWARDED("nnnn", void, glRotatef, (GLfloat angle, GLfloat x, GLfloat y, GLfloat z),
          (angle, x, y, z))
FORWARDED("m", void, glMultMatrixf, (const GLfloat* matrix), (matrix))
FORWARDED("m", void, glLoadMatrixf, (const GLfloat* matrix), (matrix))
FORWARDED("nnnnnn", void, glOrtho,
          (GLdouble left, GLdouble right, GLdouble bottom, GLdouble top, GLdouble nearPlane,
           GLdouble farPlane),
          (left, right, bottom, top, nearPlane, farPlane))
FORWARDED("b", void, glPushAttrib, (GLbitfield mask), (mask))
FORWARDED("", void, glPopAttrib, (), ())
FORWARDED("b", void, glClear, (GLbitfield mask), (mask))
FORWARDED("nnnn", void, glClearColor, (GLclampf red, GLclampf green, GLclampf blue, GLclampf alpha),
          (red, green, blue, alpha))
FORWARDED("nnnn", void, glViewport, (GLint x, GLint y, GLsizei width, GLsizei height),
          (x, y, width, height))
FORWARDED("en", void, glBindTexture, (GLenum target, GLuint texture), (target, texture))
FORWARDED("no", void, glGenTextures, (GLsizei count, GLuint* names), (count, names))
FORWARDED("n", GLboolean, glIsTexture, (GLuint texture), (texture))
FORWARDED("eee", void, glTexParameteri, (GLenum target, GLenum name, GLint value),
          (target, name, value))
FORWARDED("enennneei", void, glTexImage2D,
          (GLenum target, GLint level, GLint internalFormat, GLsizei width, GLsizei height,
           GLint border, GLenum format, GLenum type, const void* pixels),
          (target, level, internalFormat, width, height, border, format, type, pixels))
FORWARDED("n", GLuint, glGenLists, (GLsizei count), (count))
FORWARDED("ne", void, glNewList, (GLuint list, GLenum mode), (list, mode))
FORWARDED("", void, glEndList, (), ())
FORWARDED("n", void, glListBase, (GLuint base), (base))
FORWARDED("n", void, glCallList, (GLuint list), (list))
FORWARDED("net", void, glCallLists, (GLsizei count, GLenum type, const void* lists),
          (count, type, lists))
FORWARDED("eo", void, glGetFloatv, (GLenum name, GLfloat* values), (name, values))
FORWARDED("eo", void, glGetIntegerv, (GLenum name, GLint* values), (name, values))
FORWARDED("ee4", void, glLightfv, (GLenum light, GLenum name, const GLfloat* values),
          (light, name, values))
FORWARDED("een", void, glLightf, (GLenum light, GLenum name, GLfloat value), (light, name, value))
FORWARDED("ee4", void, glMaterialfv, (GLenum face, GLenum name, const GLfloat* values),
          (face, name, values))
FORWARDED("een", void, glMaterialf, (GLenum face, GLenum name, GLfloat value), (face, name, value))
FORWARDED("e", void, glEnableClientState, (GLenum array), (array))
FORWARDED("e", void, glDisableClientState, (GLenum array), (array))
FORWARDED("nenv", void, glVertexPointer,
          (GLint size, GLenum type, GLsizei stride, const void* pointer),
          (size, type, stride, pointer))
FORWARDED("env", void, glNormalPointer, (GLenum type, GLsizei stride, const void* pointer),
          (type, stride, pointer))
FORWARDED("nenv", void, glColorPointer,
          (GLint size, GLenum type, GLsizei stride, const void* pointer),
          (size, type, stride, pointer))
FORWARDED("nenv", void, glTexCoordPointer,
          (GLint size, GLenum type, GLsizei stride, const void* pointer),
          (size, type, stride, pointer))
FORWARDED("pnn", void, glDrawArrays, (GLenum mode, GLint first, GLsizei count),
          (mode, first, count))
FORWARDED("nnnn", void, gluPerspective,
          (GLdouble fieldOfView, GLdouble aspect, GLdouble nearPlane, GLdouble farPlane),
          (fieldOfView, aspect, nearPlane, farPlane))
FORWARDED("eenneei", GLint, gluBuild2DMipmaps,
          (GLenum target, GLint internalFormat, GLsizei width, GLsizei height, GLenum format,
           GLenum type, const void* pixels),
          (target, internalFormat, width, height, format, type, pixels))
FORWARDED("", void, SDL_GL_SwapBuffers, (), ())
FORWARDED("nn", void, SDL_WarpMouse, (Uint16 x, Uint16 y), (x, y))
FORWARDED("n", int, SDL_ShowCursor, (int toggle), (toggle))

// --- What GLEW finds ----------------------------------------------------------------------------

// EXTENSIONS(X): as FORWARDED. GLEW's headers make these names macros for its pointers, which a
// recorder replaces for as long as it lives.
#define EXTENSIONS(X)                                                                              \
    X("no", void, GenBuffers, (GLsizei count, GLuint * names), (count, names))                     \
    X("en", void, BindBuffer, (GLenum target, GLuint buffer), (target, buffer))                    \
    X("nv", void, DeleteBuffers, (GLsizei count, const GLuint* names), (count, names))             \
    X("enve", void, BufferData, (GLenum target, GLsizeiptr size, const void* data, GLenum usage),  \
      (target, size, data, usage))                                                                 \
    X("ennv", void, BufferSubData,                                                                 \
      (GLenum target, GLintptr offset, GLsizeiptr size, const void* data),                         \
      (target, offset, size, data))                                                                \
    X("e", GLuint, CreateShader, (GLenum type), (type))                                            \
    X("nnvv", void, ShaderSource,                                                                  \
      (GLuint shader, GLsizei count, const GLchar* const* strings, const GLint* lengths),          \
      (shader, count, strings, lengths))                                                           \
    X("n", void, CompileShader, (GLuint shader), (shader))                                         \
    X("neo", void, GetShaderiv, (GLuint shader, GLenum name, GLint * value),                       \
      (shader, name, value))                                                                       \
    X("neo", void, GetProgramiv, (GLuint program, GLenum name, GLint * value),                     \
      (program, name, value))                                                                      \
    X("", GLuint, CreateProgram, (), ())                                                           \
    X("nn", void, AttachShader, (GLuint program, GLuint shader), (program, shader))                \
    X("nn", void, DetachShader, (GLuint program, GLuint shader), (program, shader))                \
    X("n", void, LinkProgram, (GLuint program), (program))                                         \
    X("n", void, UseProgram, (GLuint program), (program))                                          \
    X("n", void, DeleteShader, (GLuint shader), (shader))                                          \
    X("n", void, DeleteProgram, (GLuint program), (program))                                       \
    X("nv", GLint, GetUniformLocation, (GLuint program, const GLchar* name), (program, name))      \
    X("nn", void, Uniform1f, (GLint location, GLfloat x), (location, x))                           \
    X("nnn", void, Uniform2f, (GLint location, GLfloat x, GLfloat y), (location, x, y))            \
    X("nnnn", void, Uniform3f, (GLint location, GLfloat x, GLfloat y, GLfloat z),                  \
      (location, x, y, z))                                                                         \
    X("nnnnn", void, Uniform4f, (GLint location, GLfloat x, GLfloat y, GLfloat z, GLfloat w),      \
      (location, x, y, z, w))                                                                      \
    X("nn", void, Uniform1i, (GLint location, GLint x), (location, x))

#define REAL_EXTENSION(format, result, name, parameters, arguments)                                \
    namespace                                                                                      \
    {                                                                                              \
    result(*real_gl##name) parameters = nullptr;                                                   \
    }
EXTENSIONS(REAL_EXTENSION)

#define HOOK(format, result, name, parameters, arguments)                                          \
    real_gl##name = __glew##name;                                                                  \
    __glew##name = tamor::test::Forward<"gl" #name, format, result parameters, &real_gl##name>::run;

#define UNHOOK(format, result, name, parameters, arguments) __glew##name = real_gl##name;

namespace tamor::test
{
GLRecorder::GLRecorder()
{
    activeRecorder = this;
    EXTENSIONS(HOOK)
}

GLRecorder::~GLRecorder()
{
    EXTENSIONS(UNHOOK)
    activeRecorder = nullptr;
}

std::vector<std::string> GLRecorder::calls() const
{
    std::vector<std::string> texts;
    for (const RecordedCall& call : recorded)
        texts.push_back(call.describe(call));
    return texts;
}

std::vector<std::string> GLRecorder::calls(const std::vector<std::string>& names) const
{
    std::vector<std::string> texts;
    for (const std::string& text : calls()) {
        const std::string name = text.substr(0, text.find('('));
        if (std::find(names.begin(), names.end(), name) != names.end())
            texts.push_back(text);
    }
    return texts;
}

void replay(const std::vector<RecordedCall>& calls)
{
    for (const RecordedCall& call : calls)
        call.play(call);
}
} // namespace tamor::test
