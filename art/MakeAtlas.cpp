/// \file
/// Draws a picture that is described in text and writes it as a TGA file, the kind that the engine
/// reads: true colour, 32 bits a pixel, run-length encoded, bottom row first. A file whose name ends
/// in ".svg" gets the shapes themselves, as a desktop's icon has them.
///
///     make-atlas art/gui.atlas data/gui.tga
///     make-atlas art/quill.atlas tamor-demo.svg
///
/// A description has one instruction a line; `#` starts a remark. Lengths in `size` and `cell` are
/// pixels from the bottom left; all others run from 0 to 100 across the cell, x right and y up.
///
/// | Instruction | Fields | Meaning |
/// |---|---|---|
/// | `size` | width, height | Of the picture, which starts as clear white. Comes first. |
/// | `cell` | x, y, side | The square that the following instructions draw in. |
/// | `colour` | red, green, blue, alpha | 0 to 1, for what follows. |
/// | `disc` | x, y, radius | A filled circle. |
/// | `ring` | x, y, radius, width | A circle's line, half of its width on either side. |
/// | `path` | x, y | Starts a path. |
/// | `line` | x, y | Goes straight on. |
/// | `bend` | control x, control y, x, y | Goes on along a quadratic curve. |
/// | `fill` | | Fills the closed path; crossing parts cancel out. |
/// | `stroke` | width | Draws the path as a line with round ends. |
///
/// The arithmetic is additions, products and square roots alone, in the order written, so that
/// every machine draws the same bytes.
#include "art/TGAWriter.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace
{
// Each pixel is sampled in this many rows and columns.
constexpr int samplesPerSide = 8;

// Straight pieces that stand for one curve: at the sizes drawn here each is under two pixels long.
constexpr int piecesPerBend = 48;

struct Point
{
    double x = 0;
    double y = 0;
};

struct Colour
{
    double red = 1;
    double green = 1;
    double blue = 1;
    double alpha = 1;
};

double distance(Point a, Point b)
{
    const double dx = a.x - b.x;
    const double dy = a.y - b.y;
    return std::sqrt(dx * dx + dy * dy);
}

double distanceToSegment(Point p, Point a, Point b)
{
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    const double lengthSquared = dx * dx + dy * dy;
    if (lengthSquared == 0)
        return distance(p, a);
    const double along = ((p.x - a.x) * dx + (p.y - a.y) * dy) / lengthSquared;
    const double t = std::clamp(along, 0.0, 1.0);
    return distance(p, {a.x + t * dx, a.y + t * dy});
}

bool isInside(Point p, const std::vector<Point>& outline)
{
    bool inside = false;
    for (std::size_t i = 0, j = outline.size() - 1; i < outline.size(); j = i++) {
        const Point a = outline[i];
        const Point b = outline[j];
        if ((a.y > p.y) != (b.y > p.y) && p.x < (b.x - a.x) * (p.y - a.y) / (b.y - a.y) + a.x)
            inside = !inside;
    }
    return inside;
}

bool isOnLine(Point p, const std::vector<Point>& line, double halfWidth)
{
    for (std::size_t i = 1; i < line.size(); i++) {
        if (distanceToSegment(p, line[i - 1], line[i]) <= halfWidth)
            return true;
    }
    return false;
}

/// The picture and the pen: one operation for each instruction of a description.
class Drawing
{
public:
    void resize(int newWidth, int newHeight)
    {
        width = newWidth;
        height = newHeight;
        // Clear, yet white: a filtered edge then mixes white with white, and no dark seam shows.
        pixels.assign(static_cast<std::size_t>(width) * static_cast<std::size_t>(height),
                      {1, 1, 1, 0});
    }

    void useCell(Point corner, double newSide)
    {
        origin = corner;
        side = newSide;
        if (!shapes.str().empty())
            shapes << "</g></svg>\n";
        shapes << "<svg x=\"" << corner.x << "\" y=\"" << height - corner.y - side << "\" width=\""
               << side << "\" height=\"" << side
               << "\" viewBox=\"0 0 100 100\"><g transform=\"matrix(1 0 0 -1 0 100)\">\n";
    }

    void useColour(Colour newColour) { colour = newColour; }

    void disc(Point centre, double radius)
    {
        paint(boxAround({centre}, radius), [&](Point p) { return distance(p, centre) <= radius; });
        shapes << "<circle cx=\"" << centre.x << "\" cy=\"" << centre.y << "\" r=\"" << radius
               << "\"" << paintOf("fill") << "/>\n";
    }

    void ring(Point centre, double radius, double lineWidth)
    {
        paint(boxAround({centre}, radius + lineWidth / 2),
              [&](Point p) { return std::fabs(distance(p, centre) - radius) <= lineWidth / 2; });
        shapes << "<circle cx=\"" << centre.x << "\" cy=\"" << centre.y << "\" r=\"" << radius
               << "\" fill=\"none\"" << lineOf(lineWidth) << "/>\n";
    }

    void startPath(Point point)
    {
        path = {point};
        pathText = "M" + textOf(point);
    }

    void lineTo(Point point)
    {
        path.push_back(point);
        pathText += " L" + textOf(point);
    }

    void bendTo(Point control, Point end)
    {
        const Point start = path.empty() ? end : path.back();
        pathText += " Q" + textOf(control) + " " + textOf(end);
        for (int i = 1; i <= piecesPerBend; i++) {
            const double t = static_cast<double>(i) / piecesPerBend;
            const double s = 1 - t;
            path.push_back({s * s * start.x + 2 * s * t * control.x + t * t * end.x,
                            s * s * start.y + 2 * s * t * control.y + t * t * end.y});
        }
    }

    void fill()
    {
        if (!path.empty())
            paint(boxAround(path, 0), [&](Point p) { return isInside(p, path); });
        shapes << "<path d=\"" << pathText << " Z\" fill-rule=\"evenodd\"" << paintOf("fill")
               << "/>\n";
    }

    void stroke(double lineWidth)
    {
        paint(boxAround(path, lineWidth / 2),
              [&](Point p) { return isOnLine(p, path, lineWidth / 2); });
        shapes << "<path d=\"" << pathText << "\" fill=\"none\"" << lineOf(lineWidth) << "/>\n";
    }

    bool write(const std::string& file)
    {
        if (file.ends_with(".svg"))
            return writeShapes(file);
        std::vector<std::uint8_t> bytes;
        for (int y = 0; y < height; y++)
            for (int x = 0; x < width; x++)
                for (const char byte : bytesAt(x, y))
                    bytes.push_back(static_cast<std::uint8_t>(byte));
        return tamor::tools::writeTGA(file, width, height, 4, bytes);
    }

private:
    static std::string textOf(Point point)
    {
        std::ostringstream text;
        text << point.x << ' ' << point.y;
        return text.str();
    }

    /// The colour as what `attribute`, "fill" or "stroke", has.
    std::string paintOf(const std::string& attribute) const
    {
        std::ostringstream text;
        text << ' ' << attribute << "=\"rgb(" << std::lround(colour.red * 255) << ','
             << std::lround(colour.green * 255) << ',' << std::lround(colour.blue * 255) << ")\" "
             << attribute << "-opacity=\"" << colour.alpha << '"';
        return text.str();
    }

    std::string lineOf(double lineWidth) const
    {
        std::ostringstream text;
        text << paintOf("stroke") << " stroke-width=\"" << lineWidth
             << R"(" stroke-linecap="round" stroke-linejoin="round")";
        return text.str();
    }

    bool writeShapes(const std::string& file) const
    {
        std::ofstream out(file);
        out << "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" << width << "\" height=\""
            << height << "\">\n"
            << shapes.str();
        if (!shapes.str().empty())
            out << "</g></svg>\n";
        out << "</svg>\n";
        return out.good();
    }

    /// Pixels, from the first to the last that a shape can touch.
    struct Box
    {
        int left = 0;
        int bottom = 0;
        int right = -1;
        int top = -1;
    };

    /// The pixels of the cell within `reach` of the points.
    Box boxAround(const std::vector<Point>& points, double reach) const
    {
        if (points.empty() || pixels.empty())
            return {};
        const auto byX = [](Point a, Point b) { return a.x < b.x; };
        const auto byY = [](Point a, Point b) { return a.y < b.y; };
        const auto [left, right] = std::minmax_element(points.begin(), points.end(), byX);
        const auto [bottom, top] = std::minmax_element(points.begin(), points.end(), byY);
        const auto pixel = [&](double cellOrigin, double along, int limit) {
            const double place =
                std::floor(cellOrigin + std::clamp(along, 0.0, 100.0) * side / 100);
            return std::clamp(static_cast<int>(place), 0, limit - 1);
        };
        return {pixel(origin.x, left->x - reach, width), pixel(origin.y, bottom->y - reach, height),
                pixel(origin.x, right->x + reach, width), pixel(origin.y, top->y + reach, height)};
    }

    /// Lays the colour over each pixel of `box`, as far as `covers` says that its samples are
    /// covered.
    template <typename Covers>
    void paint(Box box, const Covers& covers)
    {
        for (int y = box.bottom; y <= box.top; y++) {
            for (int x = box.left; x <= box.right; x++) {
                const int covered = countCovered(x, y, covers);
                if (covered > 0)
                    blend(pixelAt(x, y),
                          colour.alpha * covered / (samplesPerSide * samplesPerSide));
            }
        }
    }

    template <typename Covers>
    int countCovered(int x, int y, const Covers& covers) const
    {
        int covered = 0;
        for (int row = 0; row < samplesPerSide; row++) {
            for (int column = 0; column < samplesPerSide; column++) {
                const double sampleX = x + (column + 0.5) / samplesPerSide;
                const double sampleY = y + (row + 0.5) / samplesPerSide;
                const Point p = {(sampleX - origin.x) * 100 / side,
                                 (sampleY - origin.y) * 100 / side};
                covered += covers(p) ? 1 : 0;
            }
        }
        return covered;
    }

    void blend(Colour& under, double alpha) const
    {
        const double total = alpha + under.alpha * (1 - alpha);
        const auto mix = [&](double above, double below) {
            return (above * alpha + below * under.alpha * (1 - alpha)) / total;
        };
        under = {mix(colour.red, under.red), mix(colour.green, under.green),
                 mix(colour.blue, under.blue), total};
    }

    Colour& pixelAt(int x, int y)
    {
        return pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                      static_cast<std::size_t>(x)];
    }

    /// Pixel `x` of row `y` as the file holds it: blue, green, red, alpha.
    std::string bytesAt(int x, int y)
    {
        const Colour& pixel = pixelAt(x, y);
        const auto byte = [](double channel) {
            return static_cast<char>(std::lround(channel * 255));
        };
        return {byte(pixel.blue), byte(pixel.green), byte(pixel.red), byte(pixel.alpha)};
    }

    int width = 0;
    int height = 0;
    std::vector<Colour> pixels;
    Point origin;
    double side = 100;
    Colour colour;
    std::vector<Point> path;
    std::string pathText;      // the path as SVG has it
    std::ostringstream shapes; // all that was drawn, as elements of SVG
};

