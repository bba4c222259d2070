/// \file
/// The machine of an interpreter: its cells, its programs, and what runs them. Not for hosts.
///
/// When a program is valid, and what is done to keep it so:
///
/// While instructions run, nothing but instructions changes anything. The host's code, which may
/// change everything (token lists, bodies, tables, functions), runs at three kinds of moments only:
/// before a run, in a built-in, and where a message is written, as the stream may be the host's.
/// After each of them `hostActed` forgets every place in the table of variables and starts a new
/// epoch. So
/// - a variable is looked up once an epoch, and its cell refuses the fast instructions until then;
/// - a call looks its name up once an epoch, and the function's program is used again only if the
///   body and the parameters are, token for token, those that it was lowered from, of which it has
///   a copy. Nothing less would do: the tokens are plain records in plain vectors, and whoever
///   holds a reference may write to one. What is running goes on with its own program meanwhile.
/// - a list that a host has handed over is lowered statement by statement when each is reached, and
///   not kept; a loop takes its body with it as it begins, and looks at a `while`'s condition again
///   when the host's code has run. That is what the language says of lists that change.
#pragma once

#include "script/ScriptInterpreter.h"
#include "script/internal/Lowering.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tamor::script
{
/// A function's program, and the tokens that it was lowered from.
struct FunctionCode
{
    struct Parameter
    {
        Variable* variable;
        Variable* shadow;
    };

    Program program;
    /// The parameters up to one that is no name.
    std::vector<Parameter> parameters;
    bool hasBadParameter = false;
    ScriptFunction tokens;
    /// The calls that run it now.
    std::uint32_t users = 0;
};

/// A name that is called, and what it was found to be in an epoch.
struct Callee
{
    std::string name;
    std::uint64_t epoch = 0;
    ScriptBuiltin builtin = nullptr;
    /// Null for a function without a body.
    FunctionCode* code = nullptr;
    /// The last program, which may be out of date.
    std::unique_ptr<FunctionCode> lowered;
};

/// Room for a statement of a host's list, which a run uses again and again.
struct Scratch
{
    explicit Scratch(Machine& machine) : lowering(machine, program) {}

    /// Empties the program for the next statement.
    void start()
    {
        program.clear();
        lowering.start();
    }

    Program program;
    Lowering lowering;
};

class Machine
{
public:
    explicit Machine(ScriptInterpreter& owner);

    /// As `evaluateTokens` and `runTokens`, for the host.
    ScriptValue evaluate(Tokens list);
    ScriptValue run(const std::vector<ScriptToken>& list);

    // What instructions work on, for the lowering.
    Variable& variable(std::string_view name);
    Callee& callee(std::string_view name);
    Cell& registerAt(std::uint32_t number);

    // Limits.cpp
    bool isRunning() const { return runDepth > 0; }
    bool mayGrow(const ScriptValue& array, unsigned index);

    /// What a missing operand, and an expression without a value, refers to. Nothing writes to it.
    ValueCell nothing;

private:
    class HostCall;
    class ActiveCall;

    // Running.cpp
    bool execute(const Program& program, ScriptValue* lists, std::size_t at = 0);
    template <typename Operation>
    void apply(const Instruction& instruction, ScriptValue* lists);
    template <typename Test>
    bool compare(const Instruction& instruction, bool (*general)(const ScriptValue&));
    template <bool (*numberHolds)(const ScriptValue&)>
    bool isHeld(const Instruction& instruction, bool (*general)(const ScriptValue&));
    bool holds(const Instruction& instruction, bool (*test)(const ScriptValue&));
    const Instruction* next(const Instruction* code, const Instruction* loop, bool goesOn);

    // Machine.cpp: the general routines.
    void hostActed();
    ScriptValue* find(Cell& cell);
    ScriptValue* lookUp(Variable& variable);
    ScriptValue* walk(Path& path);
    ScriptValue& read(Cell& cell);
    std::pair<ScriptValue*, ScriptValue*> places(Cell& left, Cell& right);
    void compute(const Instruction& instruction, ScriptValue* lists);
    void copy(const Instruction& instruction, ScriptValue* lists);
    void step(const Instruction& instruction, ScriptValue* lists);
    void deliver(const Instruction& instruction, ScriptValue&& result, ScriptValue* lists);
    void keep(const Instruction& instruction, ScriptValue* lists);
    void endPass(const Instruction& instruction, ScriptValue* lists);
    void giveValue(const Instruction& instruction, ScriptValue* lists);
    void release(Cell& cell);

    // Calls.cpp
    template <bool isWithLimits>
    void call(const Instruction& instruction, ScriptValue* lists);
    void callBuiltin(const Instruction& instruction, const Callee& callee, ScriptValue* lists);
    template <bool isWithLimits>
    void callFunction(const Instruction& instruction, Callee& callee, ScriptValue* lists);
    void renew(Callee& callee);
    std::unique_ptr<FunctionCode> lower(const ScriptFunction& function);
    std::size_t bind(const FunctionCode& code, const CallSite& site);
    std::size_t bindAny(const FunctionCode& code, const CallSite& site);
    void unbind(const FunctionCode& code, const Callee& callee, std::size_t count);
    void assignVariable(Variable& to, Cell& from);
    void assignAny(Variable& to, Cell& from);
    void sayBadParameter(std::size_t argument);
    ScriptValue* saveRegisters(std::uint32_t count);
    void restoreRegisters(ScriptValue* saved, std::uint32_t count);

    // Walk.cpp
    std::size_t runControl(const std::vector<ScriptToken>& list, std::size_t header,
                           Scratch& scratch, ScriptValue* lists);
    void runLoop(const std::vector<ScriptToken>& list, std::size_t header, std::size_t end,
                 Scratch& scratch, ScriptValue* lists);

    // Limits.cpp
    void startLimits();
    bool executeWithLimits(const Program& program, ScriptValue* lists, std::size_t at = 0);
    /// By the loop that the run is for: the one without limits knows nothing of them.
    bool executeAny(const Program& program, ScriptValue* lists, std::size_t at = 0)
    {
        return isLimited ? executeWithLimits(program, lists, at) : execute(program, lists, at);
    }
    bool endAt(ScriptLimit limit, std::uint64_t number);
    bool mayRun(const Instruction& instruction);
    void countBytes(const Instruction& instruction);

    ScriptInterpreter& interpreter;
    /// Counts the times that the host's code has run.
    std::uint64_t epoch = 0;
    std::unordered_map<std::string_view, std::unique_ptr<Variable>> variables;
    std::unordered_map<std::string_view, std::unique_ptr<Callee>> callees;
    /// The variables that have been looked up since the host's code has run.
    std::vector<Variable*> known;
    std::deque<ValueCell> registers;
    /// List values, arguments, and registers that a call leaves behind.
    BumpStack<ScriptValue> values;
    /// Programs that are out of date and still running.
    std::vector<std::unique_ptr<FunctionCode>> retired;
    /// For the lists of hosts: one for each run within a run.
    std::vector<std::unique_ptr<Scratch>> scratches;
    std::size_t runDepth = 0;
    /// Those of the run, and what it has used of them. The depth is that of executions: the list of
    /// the run itself is one.
    ScriptLimits limits;
    bool isLimited = false;
    std::uint64_t usedSteps = 0;
    std::uint64_t usedBytes = 0;
    std::uint64_t callDepth = 0;
};

/// Counts braces that are passed.
inline void addBraces(ScriptInterpreter& interpreter, std::int32_t count)
{
    interpreter.blockDepth = static_cast<std::int32_t>(
        static_cast<std::uint32_t>(interpreter.blockDepth) + static_cast<std::uint32_t>(count));
}

/// Whether a value lets a loop go on.
inline bool isOne(const ScriptValue& value)
{
    return value.type == TYPE_INT && value.number == 1;
}

/// Makes `to` a copy of `from`, of which one has elements; either may be an element of the other.
void assignElements(ScriptValue& to, const ScriptValue& from);

/// Makes `to` a copy of `from`; either may be an element of the other.
inline void assign(ScriptValue& to, const ScriptValue& from)
{
    if (!to.items.empty() || !from.items.empty())
        return assignElements(to, from);
    to.type = from.type;
    to.number = from.number;
    to.reserved = from.reserved;
    to.text = from.text;
}

/// Makes a variable a copy of a cell's value, which is no path.
inline void Machine::assignVariable(Variable& to, Cell& from)
{
    const std::int32_t types = to.place->type | from.place->type;
    if (areNumbers(types) || (isSimple(to.place->type) && isSimple(from.place->type)))
        copyPlain(*to.place, *from.place);
    else
        assignAny(to, from);
}

/// The value of a list, of which only the member that the tag selects means anything.
ScriptValue takeListValue(ScriptValue& list);

/// The meaning of "++" and "--" on two places, of which one may be an element of the other.
ScriptValue applyStep(ScriptValue& left, std::int32_t kind, ScriptValue& right);
} // namespace tamor::script
