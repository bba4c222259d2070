// Runs every listing of the manual's two pages for those who write layouts and themes. A listing
// opens with "```text <file>", and what else the line says is what must happen to it.

#include "gui/GLWidget.h"

#include "tests/gui/GuiTest.h"
#include "tests/support/CapturedErrors.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/TemporaryDirectory.h"

#include <GL/gl.h>
#include <gmock/gmock.h>

#include <fstream>

namespace tamor::test
{
namespace
{
using testing::SizeIs;

struct Listing
{
    std::string language;
    std::string file;
    std::string mark; ///< "" where nothing but that it works is to be seen
    std::string text;
};

std::vector<Listing> listingsOf(const std::string& page)
{
    std::ifstream stream(std::string(TAMOR_DOCS) + "/" + page);
    EXPECT_TRUE(stream.is_open()) << page;
    std::vector<Listing> listings;
    std::string line;
    while (std::getline(stream, line)) {
        if (!line.starts_with("```"))
            continue;
        Listing listing;
        std::istringstream(line.substr(3)) >> listing.language >> listing.file >> listing.mark;
        while (std::getline(stream, line) && line != "```")
            listing.text += line + "\n";
        listings.push_back(listing);
    }
    return listings;
}

std::string textOfListing(const std::string& page, const std::string& file)
{
    for (const Listing& listing : listingsOf(page))
        if (listing.file == file)
            return listing.text;
    ADD_FAILURE() << page << " has no " << file;
    return "";
}

std::vector<Listing> layouts(const std::string& mark)
{
    std::vector<Listing> chosen;
    for (const Listing& listing : listingsOf("layout-files.md"))
        if (listing.file == "my.gui" && listing.mark == mark)
            chosen.push_back(listing);
    return chosen;
}

class DocumentationGLTest : public GuiGLTest
{
protected:
    void SetUp() override
    {
        GuiGLTest::SetUp();
        clearGui();
        const std::string page = "themes-and-configuration.md";
        for (const char* name : {"default.theme", "combo_button.theme", "tabwin_button.theme"})
            directory.write(name, textOfListing(page, "default.theme"));
        directory.write("gui.conf", textOfListing(page, "gui.conf"));
    }

    void load(const Listing& listing) const
    {
        directory.write("my.gui", listing.text);
        const CapturedErrors errors;
        GLWidget::loadLayout("my.gui");
    }