struct Instruction
{
    std::size_t fields;
    void (*carryOut)(Drawing&, const double*);
};

const std::map<std::string, Instruction> instructions = {
    {"size",
     {2, [](Drawing& d,
            const double* f) { d.resize(static_cast<int>(f[0]), static_cast<int>(f[1])); }}},
    {"cell",
     {3,
      [](Drawing& d, const double* f) {
          d.useCell({f[0], f[1]}, f[2]);
      }}},
    {"colour",
     {4,
      [](Drawing& d, const double* f) {
          d.useColour({f[0], f[1], f[2], f[3]});
      }}},
    {"disc",
     {3,
      [](Drawing& d, const double* f) {
          d.disc({f[0], f[1]}, f[2]);
      }}},
    {"ring",
     {4,
      [](Drawing& d, const double* f) {
          d.ring({f[0], f[1]}, f[2], f[3]);
      }}},
    {"path",
     {2,
      [](Drawing& d, const double* f) {
          d.startPath({f[0], f[1]});
      }}},
    {"line",
     {2,
      [](Drawing& d, const double* f) {
          d.lineTo({f[0], f[1]});
      }}},
    {"bend",
     {4,
      [](Drawing& d, const double* f) {
          d.bendTo({f[0], f[1]}, {f[2], f[3]});
      }}},
    {"fill", {0, [](Drawing& d, const double*) { d.fill(); }}},
    {"stroke", {1, [](Drawing& d, const double* f) { d.stroke(f[0]); }}},
};

