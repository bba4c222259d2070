#include "tests/support/ChildProcess.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <ostream>
#include <string>

namespace tamor::test
{
namespace
{
/// A tree of sources of one header.
class TheCheckOfExports : public testing::Test
{
protected:
    /// What the script says about a tree whose `file` declares this; it is expected to end with
    /// `status`.
    std::string check(const std::string& file, const std::string& declaration, int status) const
    {
        const TemporaryDirectory tree;
        std::filesystem::create_directories((tree.path() / file).parent_path());
        static_cast<void>(tree.write(file, "namespace tamor\n{\n" + declaration + "\n}\n"));

        ChildProcess script({TAMOR_SOURCES "/scripts/check-exports", tree.path()});
        EXPECT_EQ(script.wait().status, status);
        return script.output() + script.errors();
    }
};

struct Declaration
{
    const char* name;
    const char* text; ///< of one line but for a record, where the line refused is the third

    friend void PrintTo(const Declaration& row, std::ostream* stream) { *stream << row.name; }
};

class TheCheckOfExportsRefuses : public TheCheckOfExports,
                                 public testing::WithParamInterface<Declaration>
{};

TEST_P(TheCheckOfExportsRefuses, AndSaysWhat)
{
    const std::string text = GetParam().text;

    EXPECT_EQ(check("kernel/A.h", text, 1), "kernel/A.h:3: without TAMOR_EXPORT: " + text + "\n");
}

INSTANTIATE_TEST_SUITE_P(Rows, TheCheckOfExportsRefuses,
                         testing::Values(Declaration{"AClass", "class Timer"},
                                         Declaration{"AClassWithABase", "class A : public B"},
                                         Declaration{"AFunction", "bool collect(int a);"},
                                         Declaration{"AFunctionOfTwoLines", "bool collect(int a,"},
                                         Declaration{"AVariable", "extern int count;"},
                                         Declaration{"AnInlineVariable",
                                                     "inline bool ends = false;"}),
                         [](const auto& row) { return row.param.name; });

TEST_F(TheCheckOfExports, RefusesARecordWithAFunctionInASource)
{
    EXPECT_EQ(check("maths/A.h", "struct A\n{\n    int b;\n    int read(int c);\n};", 1),
              "maths/A.h:6: without TAMOR_EXPORT:     int read(int c);\n");
}

class TheCheckOfExportsAllows : public TheCheckOfExports,
                                public testing::WithParamInterface<Declaration>
{};

TEST_P(TheCheckOfExportsAllows, AndSaysNothing)
{
    EXPECT_EQ(check("widgets/A.h", GetParam().text, 0), "");
}

INSTANTIATE_TEST_SUITE_P(
    Rows, TheCheckOfExportsAllows,
    testing::Values(Declaration{"WhatHasTheWord", "class TAMOR_EXPORT A\nTAMOR_EXPORT int b(int);"},
                    Declaration{"AClassThatIsOnlyNamed", "class A;"},
                    Declaration{"ATemplate", "template <class T>\nclass A\n{\n};"},
                    Declaration{"AnInlineFunction", "inline bool isA(int b)\n{\n}"},
                    Declaration{"ARecordOfFields", "struct A\n{\n    int b = c(d);\n};"},
                    Declaration{"WhatIsInANamespaceOfItsOwn",
                                "namespace script\n{\nint a(int b);\n} // namespace script"}),
    [](const auto& row) { return row.param.name; });

TEST_F(TheCheckOfExports, LeavesToAFolderWhatIsItsOwn)
{
    EXPECT_EQ(check("script/internal/A.h", "class A", 0), "");
    EXPECT_EQ(check("tools/A.h", "class A", 0), "");
}
} // namespace
} // namespace tamor::test
