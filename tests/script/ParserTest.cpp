#include "script/Parser.h"

#include "tests/script/ScriptTesting.h"

#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace tamor::test
{
namespace
{
std::string bodyOf(ScriptInterpreter& interpreter, const std::string& name)
{
    return described(interpreter.functions[name].body);
}

std::string parametersOf(ScriptInterpreter& interpreter, const std::string& name)
{
    return described(interpreter.functions[name].parameters);
}

/// Parses into a list of its own and gives its description.
std::string parsedBy(ScriptInterpreter& interpreter, const std::string& text)
{
    std::vector<ScriptToken> list;
    parseText(interpreter, list, text);
    return described(list);
}

std::string printedTokens(const std::vector<ScriptToken>& list)
{
    std::ostringstream stream;
    printTokens(stream, list);
    return stream.str();
}

std::string printedTokens(const std::string& text)
{
    ScriptInterpreter interpreter;
    std::vector<ScriptToken> list;
    parseText(interpreter, list, text);
    return printedTokens(list);
}
} // namespace

TEST(ScriptToken, IsAnArgumentEndByDefault)
{
    const ScriptToken token{};

    EXPECT_EQ(token.kind, -1);
    EXPECT_EQ(token.kind, TOK_ARGEND);
    EXPECT_EQ(token.value.type, TYPE_NULL);
    EXPECT_EQ(token.name, "");
    EXPECT_TRUE(token.args.empty());
}

TEST(ScriptToken, TakesKindValueAndName)
{
    const ScriptToken token(TOK_VARIABLE, ScriptValue(3), "x");

    EXPECT_EQ(token.kind, TOK_VARIABLE);
    EXPECT_EQ(described(token.value), "int 3");
    EXPECT_EQ(token.name, "x");
    EXPECT_TRUE(token.args.empty());
}

TEST(ScriptToken, HasTheNumbersOfItsKinds)
{
    EXPECT_EQ(TOK_SEMICOLON, -2);
    EXPECT_EQ(TOK_OPEN_BRACE, 21);
    EXPECT_EQ(TOK_CLOSE_BRACE, 22);
    EXPECT_EQ(TOK_CALL, 23);
    EXPECT_EQ(TOK_VARIABLE, 24);
    EXPECT_EQ(TOK_STRING, 25);
    EXPECT_EQ(TOK_NUMBER, 26);
    EXPECT_EQ(TOK_FUNC, 27);
    EXPECT_EQ(TOK_IF, 28);
    EXPECT_EQ(TOK_FOR, 29);
    EXPECT_EQ(TOK_WHILE, 30);
    EXPECT_EQ(TOK_RETURN, 31);
}

TEST(ScriptOperators, StandInTheOrderOfTheirKinds)
{
    std::string rows;
    for (const auto& row : scriptOperators)
        rows += std::string(row) + " ";

    EXPECT_EQ(rows, "( ) ++ -- ^ * / % + - ! && || <= < >= > == != = ");
    EXPECT_EQ(sizeof scriptOperators, 60U);
}

TEST(ParseText, GivesNoTokensForAnEmptyTextOrSpace)
{
    ScriptInterpreter interpreter;
    std::vector<ScriptToken> list;

    EXPECT_TRUE(parseText(interpreter, list, ""));
    EXPECT_TRUE(parseText(interpreter, list, " \t\n"));

    EXPECT_TRUE(list.empty());
}

TEST(ParseText, AppendsToTheList)
{
    ScriptInterpreter interpreter;
    std::vector<ScriptToken> list;

    EXPECT_TRUE(parseText(interpreter, list, "x=1;"));
    EXPECT_TRUE(parseText(interpreter, list, "y"));

    EXPECT_EQ(described(list), "x = <int 1> ; y");
    EXPECT_EQ(list[2].name, "");
    EXPECT_EQ(list[0].value.type, TYPE_NULL);
}

TEST(ParseText, GivesTheseListsForTheseTexts)
{
    struct Row
    {
        const char* text;
        const char* expected;
    };
    const Row rows[] = {
        {"x = 1;", "x = <int 1> ;"},
        {"print(\"a\", x);", "print( \"a\" # x # ) ;"},
        {"if (a < 1) { b = 2; }", "if( a < <int 1> # ) ; { ; b = <int 2> ; } ;"},
        {"for (i = 0; i < 3; i = i + 1)", "for( i = <int 0> ; i < <int 3> ; i = i + <int 1> # ) ;"},
        {"func f(a, b)", ""},
        {"while (a)b;", "while( a # ) ; b ;"},
        // Numbers.
        {".5", "<float 0.5>"},
        {"5.", "<int 5>"},
        {"-7", "<int -7>"},
        {"3.0", "<int 3>"},
        {"3.5", "<float 3.5>"},
        {"1.2.3", "<float 1.20000005>"},
        {"3-1", "<int 3>"},
        {"1e5", "<int 1> e <int 5>"},
        {"-.25", "<float -0.25>"},
        {"-0", "<int 0>"},
        {"16777217", "<int 16777216>"},
        {"2147483647", "<float 2.14748365e+09>"},
        {"-2147483648", "<int -2147483648>"},
        {"3000000000", "<float 3e+09>"},
        {"- . --5 -.-", "<int 0> <int 0> <int 0> <int 0>"},
        {"99999999999999999999999999999999999999999", "<float 3.40282347e+38>"},
        {"-99999999999999999999999999999999999999999", "<float -3.40282347e+38>"},
        {".00000000000000000000000000000000000000000000000000001", "<int 0>"},
        // Names.
        {"x1", "x <int 1>"},
        {"a-b", "a-b"},
        {"a -b", "a <int 0> b"},
        {"a-1", "a- <int 1>"},
        {"::x", "::x"},
        {"grid[3][4]=1", "grid[3][4] = <int 1>"},
        {"a[i]", "a[i"},
        {"a [1]", "a <int 1>"},
        // Operators.
        {"x != 1", "x ! = <int 1>"},
        {"x++ + y", "x ++ + y"},
        {"x+++y", "x ++ + y"},
        {"<= < >= > == = =<", "<= < >= > == = = <"},
        {"^*/%+!&&||", "^ * / % + ! && ||"},
        {"& |", ""},
        {"(1)", "( <int 1> )"},
        // Strings.
        {"\"it's\"", "\"its\""},
        {"\"a\"\"b\"", "\"a\" \"b\""},
        // The rest.
        {"return 5;", "return <int 5> ;"},
        {"return;", "return ;"},
        {"returns 5", "returns <int 5>"},
        {"a\r\nb", "a b"},
        {"# , ' ] @ ~ \\ $ ?", ""},
        {"a # b", "a b"},
        {"\xC3\xA4x", "x"},
        {"{}", "{ ; } ;"},
        {"else break continue", "else break continue"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(parsed(row.text), row.expected) << row.text;
}

TEST(ParseText, TellsTheNameReturnFromTheKeyword)
{
    ScriptInterpreter interpreter;
    std::vector<ScriptToken> list;

    parseText(interpreter, list, "return 5; return;");

    EXPECT_EQ(list[0].kind, TOK_RETURN);
    EXPECT_EQ(list[3].kind, TOK_VARIABLE);
    EXPECT_EQ(list[3].name, "return");
}

TEST(ParseText, TakesEveryMinusAtTheFrontForANumber)
{
    EXPECT_EQ(parsed("a - 1"), "a <int 0> <int 1>");
    EXPECT_EQ(parsed("a--"), "a--");
    EXPECT_EQ(parsed("1--2"), "<int 1>");
    EXPECT_EQ(parsed("(a)-1"), "( a ) <int -1>");
    EXPECT_EQ(parsed("--x"), "<int 0> x");
}

TEST(ParseText, ReadsNotEqualAsTwoOperators)
{
    EXPECT_EQ(parsed("a!=b"), "a ! = b");
    EXPECT_EQ(parsed("a!==b"), "a ! == b");
}

TEST(ParseText, FindsKeywordsByPrefixAlone)
{
    EXPECT_EQ(parsed("format"), "mat");
    EXPECT_EQ(parsed("iffy"), "fy");
    EXPECT_EQ(parsed("whiles"), "s");
    EXPECT_EQ(parsed("whiles(1)"), "s( <int 1> # )");
    EXPECT_EQ(parsed("for(a)"), "for( a # ) ;");
    EXPECT_EQ(parsed("ifa(b)"), "a( b # )");
    EXPECT_EQ(parsed("xif(b)"), "xif( b # )") << "inside a name there is no keyword";
    EXPECT_EQ(parsed("func(a)"), "func( a # )") << "the space belongs to the keyword";
    EXPECT_EQ(parsed("function"), "function");
}

TEST(ParseText, TestsKeywordsOneAfterTheOther)
{
    EXPECT_EQ(parsed("whileif(1)"), "if( <int 1> # ) ;");
    EXPECT_EQ(parsed("whilefor(1)"), "for( <int 1> # ) ;");
    EXPECT_EQ(parsed("forif(1)"), "if( <int 1> # ) ;");
    EXPECT_EQ(parsed("iffor(1)"), "for( <int 1> # ) ;") << "the \"if\" alone has left no trace";

    ScriptInterpreter interpreter;
    EXPECT_EQ(parsedBy(interpreter, "whilefunc f(a)"), "");
    EXPECT_EQ(parametersOf(interpreter, "f"), "a #");
    EXPECT_EQ(interpreter.currentFunction, &interpreter.functions["f"]);
}

TEST(ParseText, LeavesNoTraceOfAKeywordWithoutAParenthesis)
{
    EXPECT_EQ(parsed("while x"), "x");
    EXPECT_EQ(parsed("if"), "");
    EXPECT_EQ(parsed("for;"), ";");

    ScriptInterpreter interpreter;
    EXPECT_EQ(parsedBy(interpreter, "func f {a;}"), "{ ; a ; } ;") << "the name is consumed";
    EXPECT_TRUE(interpreter.functions.empty());
}

TEST(ParseText, GivesACallWithoutArgumentsOneArgumentEnd)
{
    EXPECT_EQ(parsed("f()"), "f( # )");
    EXPECT_EQ(parsed("f( )"), "f( # )");
    EXPECT_EQ(parsed("f ()"), "f( # )");
    EXPECT_EQ(parsed("f(,)"), "f( # # )");
    EXPECT_EQ(parsed("if()"), "if( ) ;");
    EXPECT_EQ(parsed("while( )"), "while( ) ;");
}

TEST(ParseText, NamesACallByItsWholePath)
{
    EXPECT_EQ(parsed("a[1](2)"), "a[1]( <int 2> # )");
}

TEST(ParseText, TakesTheTextOfAnUnclosedParenthesisButItsLastCharacter)
{
    EXPECT_EQ(parsed("f(12"), "f( <int 1> # )");
    EXPECT_EQ(parsed("f("), "f( # )");
    EXPECT_EQ(parsed("f(("), "f( # )");
    EXPECT_EQ(parsed("if("), "if( ) ;");
    EXPECT_EQ(parsed("f((1)"), "f( ( <int 1> # )");
}

TEST(ParseText, CutsArgumentsAtEveryComma)
{
    EXPECT_EQ(parsed("f(a, b)"), "f( a # b # )");
    EXPECT_EQ(parsed("f(g(1,2),3)"), "f( g( # ) # <int 2> ) # <int 3> # )");
    EXPECT_EQ(parsed("f((1,2))"), "f( ( <int 1> # <int 2> ) # )");
}

TEST(ParseText, ThrowsForACommaInsideAStringArgument)
{
    EXPECT_THROW(parsed("print(\"a,b\")"), std::out_of_range);
}

TEST(ParseText, CountsAParenthesisInsideAString)
{
    EXPECT_EQ(parsed("f(\"()\", 1) x"), "f( \"()\" # <int 1> # ) x");
    EXPECT_THROW(parsed("f(\")\") x"), std::out_of_range) << "the string is cut at its parenthesis";
}

TEST(ParseText, ThrowsWhereTheTextEndsTooEarly)
{
    for (const char* text : {"\"abc", "x = \"", "\"a'", "a[", "a[1", "f(\"a)"})
        EXPECT_THROW(parsed(text), std::out_of_range) << text;
}

TEST(ParseText, EndsTheProcessWhenNothingCatchesTheEndOfAString)
{
    EXPECT_TRUE(endsTheProcess([] { []() noexcept { parsed("x = \"abc"); }(); }));
}

TEST(ParseText, KeepsTheStatementsOfAFunctionApart)
{
    ScriptInterpreter interpreter;

    EXPECT_EQ(parsedBy(interpreter, "func f(a) { a; } b;"), "b ;");

    EXPECT_EQ(parametersOf(interpreter, "f"), "a #");
    EXPECT_EQ(bodyOf(interpreter, "f"), "{ ; a ; } ;");
    EXPECT_EQ(interpreter.currentFunction, nullptr);
    EXPECT_EQ(interpreter.blockDepth, 0);
}

TEST(ParseText, AcceptsSpacesInAFunctionsHeader)
{
    ScriptInterpreter interpreter;

    parsedBy(interpreter, "func  g  ( a ,  b ) { }");

    EXPECT_EQ(parametersOf(interpreter, "g"), "a # b #");
    EXPECT_EQ(bodyOf(interpreter, "g"), "{ ; } ;");
}

TEST(ParseText, GivesAFunctionWithoutParametersNoTokens)
{
    ScriptInterpreter interpreter;

    parsedBy(interpreter, "func f() {}");

    EXPECT_EQ(parametersOf(interpreter, "f"), "");
}

TEST(ParseText, KeepsNestedBlocksInTheBody)
{
    ScriptInterpreter interpreter;

    EXPECT_EQ(parsedBy(interpreter, "func f() { if (a) { b; } c; } d;"), "d ;");

    EXPECT_EQ(bodyOf(interpreter, "f"), "{ ; if( a # ) ; { ; b ; } ; c ; } ;");
}

TEST(ParseText, AddsASecondDefinitionBehindTheFirst)
{
    ScriptInterpreter interpreter;

    parsedBy(interpreter, "func f(a) { a; } func f(b, c) { b; }");

    EXPECT_EQ(interpreter.functions.size(), 1U);
    EXPECT_EQ(parametersOf(interpreter, "f"), "b # c #");
    EXPECT_EQ(bodyOf(interpreter, "f"), "{ ; a ; } ; { ; b ; } ;");
}

TEST(ParseText, LetsAFunctionWithoutBracesTakeInWhatFollows)
{
    ScriptInterpreter interpreter;

    EXPECT_EQ(parsedBy(interpreter, "func f(a) x = 1;"), "");
    EXPECT_EQ(parsedBy(interpreter, "y = 2; { z; } w;"), "w ;");

    EXPECT_EQ(bodyOf(interpreter, "f"), "x = <int 1> ; y = <int 2> ; { ; z ; } ;");
}

TEST(ParseText, BeginsTheNextFunctionWhereTheLastWasLeftOpen)
{
    ScriptInterpreter interpreter;

    parsedBy(interpreter, "func f() { a; func g() { b; } c; }");

    EXPECT_EQ(bodyOf(interpreter, "f"), "{ ; a ;");
    EXPECT_EQ(bodyOf(interpreter, "g"), "{ ; b ; } ;");
}

TEST(ParseText, CountsBracesAtTopLevelAndInsideParentheses)
{
    ScriptInterpreter interpreter;

    EXPECT_EQ(parsedBy(interpreter, "{{}"), "{ ; { ; } ;");
    EXPECT_EQ(interpreter.blockDepth, 1);
    EXPECT_EQ(parsedBy(interpreter, "f({)"), "f( { ; # )");
    EXPECT_EQ(interpreter.blockDepth, 2);
}

TEST(ParseText, PutsArgumentsIntoTheirCallInsideAFunctionToo)
{
    ScriptInterpreter interpreter;

    EXPECT_EQ(parsedBy(interpreter, "func f() { g(a; b, c); } d"), "d");

    EXPECT_EQ(bodyOf(interpreter, "f"), "{ ; g( a ; b # c # ) ; } ;");
}

TEST(ParseText, ComesBackToTheFunctionBehindABraceInParentheses)
{
    ScriptInterpreter interpreter;

    EXPECT_EQ(parsedBy(interpreter, "func f() { g(}) h; } d"), "");

    EXPECT_EQ(bodyOf(interpreter, "f"), "{ ; g( } ; # ) h ; } ; d")
        << "the depth has passed 0 while no function was set";
}

TEST(ParseText, LeavesOtherEntriesOfTheInterpreterAlone)
{
    Script script;

    parsedBy(script.interpreter, "x = 1; f(2);");

    EXPECT_EQ(script["x"], "none");
    EXPECT_TRUE(script.interpreter.functions.empty());
    EXPECT_EQ(script.interpreter.builtins.size(), 1U);
}

TEST(PrintTokens, HasOneFormPerKind)
{
    EXPECT_EQ(printedTokens("x = 1 + \"a b\";"), ">x< = 1 + a b ;\n");
    EXPECT_EQ(printedTokens("{ }"), "{;\n};\n");
    EXPECT_EQ(printedTokens("(2.5)"), "( 2.5 ) ");
    EXPECT_EQ(printedTokens("return 5;"), "5 ;\n") << "a return prints nothing";
    EXPECT_EQ(printedTokens(std::vector<ScriptToken>{ScriptToken()}), "#");
    EXPECT_EQ(printedTokens(std::vector<ScriptToken>{ScriptToken(20, {}, "x")}), "");
    EXPECT_EQ(printedTokens(std::vector<ScriptToken>{}), "");
}

TEST(PrintTokens, ReturnsTheStream)
{
    std::ostringstream stream;
    EXPECT_EQ(&printTokens(stream, {}), &stream);
}

TEST(PrintTokens, WritesTheArgumentsOncePerPlaceOfTheOuterListWithoutASeparator)
{
    // Two arguments are four tokens, and neither of the outer two is a separator: four times.
    EXPECT_EQ(printedTokens("f(1, 2);"), "f( 1 #2 #1 #2 #1 #2 #1 #2 #) ;\n");
    EXPECT_EQ(printedTokens("f()"), "f( #) ");
    EXPECT_EQ(printedTokens("if(a)"), "if( >a< #>a< #) ;\n");
    EXPECT_EQ(printedTokens("while(a)"), "while( >a< #>a< #) ;\n");
    EXPECT_EQ(printedTokens("for(a)"), "for( >a< #>a< #) ;\n");
    EXPECT_EQ(printedTokens("if()"), "if( ) ;\n");
}

TEST(PrintTokens, WritesSeparatorsWhereTheOuterListHasThem)
{
    ScriptToken call(TOK_CALL, {}, "f");
    call.args = {ScriptToken(TOK_NUMBER, 1, ""), {}, ScriptToken(TOK_NUMBER, 2, "")};
    ScriptToken header(TOK_FOR, {}, "");
    header.args = call.args;

    // Place 0 holds the call itself, place 1 and 2 a separator; behind the last none is written.
    EXPECT_EQ(printedTokens(std::vector<ScriptToken>{call, {}, {}}), "f( 1 #2  , ) ##");
    EXPECT_EQ(printedTokens(std::vector<ScriptToken>{header, {}, {}}), "for( 1 #2  ; ) ##");
}

TEST(PrintTokens, WritesAFunctionsListOncePerTokenOfIt)
{
    ScriptToken function(TOK_FUNC, {}, "f");
    function.args = {ScriptToken(TOK_VARIABLE, {}, "a"), {}};

    EXPECT_EQ(printedTokens(std::vector<ScriptToken>{function, {}}), "f( >a< #>a< #)#");
}
} // namespace tamor::test