    TemporaryDirectory directory;
};

TEST_F(DocumentationGLTest, TheSmallestLayoutShowsItsLabel)
{
    const std::vector<Listing> all = layouts("");
    ASSERT_THAT(all, SizeIs(3));

    load(all[0]);
    if (GLWidget* hello = GLWidget::find("hello"))
        hello->setCaption("Good bye");
    GLWidget::renderAll();

    ASSERT_THAT(GLWidget::topLevel, SizeIs(1));
    EXPECT_EQ(GLWidget::topLevel[0]->typeName(), "Label");
    EXPECT_EQ(seen(*GLWidget::topLevel[0]).text, "Good bye");
    EXPECT_GT(seen(*GLWidget::topLevel[0]).dimensions.x, 0.1F);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST_F(DocumentationGLTest, TheLayoutWithOneSolidIsFittedAndCentred)
{
    load(layouts("").at(1));

    const Vector main = GLWidget::find("main")->getRect();
    EXPECT_GT(main.z, 0.5F / 2.0F) << "wide enough for its slider";
    EXPECT_EQ(main.x, -main.z);
    EXPECT_EQ(main.y, -main.w);
}

TEST_F(DocumentationGLTest, TheWholeLayoutMakesAllItsWidgets)
{
    load(layouts("").at(2));
    GLWidget::mouseMoved({400.0F, 300.0F});
    GLWidget::mouseButtons(true, false, false);
    GLWidget::updateAll(16);
    GLWidget::renderAll();

    EXPECT_THAT(GLWidget::topLevel, SizeIs(6));
    for (const char* name :
         {"main", "colour", "red", "green", "blue", "redbut", "greenbut", "bluebut", "pages",
          "volume", "volumetext", "name", "status", "size", "full", "exit"})
        EXPECT_NE(GLWidget::find(name), nullptr) << name;
    EXPECT_EQ(GLWidget::find("red")->getValue(), 0.5F);
    EXPECT_EQ(seen(*GLWidget::find("status")).text, "Status: ok\nsecond line");
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST_F(DocumentationGLTest, TheLayoutsThatNeverReturnDoNot)
{
    const std::vector<Listing> all = layouts("never-returns");
    ASSERT_THAT(all, SizeIs(2));

    for (const Listing& listing : all) {
        directory.write("my.gui", listing.text);
        ChildProcess child([] { return GLWidget::loadLayout("my.gui") ? 0 : 1; });

        EXPECT_TRUE(
            becomesTrue([&] { return child.errors().find("adding") != std::string::npos; }));
        EXPECT_TRUE(child.wait(std::chrono::milliseconds(500)).timedOut) << listing.text;
    }
}

TEST_F(DocumentationGLTest, TheThemeIsTheBuiltInOneWithoutAPicture)
{
    const CapturedErrors errors;
    Theme own;

    own.read("default.theme");

    EXPECT_EQ(errors.text(),
              "reading theme default.theme\n"
              "(1, 1, 1, 1)\n(1, 0.71, 0.16, 1)\n(0.8, 0.8, 0.8, 1)\n"
              "(0.3, 0.3, 0.3, 1)\n1\n0.8\n2\n0.005\n0.1\n0.003\n(0.04, 0.05, 0, 1)\n"
              "0.7 1\n(0.005, -0.005, 0, 1)\n0.1\nNULL\n1\nread theme default.theme\n");
}

TEST_F(DocumentationGLTest, TheConfigurationLoadsAFontAndAllPlaces)
{
    CapturedErrors errors;

    GLWidget::readConfig("gui.conf");

    EXPECT_EQ(errors.text(), "Loading /usr/share/fonts/truetype/dejavu/DejaVuSans.ttf\nLoaded.\n");
    EXPECT_EQ(GLWidget::optionFrame.z, 0.25F);
    EXPECT_EQ(GLWidget::optionMark.x, 0.25F);
    EXPECT_EQ(GLWidget::checkFrame.y, 0.75F);
    EXPECT_EQ(GLWidget::checkMark.w, 1.0F);
    EXPECT_EQ(GLWidget::sliderKnob.z, 0.75F);
    EXPECT_EQ(GLWidget::glowRate, 0.005F);
}

TEST_F(DocumentationGLTest, TheShortThemeGivesOneColour)
{
    directory.write("short.theme", textOfListing("themes-and-configuration.md", "short.theme"));
    const CapturedErrors errors;
    Theme own;

    own.read("short.theme");

    EXPECT_EQ(own.textColour.y, 0.5F);
    EXPECT_EQ(own.edgeColour.x, 0.0F);
    EXPECT_EQ(own.bodyAlpha, 0.0F);
}

// The program's part of the page stands in this file word for word, and runs.
TEST_F(DocumentationGLTest, TheProgramOfThePageIsTheOneThatIsTested)
{
    std::vector<Listing> programs;
    for (const Listing& listing : listingsOf("layout-files.md"))
        if (listing.language == "cpp")
            programs.push_back(listing);
    ASSERT_THAT(programs, SizeIs(1));
    directory.write("my.gui", layouts("").at(0).text);

    GLWidget::loadLayout("my.gui");
    if (GLWidget* hello = GLWidget::find("hello"))
        hello->setCaption("Good bye");

    EXPECT_EQ(seen(*GLWidget::find("hello")).text, "Good bye");
    EXPECT_EQ(programs[0].text, "GLWidget::loadLayout(\"my.gui\");\n"
                                "if (GLWidget* hello = GLWidget::find(\"hello\"))\n"
                                "    hello->setCaption(\"Good bye\");\n");
}
} // namespace
} // namespace tamor::test
