#include "tests/end_to_end/Demonstration.h"
#include "tests/end_to_end/Trace.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

namespace tamor::test
{
namespace
{
// The frame below is written down from the drawing rules and from the numbers of data/: places and
// sizes in GUI units, widths of texts as the font file gives them. Nothing of the engine takes
// part.

constexpr double fontSize = 0.04;
constexpr double icon = 0.08;

struct Shade
{
    double red;
    double green;
    double blue;

    Shade operator*(double factor) const { return {red * factor, green * factor, blue * factor}; }
};

/// What a theme file says, as far as it is drawn with.
struct Look
{
    Shade text;
    Shade edge;
    Shade body;
    double lineWidth;
    double chamfer;
    double dim;
};

constexpr Shade white{0.94, 0.96, 0.98};
constexpr Shade dark{0.06, 0.08, 0.11};
constexpr Look sidebar{white, {0.33, 0.40, 0.50}, {0.13, 0.17, 0.22}, 1, 0.0155, 0.9};
constexpr Look panel{white, {0.33, 0.40, 0.50}, {0.13, 0.17, 0.22}, 1, 0.0419, 0.9};
constexpr Look lower{white, {0.33, 0.40, 0.50}, {0.13, 0.17, 0.22}, 1, 0.0514, 0.9};
constexpr Look plain{white, {0.42, 0.52, 0.64}, {0.24, 0.31, 0.40}, 1, 0.06, 0.9};
constexpr Look choice{white, {0.42, 0.52, 0.64}, {1, 0.76, 0.34}, 2, 0.06, 0.85};
constexpr Look red{dark, {1, 0.72, 0.66}, {1, 0.44, 0.39}, 2, 0.06, 0.88};
constexpr Look green{dark, {0.75, 0.97, 0.74}, {0.40, 0.83, 0.48}, 2, 0.06, 0.88};
constexpr Look blue{dark, {0.74, 0.87, 1}, {0.44, 0.67, 1}, 2, 0.06, 0.88};
constexpr Look quill{white, {0.70, 0.62, 0.45}, {1, 1, 1}, 1, 0.025, 0.85};
constexpr Look paper{{0.96, 0.94, 0.88}, {0.42, 0.52, 0.64}, {0.96, 0.94, 0.88}, 4, 0.02, 0.93};
constexpr Look tabAtRest{white, {0.42, 0.52, 0.64}, {0.20, 0.26, 0.34}, 1, 0.06, 0.8};
constexpr Look tabLit{white, {0.42, 0.52, 0.64}, {0.20, 0.26, 0.34}, 1, 0.06, 1.5};
constexpr Look listButton{white, {1, 0.76, 0.34}, {0.85, 0.60, 0.20}, 1, 0.06, 0.9};

/// Writes calls down, and keeps the place that the modelview matrix has been moved to.
class Frame
{
public:
    std::vector<std::string> calls;

    template <typename... Arguments>
    void call(const std::string& name, const Arguments&... arguments)
    {
        std::ostringstream line;
        [[maybe_unused]] const char* separator = "";
        line.precision(9);
        line << name << '(';
        ((line << separator << arguments, separator = ", "), ...);
        line << ')';
        calls.push_back(line.str());
    }

    void push()
    {
        call("glPushMatrix");
        places.push_back(places.back());
    }

    void pop()
    {
        call("glPopMatrix");
        places.pop_back();
    }

    void translate(double x, double y)
    {
        call("glTranslatef", x, y, 0);
        places.back().x += x;
        places.back().y += y;
    }

    void enable(const char* what) { call("glEnable", what); }
    void disable(const char* what) { call("glDisable", what); }
    void mode(const char* how) { call("glPolygonMode", "GL_FRONT_AND_BACK", how); }
    void colour(const Shade& shade) { call("glColor3f", shade.red, shade.green, shade.blue); }
    void colour(const Shade& shade, double alpha)
    {
        call("glColor4f", shade.red, shade.green, shade.blue, alpha);
    }

    void blending() { call("glBlendFunc", "GL_SRC_ALPHA", "GL_ONE_MINUS_SRC_ALPHA"); }

    void line(double x1, double y1, double x2, double y2)
    {
        call("glBegin", "GL_LINES");
        call("glVertex2f", x1, y1);
        call("glVertex2f", x2, y2);
        call("glEnd");
    }

