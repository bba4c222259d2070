#include "gui/WidgetKinds.h"

#include "tests/gui/GuiTest.h"
#include "tests/support/CapturedErrors.h"
#include "widgets/Button.h"
#include "widgets/Frame.h"
#include "widgets/GLWindow.h"
#include "widgets/Slider.h"
#include "widgets/Textbox.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <sstream>

namespace tamor::test
{
namespace
{

class WidgetKinds : public GuiTest
{
protected:
    void TearDown() override
    {
        owned.clear();
        GuiTest::TearDown();
    }

    /// Builds what a layout line of this kind ends with, as "name" at (1, 2).
    GLWidget* build(const std::string& word, const std::string& fields)
    {
        const auto rows = widgetKinds();
        const auto row = std::find_if(rows.begin(), rows.end(),
                                      [&](const WidgetKind& kind) { return kind.word == word; });
        EXPECT_NE(row, rows.end());
        stream.clear();
        stream.str(fields);
        const CapturedErrors errors;
        owned.emplace_back(row->build(stream, {"name", nullptr, Vector(1.0F, 2.0F), &theme}));
        printed = errors.text();
        return owned.back().get();
    }

    std::istringstream stream;
    std::string printed; ///< by the last `build`

private:
    std::vector<std::unique_ptr<GLWidget>> owned;
};

struct KindRow
{
    std::string word;
    std::string fields;
    std::string type;
    std::string text;
    std::string printed;
};

TEST_F(WidgetKinds, BuildTheirClassesFromTheirFields)
{
    const KindRow rows[] = {
        {"Butt", " Red and more", "Button", "Red", ""},
        {"Label", " one\\ntwo words", "Label", "one\ntwo words", ""},
        {"Check", " Show \\n it", "Checkbox", "Show \\n it", ""},
        {"Opt", " Pick it", "Optionbox", "Pick it", ""},
        {"Combo", "", "Combobox", "", ""},
        {"Slide", " 0.5 0", "Slider", "", ""},
        {"Text", " 20 2", "Textbox", "", "textbox 20 2\ndim: (1.375, 0.65, 0, 1)\n"},
        {"Win", " 1 A title", "GLWindow", "A title", "adding window name 1\n"},
        {"Frame", " 1", "Frame", "", ""},
    };
    for (const KindRow& row : rows) {
        GLWidget& widget = *build(row.word, row.fields);
        EXPECT_EQ(widget.typeName(), row.type);
        EXPECT_EQ(seen(widget).text, row.text) << row.word;
        EXPECT_EQ(printed, row.printed) << row.word;
        EXPECT_EQ(seen(widget).name, "name");
        EXPECT_EQ(seen(widget).position.x, 1.0F);
        EXPECT_EQ(seen(widget).position.y, 2.0F);
        EXPECT_EQ(seen(widget).parent, nullptr);
        EXPECT_EQ(seen(widget).theme, &theme);
    }
    EXPECT_TRUE(GLWidget::topLevel.empty()) << "attaching is the reader's";
}

TEST_F(WidgetKinds, DeferContainersAlone)
{
    std::vector<std::string_view> deferred;
    for (const WidgetKind& kind : widgetKinds()) {
        if (kind.isDeferred)
            deferred.push_back(kind.word);
    }

    EXPECT_EQ(widgetKinds().size(), 10U);
    EXPECT_THAT(deferred, testing::UnorderedElementsAre("Win", "Frame", "TWin"));
}

TEST_F(WidgetKinds, ReadNumbersAndTruthValues)
{
    EXPECT_EQ(dynamic_cast<Slider&>(*build("Slide", " 0 0.75")).extent.y, 0.75F);
    EXPECT_EQ(dynamic_cast<Slider&>(*build("Slide", " 0.5 0")).extent.x, 0.5F);
    EXPECT_TRUE(dynamic_cast<Frame&>(*build("Frame", " 1")).bordered);
    EXPECT_FALSE(dynamic_cast<Frame&>(*build("Frame", " 0")).bordered);
    EXPECT_FALSE(dynamic_cast<GLWindow&>(*build("Win", " 0 Still")).draggable);
    EXPECT_EQ(printed, "adding window name 0\n");
    EXPECT_EQ(dynamic_cast<Textbox&>(*build("Text", " 3 5")).maxRows, 5U);
}

TEST_F(WidgetKinds, MakeAnImageButtonOfExactlyItsSize)
{
    const auto& button = dynamic_cast<Button&>(*build("Butt", " TEX 0.2 0.1"));

    const Vector rect = button.getRect();
    EXPECT_EQ(rect.z, 1.2F);
    EXPECT_EQ(rect.w, 2.1F);
    EXPECT_EQ(button.image, 7U);
    float left = 0;
    EXPECT_FALSE(stream >> left) << "both numbers are read";
}

TEST_F(WidgetKinds, TellOfATabWindowBeforeAndBehind)
{
    std::ostringstream expected;
    expected << "adding tabwindow name 0 (1, 2, 0, 1) " << &theme << "\nadded tabwindow\n";

    const GLWidget& window = *build("TWin", "");

    EXPECT_EQ(window.typeName(), "TabWindow");
    EXPECT_EQ(printed, expected.str());
}

TEST_F(WidgetKinds, LeaveTheRestOfTheLineToTheReader)
{
    build("Butt", " Red // remark");

    std::string rest;
    std::getline(stream, rest);
    EXPECT_EQ(rest, " // remark");
}
} // namespace
} // namespace tamor::test
