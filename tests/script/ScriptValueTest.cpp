#include "script/ScriptValue.h"

#include "tests/script/ScriptTesting.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/CommaLocale.h"

#include <gtest/gtest.h>

#include <sys/resource.h>

#include <cmath>
#include <csignal>
#include <limits>
#include <sstream>
#include <string>

namespace tamor::test
{
namespace
{
constexpr int greatest = std::numeric_limits<int>::max();
constexpr int least = std::numeric_limits<int>::min();

std::string printed(const ScriptValue& value)
{
    std::ostringstream stream;
    printValue(stream, value);
    return stream.str();
}
} // namespace

TEST(ScriptValue, IsNoValueByDefault)
{
    const ScriptValue value;

    EXPECT_EQ(value.type, TYPE_NULL);
    EXPECT_EQ(value.type, -1);
    EXPECT_EQ(value.number, 0);
    EXPECT_EQ(value.text, "");
    EXPECT_TRUE(value.items.empty());
    EXPECT_EQ(value.reserved, 0U);
}

TEST(ScriptValue, TakesAnIntegerOrAString)
{
    const ScriptValue integer(-7);
    const ScriptValue text(std::string("seven"));

    EXPECT_EQ(described(integer), "int -7");
    EXPECT_EQ(integer.text, "");
    EXPECT_EQ(integer.reserved, 0U);
    EXPECT_EQ(described(text), "string seven");
    EXPECT_EQ(text.number, 0);
    EXPECT_EQ(text.reserved, 0U);
}

TEST(ScriptValue, HasTheTagsOfItsTypes)
{
    EXPECT_EQ(TYPE_INT, 0);
    EXPECT_EQ(TYPE_STRING, 1);
    EXPECT_EQ(TYPE_FLOAT, 2);
    EXPECT_EQ(TYPE_ARRAY, 3);
}

TEST(ScriptValue, KeepsOtherPayloadsWhenOneIsSet)
{
    ScriptValue value(std::string("old"));

    value.setInt(5);
    EXPECT_EQ(described(value), "int 5");
    EXPECT_EQ(value.text, "old");

    value.setString("new");
    EXPECT_EQ(described(value), "string new");
    EXPECT_EQ(value.number, 5);

    value.setFloat(0.5F);
    EXPECT_EQ(described(value), "float 0.5");
    EXPECT_EQ(value.text, "new");
}

TEST(ScriptValue, CopiesAllFiveMembersDeeply)
{
    ScriptValue original = array({ScriptValue(1), array({ScriptValue(2)})});
    original.text = "stale";
    original.number = 9;
    original.reserved = 3;

    const ScriptValue copy = original;
    original.arrayElement(1).arrayElement(0).setInt(99);

    EXPECT_EQ(described(copy), "[int 1, [int 2]]");
    EXPECT_EQ(copy.text, "stale");
    EXPECT_EQ(copy.number, 9);
    EXPECT_EQ(copy.reserved, 3U);
}

TEST(ScriptValueArrayElement, MakesAnyValueAnArray)
{
    ScriptValue value(42);

    value.arrayElement(1);

    EXPECT_EQ(described(value), "[null, null]");
    EXPECT_EQ(value.number, 42);
}

TEST(ScriptValueArrayElement, GrowsAnEmptyArrayToHoldTheIndexThatIsRead)
{
    ScriptValue value;

    const ScriptValue& element = value.arrayElement(5);

    EXPECT_EQ(element.type, TYPE_NULL);
    EXPECT_EQ(value.items.size(), 6U);
}

TEST(ScriptValueArrayElement, GivesThePlaceOfTheElement)
{
    ScriptValue value;

    value.arrayElement(2).setInt(7);
    value.arrayElement(0).setString("a");

    EXPECT_EQ(described(value), "[string a, null, int 7]");
}

#if !defined(__SANITIZE_ADDRESS__)
TEST(ScriptValueArrayElement, ANegativeIndexRunsOutOfMemory)
{
    // The limit spares the machine: 4,294,967,296 elements are some 300 GB.
    const auto body = [] {
        const rlimit limit{1UL << 30, 1UL << 30};
        setrlimit(RLIMIT_AS, &limit);
        ScriptValue value;
        value.arrayElement(static_cast<unsigned>(-1));
    };

    EXPECT_TRUE(endsTheProcess(body));
}
#endif

TEST(ScriptValueTruth, HasOneRowPerType)
{
    struct Row
    {
        const char* name;
        ScriptValue value;
        bool expected;
    };
    const Row rows[] = {
        {"int 0", 0, false},
        {"int 1", 1, true},
        {"int -1", -1, true},
        {"float 0", real(0.0F), false},
        {"float -0", real(-0.0F), false},
        {"float 0.25", real(0.25F), true},
        {"NaN", real(std::nanf("")), true},
        {"string true", std::string("true"), true},
        {"string True", std::string("True"), false},
        {"string false", std::string("false"), false},
        {"string yes", std::string("yes"), false},
        {"string 1", std::string("1"), false},
        {"string true with a space", std::string("true "), false},
        {"empty string", std::string(), false},
        {"empty array", array({}), false},
        {"array of a true value", array({1}), false},
        {"null", {}, false},
    };
    for (const Row& row : rows)
        EXPECT_EQ(isTrue(row.value), row.expected) << row.name;
}

TEST(ScriptValueEquals, ComparesTagsFirst)
{
    EXPECT_FALSE(equals(1, real(1.0F)));
    EXPECT_FALSE(equals(2, real(2.0F)));
    EXPECT_FALSE(equals(0, ScriptValue()));
    EXPECT_FALSE(equals(std::string("1"), 1));
    EXPECT_FALSE(equals(array({}), ScriptValue()));
    EXPECT_TRUE(equals(ScriptValue(), ScriptValue()));
}

TEST(ScriptValueEquals, ComparesContentOfOneTag)
{
    EXPECT_TRUE(equals(3, 3));
    EXPECT_FALSE(equals(3, 4));
    EXPECT_TRUE(equals(real(0.5F), real(0.5F)));
    EXPECT_TRUE(equals(real(0.0F), real(-0.0F)));
    EXPECT_FALSE(equals(real(std::nanf("")), real(std::nanf(""))));
    EXPECT_TRUE(equals(std::string("ab"), std::string("ab")));
    EXPECT_FALSE(equals(std::string("ab"), std::string("aB")));
}

TEST(ScriptValueEquals, ComparesArraysElementByElement)
{
    const ScriptValue nan = real(std::nanf(""));

    EXPECT_TRUE(equals(array({}), array({})));
    EXPECT_TRUE(
        equals(array({1, array({std::string("a")})}), array({1, array({std::string("a")})})));
    EXPECT_FALSE(equals(array({1, 2}), array({1})));
    EXPECT_FALSE(equals(array({1, 2}), array({1, 3})));
    EXPECT_FALSE(equals(array({1}), array({real(1.0F)})));
    EXPECT_FALSE(equals(array({nan}), array({nan})));
}

TEST(ScriptValueEquals, LeavesStalePayloadsOut)
{
    ScriptValue a(std::string("a"));
    ScriptValue b(std::string("b"));
    a.setInt(1);
    b.setInt(1);

    EXPECT_TRUE(equals(a, b));
}

TEST(ScriptValueOrder, ComparesTheFourPairsOfNumbers)
{
    EXPECT_TRUE(greaterThan(2, 1));
    EXPECT_FALSE(greaterThan(1, 1));
    EXPECT_TRUE(greaterThan(1, -1)) << "integers are signed";
    EXPECT_TRUE(greaterThan(real(1.5F), 1));
    EXPECT_TRUE(greaterThan(2, real(1.5F)));
    EXPECT_TRUE(greaterThan(real(2.5F), real(1.5F)));
    EXPECT_EQ(described(lessThan(1, 2)), "int 1");
    EXPECT_EQ(described(lessThan(2, 2)), "int 0");
    EXPECT_EQ(described(lessThan(least, greatest)), "int 1");
    EXPECT_EQ(described(lessThan(1, real(1.5F))), "int 1");
    EXPECT_EQ(described(lessThan(real(1.5F), 1)), "int 0");
    EXPECT_EQ(described(lessThan(real(0.5F), real(1.5F))), "int 1");
}

TEST(ScriptValueOrder, FindsIntegerTwoAndFloatTwoNeitherLessNorGreater)
{
    EXPECT_FALSE(equals(2, real(2.0F)));
    EXPECT_EQ(described(lessThan(2, real(2.0F))), "int 0");
    EXPECT_FALSE(greaterThan(2, real(2.0F)));
}

TEST(ScriptValueOrder, LessThanOfAnythingButNumbersIsNull)
{
    const ScriptValue others[] = {{}, std::string("a"), array({1})};
    for (const ScriptValue& other : others) {
        EXPECT_EQ(described(lessThan(other, 1)), "null");
        EXPECT_EQ(described(lessThan(1, other)), "null");
        EXPECT_EQ(described(lessThan(other, other)), "null");
        EXPECT_FALSE(greaterThan(other, 1));
        EXPECT_FALSE(greaterThan(1, other));
        EXPECT_FALSE(greaterThan(other, other));
    }
}

TEST(ScriptValueOrder, FindsANaNNeitherLessNorGreater)
{
    const ScriptValue nan = real(std::nanf(""));

    EXPECT_EQ(described(lessThan(nan, 1)), "int 0");
    EXPECT_FALSE(greaterThan(nan, 1));
}

TEST(ScriptValueArithmetic, HasOneRowPerOperationAndPair)
{
    struct Row
    {
        const char* name;
        ScriptValue (*operation)(const ScriptValue&, const ScriptValue&);
        ScriptValue a;
        ScriptValue b;
        const char* expected;
    };
    const ScriptValue text(std::string("a"));
    const Row rows[] = {
        {"int + int", add, 2, 3, "int 5"},
        {"int + int wraps", add, greatest, 1, "int -2147483648"},
        {"int + float", add, 1, real(0.5F), "float 1.5"},
        {"float + int", add, real(0.5F), 1, "float 1.5"},
        {"float + float", add, real(0.5F), real(0.5F), "float 1"},
        {"null + int", add, {}, 1, "null"},
        {"int + null", add, 1, {}, "null"},
        {"null + null", add, {}, {}, "null"},
        {"array + int", add, array({1}), 1, "null"},
        {"array + array", add, array({1}), array({2}), "null"},
        {"int - int", subtract, 2, 3, "int -1"},
        {"int - int wraps", subtract, least, 1, "int 2147483647"},
        {"int - float", subtract, 1, real(0.25F), "float 0.75"},
        {"float - int", subtract, real(0.25F), 1, "float -0.75"},
        {"float - float", subtract, real(2.0F), real(0.5F), "float 1.5"},
        {"string - int", subtract, text, 1, "null"},
        {"null - int", subtract, {}, 1, "null"},
        {"int * int", multiply, 6, 7, "int 42"},
        {"int * int wraps", multiply, 65536, 65536, "int 0"},
        {"int * float", multiply, 3, real(0.5F), "float 1.5"},
        {"float * int", multiply, real(0.5F), 3, "float 1.5"},
        {"float * float", multiply, real(1.5F), real(2.0F), "float 3"},
        {"string * int", multiply, text, 2, "null"},
        {"int / int", divide, 7, 2, "float 3.5"},
        {"int / int without a rest", divide, 6, 3, "float 2"},
        {"int / float", divide, 1, real(0.5F), "float 2"},
        {"float / int", divide, real(0.5F), 2, "float 0.25"},
        {"float / float", divide, real(1.0F), real(4.0F), "float 0.25"},
        {"int / 0", divide, 1, 0, "float inf"},
        {"int / -0.0", divide, 1, real(-0.0F), "float -inf"},
        {"string / int", divide, text, 2, "null"},
        {"int % int", modulo, 7, 3, "int 1"},
        {"-int % int", modulo, -7, 3, "int -1"},
        {"int % -int", modulo, 7, -3, "int 1"},
        {"float % int", modulo, real(7.9F), 4, "int 3"},
        {"int % float", modulo, 7, real(4.9F), "int 3"},
        {"float % float", modulo, real(-7.9F), real(4.9F), "int -3"},
        {"string % int", modulo, text, 2, "null"},
        {"null % int", modulo, {}, 2, "null"},
        {"int ^ int", power, 2, 10, "int 1024"},
        {"int ^ int is cut", power, 2, -1, "int 0"},
        {"int ^ float", power, 4, real(0.5F), "float 2"},
        {"float ^ int", power, real(1.5F), 2, "float 2.25"},
        {"float ^ float", power, real(0.25F), real(0.5F), "float 0.5"},
        {"string ^ int", power, text, 2, "null"},
        {"int ^ array", power, 2, array({2}), "null"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(described(row.operation(row.a, row.b)), row.expected) << row.name;
}

TEST(ScriptValueArithmetic, CutsWhatNoIntegerCanHoldToSomeInteger)
{
    EXPECT_EQ(described(power(10, 20)), "int 2147483647");
    EXPECT_EQ(described(power(-10, 21)), "int -2147483648");
    EXPECT_EQ(described(modulo(real(1e20F), 10)), "int 7");
    EXPECT_EQ(described(modulo(real(std::nanf("")), 10)), "int 0");
}

TEST(ScriptValueArithmetic, ComputesWiderThanTheResult)
{
    // 2^24 + 1 is no float. With the sum in single precision the 1 would be lost in the operand.
    EXPECT_EQ(described(add(16777217, real(-16777216.0F))), "float 1");
    EXPECT_EQ(described(divide(16777217, 16777217)), "float 1");
    EXPECT_EQ(described(subtract(16777217, real(0.0F))), "float 16777216");
}

TEST(ScriptValueModulo, ByZeroEndsInTheArithmeticTrap)
{
    ChildProcess child([] {
        signal(SIGFPE, SIG_DFL);
        return modulo(7, 0).number;
    });

    EXPECT_EQ(child.wait().signal, SIGFPE);
}

TEST(ScriptValueModulo, OfTheLeastIntegerByMinusOneEndsInTheArithmeticTrap)
{
    ChildProcess child([] {
        signal(SIGFPE, SIG_DFL);
        return modulo(least, -1).number;
    });

    EXPECT_EQ(child.wait().signal, SIGFPE);
}

TEST(ScriptValueAdd, ConcatenatesStringsWithEverythingButArrays)
{
    const ScriptValue a(std::string("a"));

    EXPECT_EQ(described(add(a, std::string("b"))), "string ab");
    EXPECT_EQ(described(add(a, -12)), "string a-12");
    EXPECT_EQ(described(add(a, real(0.5F))), "string a0.5");
    EXPECT_EQ(described(add(1, a)), "string 1a");
    EXPECT_EQ(described(add(real(0.5F), a)), "string 0.5a");
    EXPECT_EQ(described(add({}, a)), "string NULLa");
    EXPECT_EQ(described(add(a, {})), "string aNULL");
    EXPECT_EQ(described(add(a, least)), "string a-2147483648");
}

TEST(ScriptValueAdd, WritesFloatsAsTheyArePrinted)
{
    const float floats[] = {3.14159265F,
                            1e10F,
                            1e-7F,
                            100000.0F,
                            1000000.0F,
                            -0.0F,
                            std::numeric_limits<float>::infinity(),
                            123456.789F};
    for (const float number : floats)
        EXPECT_EQ(add(std::string(), real(number)).text, printed(real(number)));
    EXPECT_EQ(add(std::string(), real(3.14159265F)).text, "3.14159");
    EXPECT_EQ(add(std::string(), real(1e10F)).text, "1e+10");
}

TEST(ScriptValueAdd, AStringAndAnArrayGiveTheEmptyString)
{
    const ScriptValue a(std::string("a"));

    EXPECT_EQ(described(add(a, array({1}))), "string ");
    EXPECT_EQ(described(add(array({1}), a)), "string ");
}

TEST(PrintValue, WritesOneFormPerType)
{
    EXPECT_EQ(printed({}), "NULL");
    EXPECT_EQ(printed(-5), "-5");
    EXPECT_EQ(printed(std::string("no \"quotes\" added")), "no \"quotes\" added");
    EXPECT_EQ(printed(real(3.14159265F)), "3.14159");
    EXPECT_EQ(printed(real(2.0F)), "2");
    EXPECT_EQ(printed(array({})), "Array { }");
    EXPECT_EQ(printed(array({1, 2})), "Array { [0]=1 [1]=2 }");
    EXPECT_EQ(printed(array({ScriptValue()})), "Array { [0]=NULL }");
    EXPECT_EQ(printed(array({1, array({std::string("a")})})),
              "Array { [0]=1 [1]=Array { [0]=a } }");
}

TEST(PrintValue, WritesNothingForAnUnknownTag)
{
    ScriptValue value(5);
    value.type = 9;

    EXPECT_EQ(printed(value), "");
}

TEST(PrintValue, FollowsTheStreamsSettingsAndReturnsTheStream)
{
    std::ostringstream stream;
    stream.precision(3);

    std::ostream& returned = printValue(stream, real(3.14159265F));

    EXPECT_EQ(stream.str(), "3.14");
    EXPECT_EQ(&returned, &stream);
}

TEST(ScriptValueAdd, WritesAFloatInTheCLocaleWhateverAHostHasSet)
{
    const CommaLocale locale;

    EXPECT_EQ(described(add(real(0.5F), std::string("a"))), "string 0.5a");
    EXPECT_EQ(described(add(std::string("a"), real(1234567.0F))), "string a1.23457e+06");
    EXPECT_EQ(described(add(std::string("a"), 1234)), "string a1234");
}

TEST(ScriptValueAdd, WritesWhatIsNoNumberAsAStreamDoes)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float infinity = std::numeric_limits<float>::infinity();

    EXPECT_EQ(described(add(std::string("a"), real(nan))), "string anan");
    EXPECT_EQ(described(add(std::string("a"), real(std::copysign(nan, -1.0F)))), "string a-nan");
    EXPECT_EQ(described(add(std::string("a"), real(infinity))), "string ainf");
    EXPECT_EQ(described(add(std::string("a"), real(-infinity))), "string a-inf");
}

TEST(ParseText, ReadsNumbersInTheCLocaleWhateverAHostHasSet)
{
    const std::string tiny = "0." + std::string(60, '0') + "1";
    const CommaLocale locale;
    ScriptInterpreter interpreter;
    std::vector<ScriptToken> list;

    parseText(interpreter, list,
              ".5 " + tiny + " 1" + std::string(60, '0') + " -1" + std::string(60, '0'));

    EXPECT_EQ(list[0].value.asFloat(), 0.5F);
    EXPECT_EQ(described(list[1].value), "int 0");
    EXPECT_EQ(list[2].value.asFloat(), 3.40282347e+38F);
    EXPECT_EQ(list[3].value.asFloat(), -3.40282347e+38F);
}
} // namespace tamor::test