    /// The plate's seven corners; `share` is the cut's part of the picture, none without a picture.
    void plate(double w, double h, double cut, double share)
    {
        const double corners[7][4] = {
            {0, 0, -w / 2, -h / 2},          {0, 1 - share, -w / 2, h / 2 - cut},
            {share, 1, -w / 2 + cut, h / 2}, {1, 1, w / 2, h / 2},
            {1, share, w / 2, -h / 2 + cut}, {1, 0, w / 2 - cut, -h / 2},
            {0, 0, -w / 2, -h / 2}};
        call("glBegin", "GL_POLYGON");
        for (const auto& corner : corners) {
            if (share > 0)
                call("glTexCoord2f", corner[0], corner[1]);
            call("glVertex2f", corner[2], corner[3]);
        }
        call("glEnd");
    }

    void print(std::size_t length)
    {
        const Place at = places.back();
        std::ostringstream matrix;
        matrix.precision(9);
        matrix << "{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, " << at.x << ", " << at.y << ", 0, 1}";
        call("glPushAttrib", "GL_DEPTH_BUFFER_BIT | GL_ENABLE_BIT");
        call("glGetIntegerv", "GL_VIEWPORT", "{0, 0, 800, 600}");
        disable("GL_DEPTH_TEST");
        disable("GL_LIGHTING");
        enable("GL_TEXTURE_2D");
        enable("GL_BLEND");
        blending();
        call("glListBase", 1);
        call("glGetFloatv", "GL_MODELVIEW_MATRIX", matrix.str());
        call("glPushMatrix");
        call("glLoadIdentity");
        call("glTranslatef", 0, 0, 0);
        call("glMultMatrixf", matrix.str());
        call("glScalef", fontSize, fontSize, 0);
        call("glCallLists", length, "GL_UNSIGNED_BYTE", "blob(" + std::to_string(length) + ")");
        call("glPopMatrix");
        call("glPopAttrib");
    }

private:
    struct Place
    {
        double x;
        double y;
    };
    std::vector<Place> places{{0, 0}};
};

void windowPlate(Frame& f, double w, double h, const Look& look)
{
    f.mode("GL_FILL");
    f.colour(look.body * look.dim, 1);
    f.plate(w, h, look.chamfer * h, look.chamfer);
    f.mode("GL_LINE");
    f.colour(look.edge * look.dim, 1);
    f.disable("GL_TEXTURE_2D");
    f.enable("GL_BLEND");
    f.plate(w, h, look.chamfer * h, look.chamfer);
    f.mode("GL_FILL");
}

/// A window up to its children, which `endWindow` closes.
void window(Frame& f, double x, double y, double w, double h, const Look& look, std::size_t title)
{
    f.push();
    f.translate(x + w / 2, y + h / 2);
    f.disable("GL_DEPTH_TEST");
    f.disable("GL_TEXTURE_2D");
    // The cut's share is the width of the window's lines.
    f.call("glLineWidth", look.chamfer);
    windowPlate(f, w, h, look);
    f.disable("GL_TEXTURE_2D");
    f.colour(look.edge * look.dim, 1);
    f.line(-w / 2, h / 2 - 0.06, w / 2, h / 2 - 0.06);
    f.colour(look.text);
    f.translate(-w / 2 + look.chamfer * h, h / 2 - 0.06 + fontSize / 3);
    f.print(title);
    f.pop();
    f.push();
    f.translate(x + 0.03, y + 0.03);
}

void buttonAsItIs(Frame& f, double x, double y, double w, double h, const Look& look,
                  std::size_t words)
{
    const bool image = words == 0;
    f.call("glLineWidth", look.lineWidth);
    f.push();
    f.blending();
    f.enable("GL_BLEND");
    f.disable("GL_TEXTURE_2D");
    f.disable("GL_DEPTH_TEST");
    if (image) {
        f.enable("GL_TEXTURE_2D");
        f.call("glBindTexture", "GL_TEXTURE_2D", 130);
    }
    f.translate(x + w / 2, y + h / 2);
    f.push();
    f.mode("GL_FILL");
    f.colour(look.body * look.dim);
    if (image)
        f.enable("GL_TEXTURE_2D");
    f.plate(w, h, 3 * look.chamfer * h, 3 * look.chamfer);
    f.mode("GL_LINE");
    f.colour(look.edge * look.dim);
    f.disable("GL_TEXTURE_2D");
    f.plate(w, h, 3 * look.chamfer * h, 3 * look.chamfer);
    f.pop();
    f.mode("GL_FILL");
    f.colour(look.text);
    f.translate(-w / 2 + fontSize / 2, -h / 2 + fontSize / 3);
    f.print(words);
    f.pop();
}

void button(Frame& f, double x, double y, double textWidth, const Look& look, std::size_t words)
{
    f.push();
    buttonAsItIs(f, x, y, textWidth + fontSize, 0.06, look, words);
    f.pop();
}

void label(Frame& f, double x, double y, double textWidth, const Look& look, std::size_t words)
{
    const double w = textWidth + fontSize;
    f.push();
    f.push();
    f.blending();
    f.enable("GL_BLEND");
    f.disable("GL_TEXTURE_2D");
    f.disable("GL_DEPTH_TEST");
    f.translate(x + w / 2, y + 0.03);
    f.colour(look.text);
    f.translate(-w / 2 + fontSize / 2, -0.03 + fontSize / 3);
    f.print(words);
    f.pop();
    f.pop();
}

/// A slider at 0.5: upright if `width` is 0.
void slider(Frame& f, double x, double y, double width, double height, const Look& look)
{
    const bool upright = width == 0;
    f.push();
    f.push();
    f.blending();
    f.enable("GL_BLEND");
    f.disable("GL_TEXTURE_2D");
    f.disable("GL_DEPTH_TEST");
    f.colour(look.body * look.dim, 0.5);
    f.call("glLineWidth", look.lineWidth);
    f.translate(0, icon / 4);
    if (upright)
        f.line(x, y, x, y + height + icon / 4);
    else
        f.line(x + icon / 2, y - icon / 4, x + width + icon / 2, y - icon / 4);
    f.call("glBindTexture", "GL_TEXTURE_2D", 1);
    f.enable("GL_TEXTURE_2D");
    if (upright)
        f.translate(x, height / 2 + y);
    else
        f.translate(width / 2 + x + icon / 2, y - icon / 4);
    if (upright)
        f.call("glRotatef", 90, 0, 0, 1);
    // The knob's rectangle in the picture, as the configuration file has it.
    const double corners[4][4] = {{0.03125, 0.0625, -0.04, -0.04},
                                  {0.03125, 0.4375, -0.04, 0.04},
                                  {0.21875, 0.4375, 0.04, 0.04},
                                  {0.21875, 0.0625, 0.04, -0.04}};
    f.call("glBegin", "GL_QUADS");
    for (const auto& corner : corners) {
        f.call("glTexCoord2f", corner[0], corner[1]);
        f.call("glVertex2f", corner[2], corner[3]);
    }
    f.call("glEnd");
    f.pop();
    f.pop();
}

/// An unbordered frame up to its children, which two pops close. Its size is what they need.
void frame(Frame& f, double x, double y, double w, double h, const Look& look)
{
    f.push();
    f.push();
    f.translate(x + w / 2, y + h / 2);
    f.disable("GL_DEPTH_TEST");
    f.disable("GL_TEXTURE_2D");
    f.call("glLineWidth", look.lineWidth);
    f.disable("GL_TEXTURE_2D");
    f.pop();
    f.push();
    f.translate(x, y);
}

void corner(Frame& f, double x, double y, const Look& look)
{
    frame(f, x, y, 0, 0, look);
    f.pop();
    f.pop();
}

void colourWindow(Frame& f)
{
    window(f, -1.3, -0.9667, 0.4, 1.9334, sidebar, 6);
    slider(f, 0.0567, 0.6867, 0, 1.0267, red);
    // The words are centred: half of what the window is wider than they are.
    button(f, (0.34 - 0.14375) / 2, 0.5667, 0.10375, red, 3);
    slider(f, 0.17, 0.6867, 0, 1.0267, green);
    button(f, (0.34 - 0.2025) / 2, 0.4867, 0.1625, green, 5);
    slider(f, 0.2833, 0.6867, 0, 1.0267, blue);
    button(f, (0.34 - 0.15875) / 2, 0.4067, 0.11875, blue, 4);
    f.push();
    buttonAsItIs(f, 0, 0, 0.34, 0.34, quill, 0);
    f.pop();
    corner(f, 0.34, 1.7933, quill);
    f.pop();
}

void pages(Frame& f)
{
    const double w = 1.1133;
    const double h = 0.7167;
    f.disable("GL_DEPTH_TEST");
    f.disable("GL_TEXTURE_2D");
    f.enable("GL_BLEND");
    f.push();
    f.translate(-0.8667 + w / 2, 0.25 + h / 2);
    f.call("glLineWidth", panel.lineWidth);
    windowPlate(f, w, h, panel);
    f.colour(panel.edge * panel.dim, 1);
    f.disable("GL_TEXTURE_2D");
    f.line(-w / 2, h / 2 - 0.08, w / 2, h / 2 - 0.08);
    f.pop();
    f.push();
    f.colour(panel.text);
    // The row of buttons starts at the cut, each 0.02 behind the one before it.
    const double x = -0.8667 + panel.chamfer * h;
    const double y = 0.25 + h - 0.07;
    buttonAsItIs(f, x, y, 0.22, 0.06, tabLit, 7);
    buttonAsItIs(f, x + 0.24, y, 0.24625, 0.06, tabAtRest, 7);
    buttonAsItIs(f, x + 0.50625, y, 0.2325, 0.06, tabAtRest, 6);
    f.pop();
    f.push();
    f.translate(-0.8367, 0.28);
    label(f, 0.02, 0.4533, 0.22125, choice, 14);
    slider(f, 0, 0.4, 0.9733, 0, choice);
    label(f, 0.02, 0.2033, 0.22125, choice, 14);
    slider(f, 0, 0.15, 0.9733, 0, choice);
    corner(f, 1.0533, 0.5767, choice);
    f.pop();
}

void choices(Frame& f)
{
    window(f, 0.28, 0.25, 1.02, 0.7167, panel, 7);
    label(f, 0, 0.5, 0.625, plain, 22);
    // The list is as wide as its widest entry, 0.465, its button's 0.0575, two letters and its
    // margins.
    const double w = 0.6325;
    const double h = 0.09;
    f.push();
    f.push();
    f.translate(0.02 + w / 2, 0.3733 + h / 2);
    f.disable("GL_DEPTH_TEST");
    f.disable("GL_TEXTURE_2D");
    f.call("glLineWidth", plain.lineWidth);
    f.enable("GL_BLEND");
    f.mode("GL_FILL");
    f.colour(plain.body * plain.dim, 1);
    f.plate(w, h, plain.chamfer * h, 0);
    f.mode("GL_LINE");
    f.colour(plain.edge * plain.dim, 1);
    f.disable("GL_TEXTURE_2D");
    f.plate(w, h, plain.chamfer * h, 0);
    f.mode("GL_FILL");
    f.pop();
    f.push();
    f.translate(0.02 + 0.015, 0.3733 + 0.015);
    button(f, 0, 0, 0.0175, listButton, 1);
    f.translate(0.0175 + 0.0575, fontSize / 3);
    f.print(17);
    f.pop();
    f.pop();
    corner(f, 0.96, 0.5767, plain);
    f.pop();
}

void notes(Frame& f)
{
    window(f, -0.8667, -0.9667, 1.1133, 0.5833, lower, 5);
    // 23 letters of 0.04375 and one more letter's size; eight rows of 1.3.
    const double w = 1.04625;
    const double h = 0.416;
    frame(f, 0.0033, 0.0133, w, h, paper);
    f.push();
    f.push();
    f.blending();
    f.disable("GL_BLEND");
    f.disable("GL_TEXTURE_2D");
    f.disable("GL_DEPTH_TEST");
    f.colour(paper.text);
    f.translate(w / 2, h / 2);
    f.push();
    f.mode("GL_FILL");
    f.colour(paper.text * paper.dim);
    f.plate(w, h, 3 * paper.chamfer * 0.06, 3 * paper.chamfer);
    f.mode("GL_LINE");
    f.colour(paper.text * paper.dim);
    f.disable("GL_TEXTURE_2D");
    f.plate(w, h, 3 * paper.chamfer * 0.06, 3 * paper.chamfer);
    f.pop();
    f.mode("GL_FILL");
    f.translate(-w / 2 + fontSize / 2, -h / 2 + fontSize / 3);
    f.translate(0, 7 * 0.052);
    f.colour({0.04, 0.06, 0.12});
    f.print(0);
    f.translate(0, 0);
    f.pop();
    f.pop();
    f.pop();
    f.pop();
    corner(f, 1.0533, 0.4433, lower);
    f.pop();
}

void program(Frame& f)
{
    window(f, 0.28, -0.9667, 1.02, 0.5833, lower, 7);
    label(f, 0, 0.3533, 0.73875, plain, 27);
    label(f, 0, 0.26, 0.115, plain, 4);
    label(f, 0, 0.1667, 0.82625, plain, 29);
    button(f, 0.8033, 0, 0.10125, red, 4);
    corner(f, 0.96, 0.4433, lower);
    f.pop();
}

std::vector<std::string> prescribedFrame()
{
    Frame f;
    f.call("glClear", "GL_DEPTH_BUFFER_BIT | GL_COLOR_BUFFER_BIT");
    f.call("glLoadIdentity");
    f.call("glClearColor", 0, 0, 1, 1);
    f.call("glMatrixMode", "GL_PROJECTION");
    f.call("glPushMatrix");
    f.call("glLoadIdentity");
    f.call("glOrtho", -4.0 / 3, 4.0 / 3, -1, 1, -1, 1);
    f.call("glMatrixMode", "GL_MODELVIEW");
    f.call("glPushAttrib", "GL_ENABLE_BIT");
    f.disable("GL_LIGHTING");
    f.disable("GL_COLOR_MATERIAL");
    f.enable("GL_TEXTURE_2D");
    f.disable("GL_BLEND");
    f.enable("GL_DEPTH_TEST");
    colourWindow(f);
    pages(f);
    choices(f);
    notes(f);
    program(f);
    f.call("glPopAttrib");
    f.call("glMatrixMode", "GL_PROJECTION");
    f.call("glPopMatrix");
    f.call("glMatrixMode", "GL_MODELVIEW");
    // The next frame's update, which comes before its swap.
    f.call("glClearColor", 0.5, 0.5, 0.5, 0);
    return f.calls;
}

/// Whether two written calls are the same but for the last digits of their numbers: single
/// precision against double, and places that the layout gives with four decimals.
bool isTheSameCall(const std::string& a, const std::string& b)
{
    constexpr double tolerance = 2e-4;
    const auto words = [](std::string text) {
        for (char& c : text) {
            if (c == '(' || c == ')' || c == ',' || c == '{' || c == '}')
                c = ' ';
        }
        std::istringstream stream(text);
        std::vector<std::string> result;
        for (std::string word; stream >> word;)
            result.push_back(word);
        return result;
    };
    const std::vector<std::string> left = words(a);
    const std::vector<std::string> right = words(b);
    if (left.size() != right.size())
        return false;
    for (std::size_t i = 0; i < left.size(); i++) {
        char* leftEnd = nullptr;
        char* rightEnd = nullptr;
        const double x = std::strtod(left[i].c_str(), &leftEnd);
        const double y = std::strtod(right[i].c_str(), &rightEnd);
        const bool numbers = *leftEnd == '\0' && *rightEnd == '\0';
        if (numbers ? std::fabs(x - y) > tolerance : left[i] != right[i])
            return false;
    }
    return true;
}

TEST(AWholeFrameGLTest, IsMadeOfTheCallsThatItsLayoutAsksFor)
{
    const WorkingDirectory directory;
    const Trace trace(directory.path() + "/frames.trace");
    {
        Demonstration demo(directory, trace.tracer(), Trace::environment());
        ASSERT_TRUE(demo.opens());
        ASSERT_TRUE(demo.waitForFrames(40));
        demo.holdKey("Escape");
        ASSERT_EQ(demo.end().status, 0) << demo.errors();
    }

    // By the twentieth frame nothing fades any more, and the pointer has touched nothing.
    const std::vector<std::string> calls = trace.frames().at(20);

    const std::vector<std::string> expected = prescribedFrame();
    for (std::size_t i = 0; i < std::min(calls.size(), expected.size()); i++)
        ASSERT_TRUE(isTheSameCall(calls[i], expected[i]))
            << "call " << i << " is " << calls[i] << " and should be " << expected[i];
    EXPECT_EQ(calls.size(), expected.size());
}
} // namespace
} // namespace tamor::test
