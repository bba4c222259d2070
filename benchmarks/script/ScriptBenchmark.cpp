// The script language beside Lua 5.4 and CPython 3.
//
// Four programs are run by all three: a loop that counts to 1,000,000, two nested loops with float
// arithmetic, 200,000 function calls, and a string that grows to 20,000 characters one by one. Each
// is parsed or compiled once, and its result checked, before the clock starts; CPython and Lua have
// their variables as locals of a function, which is their fast case. `BM_parse_...` parses a text
// of the size given, in bytes; Lua compiles a text of like statements.
//
// Run: tamor-script-benchmarks --benchmark_repetitions=9 --benchmark_report_aggregates_only=true
// Read the medians of one run as ratios: BM_run_tamor over BM_run_python, program by program.
#ifdef TAMOR_HAS_PYTHON
#include <Python.h>
#endif
#ifdef TAMOR_HAS_LUA
#include <lua.hpp>
#endif

#include "script/ScriptInterpreter.h"

#include <benchmark/benchmark.h>

#include <malloc.h>

#include <string>
#include <vector>

namespace tamor
{
namespace
{
/// One program in three languages; each leaves a number in `result` or returns it.
struct Program
{
    const char* name;
    double result;
    const char* tamor;
    const char* python;
    const char* lua;
};

constexpr Program programs[] = {
    {"count", 1000000,
     "i = 0;"
     "while (i < 1000000) { i = i + 1; }"
     "result = i;",
     "def program():\n"
     "    i = 0\n"
     "    while i < 1000000:\n"
     "        i = i + 1\n"
     "    return i\n",
     "local i = 0\n"
     "while i < 1000000 do i = i + 1 end\n"
     "return i\n"},
    {"nested_floats", 199.5,
     "for (i = 0; i < 400; i = i + 1) {"
     "    x = .5;"
     "    for (k = 0; k < 400; k = k + 1) { x = x * .5 + k * .25; }"
     "}"
     "result = x + .5;",
     "def program():\n"
     "    i = 0\n"
     "    while i < 400:\n"
     "        x = 0.5\n"
     "        k = 0\n"
     "        while k < 400:\n"
     "            x = x * .5 + k * .25\n"
     "            k = k + 1\n"
     "        i = i + 1\n"
     "    return x + 0.5\n",
     "local x\n"
     "local i = 0\n"
     "while i < 400 do\n"
     "    x = 0.5\n"
     "    local k = 0\n"
     "    while k < 400 do\n"
     "        x = x * .5 + k * .25\n"
     "        k = k + 1\n"
     "    end\n"
     "    i = i + 1\n"
     "end\n"
     "return x + 0.5\n"},
    {"calls", 200000,
     "func next(a) { a + 1; }"
     "i = 0;"
     "while (i < 200000) { i = next(i); }"
     "result = i;",
     "def next(a):\n"
     "    return a + 1\n"
     "def program():\n"
     "    i = 0\n"
     "    while i < 200000:\n"
     "        i = next(i)\n"
     "    return i\n",
     "local function next(a) return a + 1 end\n"
     "local i = 0\n"
     "while i < 200000 do i = next(i) end\n"
     "return i\n"},
    {"string", 20000,
     "s = \"\";"
     "for (i = 0; i < 20000; i = i + 1) { s = s + \"x\"; }"
     "result = i;",
     "def program():\n"
     "    s = ''\n"
     "    i = 0\n"
     "    while i < 20000:\n"
     "        s = s + 'x'\n"
     "        i = i + 1\n"
     "    return len(s)\n",
     "local s = ''\n"
     "local i = 0\n"
     "while i < 20000 do\n"
     "    s = s .. 'x'\n"
     "    i = i + 1\n"
     "end\n"
     "return #s\n"},
};

double numberOf(const ScriptValue& value)
{
    return value.type == TYPE_FLOAT ? static_cast<double>(value.asFloat()) : value.number;
}

void BM_run_tamor(benchmark::State& state, const Program& program)
{
    ScriptInterpreter interpreter;
    std::vector<ScriptToken> list;
    parseText(interpreter, list, program.tamor);
    runTokens(interpreter, list);
    if (numberOf(interpreter.variables["result"]) != program.result)
        return state.SkipWithError("a wrong result");
    for (auto step : state)
        runTokens(interpreter, list);
}

#ifdef TAMOR_HAS_PYTHON
void BM_run_python(benchmark::State& state, const Program& program)
{
    Py_Initialize();
    PyObject* const names = PyDict_New();
    PyDict_SetItemString(names, "__builtins__", PyEval_GetBuiltins());
    PyRun_String(program.python, Py_file_input, names, names);
    PyObject* const function = PyDict_GetItemString(names, "program");
    PyObject* const result = PyObject_CallNoArgs(function);
    if (result == nullptr || PyFloat_AsDouble(result) != program.result)
        return state.SkipWithError("a wrong result");
    Py_DECREF(result);
    for (auto step : state)
        Py_DECREF(PyObject_CallNoArgs(function));
    Py_DECREF(names);
}
#endif

#ifdef TAMOR_HAS_LUA
void BM_run_lua(benchmark::State& state, const Program& program)
{
    lua_State* const lua = luaL_newstate();
    luaL_openlibs(lua);
    luaL_loadstring(lua, program.lua);
    const auto run = [&] {
        lua_pushvalue(lua, -1);
        lua_call(lua, 0, 1);
        const double result = lua_tonumber(lua, -1);
        lua_pop(lua, 1);
        return result;
    };
    if (run() != program.result)
        state.SkipWithError("a wrong result");
    else
        for (auto step : state)
            run();
    lua_close(lua);
}
#endif

/// Statements of several kinds, as a script of some length has them, of about `size` bytes.
std::string tamorText(std::size_t size)
{
    std::string text;
    for (int i = 0; text.size() < size; ++i) {
        const std::string number = std::to_string(i % 1000);
        text += "speed = base + " + number +
                " * (factor + 2.5);\n"
                "if (speed > limit) {\n"
                "    message = \"too fast: \" + speed;\n"
                "    print(message, " +
                number +
                ");\n"
                "}\n"
                "while (count < " +
                number + ") { count = count + 1; }\n";
    }
    return text;
}

void BM_parse_tamor(benchmark::State& state)
{
    const std::string text = tamorText(static_cast<std::size_t>(state.range(0)));
    ScriptInterpreter interpreter;
    std::vector<ScriptToken> check;
    parseText(interpreter, check, tamorText(1));
    if (check.size() != 38)
        return state.SkipWithError("a wrong number of tokens");
    for (auto step : state) {
        std::vector<ScriptToken> list;
        parseText(interpreter, list, text);
        benchmark::DoNotOptimize(list.data());
        // Each long text begins with the memory of a new process, and giving it back is left out:
        // the C library keeps the pages of the shorter ones and returns those of the longest.
        if (text.size() >= 800000) {
            state.PauseTiming();
            list = {};
            malloc_trim(0);
            state.ResumeTiming();
        }
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(BM_parse_tamor)->Arg(150000)->Arg(800000)->Arg(8000000)->Unit(benchmark::kMillisecond);

#ifdef TAMOR_HAS_LUA
/// The same statements as Lua writes them.
std::string luaText(std::size_t size)
{
    std::string text;
    for (int i = 0; text.size() < size; ++i) {
        const std::string number = std::to_string(i % 1000);
        text += "speed = base + " + number +
                " * (factor + 2.5);\n"
                "if (speed > limit) then\n"
                "    message = \"too fast: \" .. speed;\n"
                "    print(message, " +
                number +
                ");\n"
                "end\n"
                "while (count < " +
                number + ") do count = count + 1; end\n";
    }
    return text;
}

void BM_parse_lua(benchmark::State& state)
{
    const std::string text = luaText(static_cast<std::size_t>(state.range(0)));
    lua_State* const lua = luaL_newstate();
    for (auto step : state) {
        if (luaL_loadbuffer(lua, text.data(), text.size(), "text") != LUA_OK)
            state.SkipWithError("a wrong text");
        lua_pop(lua, 1);
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
    lua_close(lua);
}
BENCHMARK(BM_parse_lua)->Arg(150000)->Unit(benchmark::kMillisecond);
#endif

/// Each program beside its peers, so that their medians come from the same minute.
[[maybe_unused]] const bool areRegistered = [] {
    for (const Program& program : programs) {
        const auto name = [&](const char* language) {
            return std::string("BM_run_") + language + "/" + program.name;
        };
        const auto add = [&](const char* language, auto function) {
            benchmark::RegisterBenchmark(name(language).c_str(), function, program)
                ->Unit(benchmark::kMillisecond);
        };
        add("tamor", BM_run_tamor);
#ifdef TAMOR_HAS_PYTHON
        add("python", BM_run_python);
#endif
#ifdef TAMOR_HAS_LUA
        add("lua", BM_run_lua);
#endif
    }
    return true;
}();
} // namespace
} // namespace tamor
