#include "benchmarks/widgets/GuichanScene.h"

#include <guichan.hpp>
#include <guichan/opengl.hpp>

#include <cstddef>
#include <string>
#include <vector>

namespace tamor::bench
{
namespace
{
constexpr int glyphWidth = 8;
constexpr int glyphHeight = 12;

/// The characters of the font, each a box: what a glyph looks like does not matter.
std::string fontCharacters()
{
    std::string characters;
    for (char character = ' '; character <= '~'; ++character)
        characters += character;
    return characters;
}

/// An image of the kind that Guichan's fonts are read from: a row of glyphs, with columns between
/// them and a line below that have the colour of the first pixel.
gcn::Image* makeFontImage()
{
    constexpr unsigned int separator = 0xFFFF00FF;
    constexpr unsigned int ink = 0xFFFFFFFF;
    const std::size_t width = fontCharacters().size() * (glyphWidth + 1) + 1;
    constexpr std::size_t height = glyphHeight + 1;
    std::vector<unsigned int> pixels(width * height, separator);
    for (std::size_t y = 0; y < glyphHeight; ++y) {
        for (std::size_t x = 0; x < width; ++x) {
            if (x % (glyphWidth + 1) != 0)
                pixels[y * width + x] = ink;
        }
    }
    return new gcn::OpenGLImage(pixels.data(), static_cast<int>(width), int{height}, false);
}

class Items : public gcn::ListModel
{
public:
    int getNumberOfElements() override { return 3; }
    std::string getElementAt(int index) override { return std::to_string(index + 1) + " of three"; }
};

/// A window with every class that both toolkits have.
class Group
{
public:
    explicit Group(gcn::Container& top, int number, Items& items)
        : window("Window " + std::to_string(number)), dropDown(&items)
    {
        window.setSize(400, 320);
        frame.setSize(180, 30);
        frame.setFrameSize(1);
        frame.add(&option, 0, 0);
        frame.add(&choice, 90, 0);
        tabs.setSize(180, 80);
        tabs.addTab("First", &page);
        tabs.addTab("Second", &back);
        text.setSize(180, 40);
        across.setSize(150, 12);
        down.setSize(12, 100);
        down.setOrientation(gcn::Slider::VERTICAL);
        dropDown.setWidth(120);

        window.add(&first, 0, 0);
        window.add(&second, 0, 20);
        window.add(&press, 0, 40);
        window.add(&again, 80, 40);
        window.add(&across, 0, 70);
        window.add(&down, 190, 70);
        window.add(&check, 0, 90);
        window.add(&other, 0, 110);
        window.add(&dropDown, 210, 90);
        window.add(&text, 0, 130);
        window.add(&frame, 0, 180);
        window.add(&tabs, 210, 180);
        top.add(&window, 10, 10);
    }

private:
    gcn::Window window;
    gcn::Label first{"A label"};
    gcn::Label second{"Another label"};
    gcn::Button press{"Press"};
    gcn::Button again{"Again"};
    gcn::Slider across;
    gcn::Slider down;
    gcn::CheckBox check{"A check box"};
    gcn::CheckBox other{"Another one"};
    gcn::DropDown dropDown;
    gcn::TextBox text;
    gcn::Container frame;
    gcn::RadioButton option{"An option", "group", true};
    gcn::RadioButton choice{"Another option", "group"};
    gcn::TabbedArea tabs;
    gcn::Label page{"On the first tab"};
    gcn::Label back{"On the second tab"};
};
} // namespace

struct GuichanScene::Parts
{
    // Widgets find the font when they are made, so it comes first.
    gcn::ImageFont font{makeFontImage(), fontCharacters()};
    Items items;
    gcn::OpenGLGraphics graphics{800, 600};
    gcn::Container top;
    std::vector<std::unique_ptr<Group>> groups;
    gcn::Gui gui;
};

GuichanScene::GuichanScene(int count) : parts(std::make_unique<Parts>())
{
    gcn::Widget::setGlobalFont(&parts->font);
    parts->top.setDimension(gcn::Rectangle(0, 0, 800, 600));
    for (int number = 0; number < count / 20; ++number)
        parts->groups.push_back(std::make_unique<Group>(parts->top, number, parts->items));
    parts->gui.setGraphics(&parts->graphics);
    parts->gui.setTop(&parts->top);
}

GuichanScene::~GuichanScene()
{
    gcn::Widget::setGlobalFont(nullptr);
}

void GuichanScene::drawFrame()
{
    parts->gui.logic();
    parts->gui.draw();
}
} // namespace tamor::bench