/// Carries out one line. Returns false for a word that is none or a wrong number of fields.
bool carryOut(Drawing& drawing, const std::string& line)
{
    std::istringstream words(line.substr(0, line.find('#')));
    std::string word;
    if (!(words >> word))
        return true;
    const auto found = instructions.find(word);
    if (found == instructions.end())
        return false;
    std::vector<double> fields;
    for (double field = 0; words >> field;)
        fields.push_back(field);
    if (!words.eof() || fields.size() != found->second.fields)
        return false;
    found->second.carryOut(drawing, fields.data());
    return true;
}
} // namespace

int main(int argumentCount, char** arguments)
{
    if (argumentCount != 3) {
        std::cerr << "usage: make-atlas DESCRIPTION PICTURE.tga|PICTURE.svg\n";
        return 2;
    }
    std::ifstream description(arguments[1]);
    if (!description) {
        std::cerr << "can't read " << arguments[1] << '\n';
        return 1;
    }
    Drawing drawing;
    std::string line;
    for (int number = 1; std::getline(description, line); number++) {
        if (!carryOut(drawing, line)) {
            std::cerr << arguments[1] << ":" << number << ": can't carry out '" << line << "'\n";
            return 1;
        }
    }
    if (!drawing.write(arguments[2])) {
        std::cerr << "can't write " << arguments[2] << '\n';
        return 1;
    }
    return 0;
}
