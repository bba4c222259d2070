// Where tokens stand in their text.
#include "script/ScriptInterpreter.h"
#include "script/ScriptPositions.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tamor::test
{
namespace
{
/// As `line:column`, with the positions of arguments in parentheses.
std::string described(const std::vector<ScriptPosition>& positions)
{
    std::string text;
    for (const ScriptPosition& position : positions) {
        text += (text.empty() ? "" : " ") + std::to_string(position.line) + ":" +
                std::to_string(position.column);
        if (!position.args.empty())
            text += "(" + described(position.args) + ")";
    }
    return text;
}
} // namespace

TEST(ScriptPositions, TellWhereEachTokenBegins)
{
    ScriptInterpreter interpreter;
    std::vector<ScriptToken> list;
    ScriptPositions positions;

    parseText(interpreter, list, "x = 1;\n if (x)\n{ f(x , 2); g(); }", positions);

    EXPECT_EQ(described(positions.list), "1:1 1:3 1:5 1:6 2:2(2:6 2:7) 2:2 3:1 3:1 "
                                         "3:3(3:5 3:7 3:9 3:10) 3:11 3:13(3:13) 3:16 3:18 3:18");
}

TEST(ScriptPositions, StandBesideTheTokensOfFunctions)
{
    ScriptInterpreter interpreter;
    std::vector<ScriptToken> list;
    parseText(interpreter, list, "a; func f() { b; }");
    ScriptPositions positions;

    parseText(interpreter, list, "\nfunc f(p) { c; } d;", positions);

    EXPECT_EQ(described(positions.list), "0:0 0:0 2:18 2:19");
    EXPECT_EQ(described(positions.bodies.at("f")),
              "0:0 0:0 0:0 0:0 0:0 0:0 2:11 2:11 2:13 2:14 2:16 2:16");
}

TEST(ScriptPositions, ChangeNothingInTheTokens)
{
    const std::string text = "func g(p, q) { p; } x = f(1, \"a\") + h(i(2)); for (;;) { }";
    ScriptInterpreter interpreter;
    std::vector<ScriptToken> plain;
    std::vector<ScriptToken> located;
    ScriptPositions positions;

    parseText(interpreter, plain, text);
    parseText(interpreter, located, text, positions);

    ASSERT_EQ(plain.size(), located.size());
    for (std::size_t i = 0; i < plain.size(); ++i)
        EXPECT_EQ(plain[i].kind, located[i].kind) << i;
    EXPECT_EQ(positions.list.size(), located.size());
}
} // namespace tamor::test
