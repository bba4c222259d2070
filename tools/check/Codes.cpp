#include "tools/check/Finding.h"

#include <algorithm>
#include <cassert>

namespace tamor::check
{
namespace
{
using enum Severity;

// Each has a section of its name in docs/checker.md.
constexpr Code allCodes[] = {
    {"layout-directive", error, "a line that begins with no directive does nothing"},
    {"layout-kind", error, "an unknown kind of widget makes nothing"},
    {"layout-parent", error, "a line names a widget that is not made above it"},
    {"layout-field", error, "a word in a number's place: the program waits for ever"},
    {"layout-text", error, "a text is missing: the program waits for ever"},
    {"layout-short", error, "the file ends in the middle of a line"},
    {"layout-line-taken", error, "a field is missing, and the next line is lost for it"},
    {"layout-line-long", error, "a line is too long to be skipped"},
    {"layout-tab-window", error, "a tab for no tab window, or a tab window's child for no tab"},
    {"layout-tab", error, "a tab that no NTAB line has made"},
    {"layout-tab-many", error, "a tab's number is far too large"},
    {"layout-tab-emptied", error, "a tab is made again and loses its widgets"},
    {"layout-no-tab", error, "a tab window without tabs"},
    {"layout-behind-solid", error, "a container behind SOLID is not seen"},
    {"layout-solid-twice", error, "SOLID stands twice"},
    {"layout-deep", error, "widgets stand in each other too deeply"},
    {"layout-line-break", warning, "a line goes on in the next one"},
    {"layout-number-tail", warning, "letters stick to a number"},
    {"layout-text-long", warning, "a text is cut behind 511 characters"},
    {"layout-text-drawn", warning, "a text is drawn to its 255th character"},
    {"layout-percent", warning, "a per cent sign in a text begins a conversion"},
    {"layout-comment-in-text", warning, "a remark behind a text is part of it"},
    {"layout-caption", warning, "words behind a button's caption are dropped"},
    {"layout-not-ascii", warning, "a letter that the font does not have"},
    {"layout-carriage-return", warning, "lines end in carriage returns"},
    {"layout-name", warning, "a name that means something else"},
    {"layout-name-twice", warning, "two widgets of one name"},
    {"layout-tab-untitled", warning, "a tab that no NTAB line names"},
    {"layout-late", warning, "a line behind SOLID that comes too late for the sizes"},
    {"layout-centre-early", warning, "a widget is centred before it has a size"},
    {"layout-text-nowhere", warning, "a TEXT line that nobody shows"},
    {"layout-no-config", warning, "words without a font"},
    {"layout-slider", warning, "a slider that cannot be moved"},
    {"layout-size", warning, "a text box without a size"},
    {"layout-option-alone", warning, "an option without a parent is never unticked"},
    {"layout-option-beside-text", warning, "a text box unticks the options beside it"},
    {"layout-leaf-parent", warning, "a widget is put into one that is no container"},
    {"theme-field", error, "a field that cannot be read, and all behind it"},
    {"theme-short", error, "the file ends too early"},
    {"theme-line-taken", error, "a line has too few fields"},
    {"theme-line-long", error, "a line is too long to be skipped"},
    {"theme-number-tail", warning, "letters stick to a number"},
    {"theme-number-dropped", warning, "a line has too many numbers"},
    {"theme-range", warning, "a number outside its range"},
    {"theme-texture-long", warning, "a path is cut behind 511 characters"},
    {"config-field", error, "a field that cannot be read, and all behind it"},
    {"config-short", error, "the file ends too early"},
    {"config-line-taken", error, "a line has too few fields"},
    {"config-line-long", error, "a line is too long to be skipped"},
    {"config-number-tail", warning, "letters stick to a number"},
    {"config-number-dropped", warning, "a line has too many numbers"},
    {"config-range", warning, "a number outside its range"},
    {"config-font-blank", warning, "a font's path has a blank"},
    {"theme-missing", error, "a theme that is not there"},
    {"theme-default", warning, "a theme that the engine looks for is not there"},
    {"theme-font-size", warning, "themes of one layout with different font sizes"},
    {"config-missing", error, "a configuration that is not there"},
    {"font-missing", error, "a font that is not there"},
    {"texture-missing", warning, "a picture that is not there"},
    {"texture-format", warning, "a picture whose name tells no format that is read"},
    {"glsl-alone", warning, "a shader without its partner"},
    {"demo-name", warning, "a widget that the demonstration asks for is not made"},
    {"ms3d-field", error, "a line that is not what the reader expects"},
    {"ms3d-short", error, "the file ends too early: its last line comes again"},
    {"ms3d-endless", error, "the file ends too early in a remark: the program waits for ever"},
    {"ms3d-long-line", error, "a line is cut into pieces"},
    {"ms3d-last-line", error, "a last line without a line end loses its last letter"},
    {"ms3d-name-blank", error, "a blank in a mesh's name hides its material"},
    {"ms3d-remark", warning, "a remark hides the numbers in front of it"},
    {"ms3d-count", warning, "a count below 0"},
    {"ms3d-index", warning, "an index of what the file does not hold"},
    {"ms3d-shared-normal", warning, "a vertex with two normals keeps the last"},
    {"ms3d-texture-blank", warning, "a blank cuts a texture's path off"},
    {"ms3d-parent", warning, "a bone's parent is not above it"},
    {"ms3d-rest-angles", warning, "rest angles turn vertices even at rest"},
    {"ms3d-frames", warning, "keys without frames"},
    {"ms3d-rest", warning, "lines behind the last bone"},
    {"ms3d-carriage-return", warning, "lines end in carriage returns"},
    {"tga-type", error, "not compressed true colour: not read"},
    {"tga-id", error, "bytes in front of the pixels are read as pixels"},
    {"tga-depth", error, "neither 24 nor 32 bits a pixel"},
    {"tga-short", error, "the file ends too early"},
    {"tga-overrun", warning, "more pixels than the picture has"},
    {"tga-origin", warning, "a picture that is shown upside down or mirrored"},
    {"tga-sides", warning, "sides that are no powers of two"},
    {"png-signature", error, "not a PNG: not read"},
    {"png-form", error, "not RGBA without interlacing: not read"},
    {"png-depth", error, "not 8 bits a channel"},
    {"png-header", error, "a picture without a header"},
    {"png-method", error, "data that is not compressed as it is read"},
    {"png-unread", error, "an ordinary PNG, which the reader cannot decompress"},
    {"png-filter", error, "a row's filter that is not undone"},
    {"png-short", error, "the file or its data ends too early"},
    {"png-sum", warning, "a wrong check sum"},
    {"png-odd", warning, "a file of odd size loses its last byte"},
    {"png-sides", warning, "sides that are no powers of two"},
};
} // namespace

std::span<const Code> codes()
{
    return allCodes;
}

const Code& codeNamed(std::string_view name)
{
    const auto hasName = [=](const Code& code) { return code.name == name; };
    const auto found = std::find_if(std::begin(allCodes), std::end(allCodes), hasName);
    assert(found != std::end(allCodes));
    return *found;
}
} // namespace tamor::check
