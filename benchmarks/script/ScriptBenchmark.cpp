// The script language beside Lua 5.4 and CPython 3.
//
// Each program of Programs.h is run by all three: parsed or compiled once, and its result checked,
// before the clock starts; CPython and Lua have their variables as locals of a function, which is
// their fast case. The engine was tuned on the first ones, and not on those that are said to be
// untuned. `BM_parse_...` parses a text of the size given, in bytes; Lua compiles a text of like
// statements. `BM_once_...` parses or compiles a text of 10,000 different statements and runs it
// once.
//
// Run: tamor-script-benchmarks --benchmark_repetitions=9 --benchmark_report_aggregates_only=true
// Read the medians of CPU time of one run as ratios: BM_run_lua over BM_run_tamor, program by
// program. The growth from 800 kB to 8 MB is that of the medians of nine processes each, with
// --benchmark_filter=BM_parse_tamor/800000 and /8000000, as memory that a process has had before
// costs less. Instructions for each pass of a loop:
//     valgrind --tool=callgrind tamor-script-benchmarks --benchmark_filter=BM_run_tamor/count
//         --benchmark_min_time=0.001
#ifdef TAMOR_HAS_PYTHON
#include <Python.h>
#endif
#ifdef TAMOR_HAS_LUA
#include <lua.hpp>
#endif

#include "benchmarks/script/Programs.h"
#include "script/ScriptInterpreter.h"

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

namespace tamor
{
namespace
{
double numberOf(const ScriptValue& value)
{
    return value.type == TYPE_FLOAT ? static_cast<double>(value.asFloat()) : value.number;
}

void BM_run_tamor(benchmark::State& state, const ScriptProgram& program)
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
void BM_run_python(benchmark::State& state, const ScriptProgram& program)
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
void BM_run_lua(benchmark::State& state, const ScriptProgram& program)
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
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(BM_parse_tamor)->Arg(150000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_parse_tamor)->Arg(800000)->Arg(8000000)->Iterations(1)->Unit(benchmark::kMillisecond);

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

/// A text of 10,000 statements, no two of which are the same, over fifty variables.
std::string onceText(bool isLua)
{
    std::string text;
    const auto name = [](int number) {
        return std::string("v") + static_cast<char>('a' + number % 10) +
               static_cast<char>('a' + number / 10 % 5);
    };
    if (isLua) {
        for (int i = 0; i < 50; ++i)
            text += (i == 0 ? "local " : ", ") + name(i);
        text += "\n";
    }
    for (int i = 0; i < 50; ++i)
        text += name(i) + " = " + std::to_string(i) + ";\n";
    for (int i = 0; i < 9950; ++i) {
        const std::string number = std::to_string(i);
        const std::string target = name(i);
        switch (i % 5) {
        case 0:
            text += target + " = " + name(i + 9) + " + " + number + ";\n";
            break;
        case 1:
            text += target + " = (" + name(i + 3) + " + 1.5) * " + number + ";\n";
            break;
        case 2:
            text += target + (isLua ? " = \"text\" .. " : " = \"text\" + ") + number + ";\n";
            break;
        case 3:
            text += target + " = " + name(i + 21) + " == " + number + ";\n";
            break;
        default:
            text += target + " = " + number + ";\n";
        }
    }
    return text + (isLua ? "return " + name(9949) + "\n" : "result = " + name(9949) + ";\n");
}

constexpr double onceResult = 9949;

void BM_once_tamor(benchmark::State& state)
{
    const std::string text = onceText(false);
    for (auto step : state) {
        ScriptInterpreter interpreter;
        std::vector<ScriptToken> list;
        parseText(interpreter, list, text);
        runTokens(interpreter, list);
        if (numberOf(interpreter.variables["result"]) != onceResult)
            return state.SkipWithError("a wrong result");
    }
}
BENCHMARK(BM_once_tamor)->Unit(benchmark::kMillisecond);

#ifdef TAMOR_HAS_LUA
void BM_once_lua(benchmark::State& state)
{
    const std::string text = onceText(true);
    for (auto step : state) {
        lua_State* const lua = luaL_newstate();
        const bool isRun = luaL_loadbuffer(lua, text.data(), text.size(), "text") == LUA_OK &&
                           lua_pcall(lua, 0, 1, 0) == LUA_OK;
        const bool isRight = isRun && lua_tonumber(lua, -1) == onceResult;
        lua_close(lua);
        if (!isRight)
            return state.SkipWithError("a wrong result");
    }
}
BENCHMARK(BM_once_lua)->Unit(benchmark::kMillisecond);
#endif

/// Each program beside its peers, so that their medians come from the same minute.
[[maybe_unused]] const bool areRegistered = [] {
    for (const ScriptProgram& program : scriptPrograms) {
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
