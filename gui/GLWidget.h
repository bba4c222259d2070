/// \file
/// What every widget is and does, and the GUI as a whole.
///
/// The folder gui/ holds the widget contract, the readers of layouts, themes and configurations,
/// and the road of input, time and drawing through the tree of widgets. What a button or a slider
/// is, it leaves to widgets/, of which it knows nothing but the table in `gui/WidgetKinds.h`.
///
/// The operations of `GLWidget` stand in several sources: what every widget does in GLWidget.cpp,
/// the road of input, time and drawing in GLWidgetRouting.cpp, `loadLayout` in GLWidgetLayout.cpp,
/// `readConfig` in GLWidgetConfig.cpp. The message box is made of widgets, so `messageBox`,
/// `takeMessageResult` and what closes a box are in widgets/GLWidgetMessageBox.cpp.
#pragma once

#include "TamorExport.h"
#include "gui/Theme.h"
#include "maths/Vector.h"

#include <array>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace tamor
{
class Font;
struct LineFormat;

/// The buttons of a message box, a bit each, and its answers: see `GLWidget::messageBox`.
enum MessageButton : std::int32_t
{
    MESSAGE_OK = 1,     ///< "OK"
    MESSAGE_CANCEL = 2, ///< "Cancel"
    MESSAGE_YES = 4,    ///< "Yes"
    MESSAGE_NO = 8,     ///< "No"
};

/// A widget: a node of the tree that draws itself and takes pointer, buttons and keys. The class
/// itself is also the GUI: there is no manager, and what concerns all widgets is static here.
///
/// Lengths are in GUI units: the window's height is 2, its centre the origin, y grows upward. A
/// position is a widget's bottom left corner, in the window for a widget without a parent, else in
/// the inner coordinates of its parent. A rectangle is a `Vector` of x1, y1, x2, y2. Times are in
/// milliseconds. Unless something else is said, a boolean result is true.
///
/// Widgets are created with `new` and belong to whoever created them. Those that a layout builds
/// live until the process ends. Deleting a widget takes it out of nothing and deletes no child:
/// whoever deletes it sees to `widgets`, `topLevel` and its parent's children.
///
/// The text of a widget is a format: a "%" in it starts a conversion, which reads a zero.
class TAMOR_EXPORT GLWidget
{
public:
    /// Registers the widget in `widgets`; a widget that had the name before only loses its entry.
    /// Attaches it to nothing. Besides, building any widget sets the font's scale to the theme's
    /// `fontSize`, clears `messageResult` and fetches `viewport`, so an OpenGL context must be
    /// there.
    /// \param newName      the key in `widgets`
    /// \param newParent    null for a top-level widget
    /// \param newPosition  in the parent's inner coordinates
    /// \param newTheme     null for the theme "default", which is registered with the built-in values
    ///                     if no layout has loaded it
    GLWidget(const std::string& newName, GLWidget* newParent, Vector newPosition, Theme* newTheme);
    GLWidget(const GLWidget&) = delete;
    GLWidget& operator=(const GLWidget&) = delete;

    // The virtual operations stand in the settled order of their slots: do not sort them.

    /// Takes the widget out of nothing, but while an exception is thrown: one whose constructor
    /// fails loses its entry in `widgets`.
    virtual ~GLWidget();

    /// Appends to `lines`.
    virtual bool addText(const std::string& line);

    /// Moves `child` along the chosen axes to the middle of this widget, less the inner margins
    /// and, upward, two font heights for a title. It is a move, so it centres a child whose
    /// coordinate was 0.
    virtual bool centreChild(GLWidget* child, bool alongX, bool alongY);

    /// Takes the mouse buttons as they are now. Edges are each widget's own business.
    /// \return whether the press was for this widget; it matters for exclusive widgets only
    virtual bool onMouseButtons(bool left, bool middle, bool right) = 0;

    /// Takes the pointer's place in the window, in pixels from the top left, and passes it on to
    /// `onPointer` in GUI units. For widgets without a parent.
    virtual bool onMouseMove(float pixelX, float pixelY);

    /// Takes the 512 bytes of `KeyboardState::pressed`.
    virtual bool onKeys(const std::uint8_t* pressed);

    /// Takes the pointer's place in the coordinates of `position`, and works out `hover`.
    virtual bool onPointer(float x, float y);

    /// Lets the time pass for the animation of this widget and its children.
    virtual bool update(std::int32_t milliseconds);

    /// Draws the widget, with the modelview matrix at the origin of `position`. Leaves the matrix
    /// stack as it was, and the enable bits and the blend function as they come.
    virtual bool render() = 0;

    /// \return the new position
    virtual Vector move(Vector delta);

    /// Whether the widget is one of a group: of the exclusive children of a parent one is chosen.
    virtual bool isExclusive() const;

    /// \return the name of the class
    virtual std::string typeName() const;

    /// Appends to the children, then makes the first exclusive child the chosen one of its group.
    /// Every child is asked, at each addition.
    virtual bool addChild(GLWidget* child);

    /// \return the widget's rectangle, in the coordinates of `position`
    virtual Vector getRect() const;

    /// \return the rectangle that bounds a dragged child; `Vector()` where nothing is bounded
    virtual Vector getClientRect() const;

    /// Grows the children, then this widget until it has room for them. Nothing ever shrinks.
    virtual bool fitChildren();

    /// Tells the widget that another of its group, `chosen`, was chosen.
    virtual bool deselect(GLWidget* chosen) = 0;

    /// Creates or renames a tab. Does nothing in a widget without tabs.
    virtual bool addTab(std::int32_t index, const std::string& title);

    /// Adds `child` to a tab. A widget without tabs drops the child.
    virtual bool addToTab(std::int32_t index, GLWidget* child);

    /// \return whether the pointer is strictly inside the widget
    virtual bool hitTest() const;

    /// \return whether the widget was clicked since this was last asked
    bool wasClicked();
    /// \return whether it is held down, ticked or chosen, as its kind has it
    bool isActive() const { return active; }
    /// \return the index of the chosen line of a combo box; 0 in any other widget
    std::uint32_t getSelection() const { return selection; }
    /// \return what a slider stands at, 0 to 1; 0 in any other widget
    float getValue() const { return value; }
    /// Changes the text, and leaves the size as it was measured for the old one.
    bool setCaption(const std::string& caption);
    /// Makes the widget active with no animation.
    void setActive();
    /// Draws the widget as if the pointer were on it.
    void setLit();
    /// \return whether the pointer was over it when it last moved
    bool isHovered() const { return hover; }
    /// \return 0; -1 for a widget that its parent is to draw above its siblings
    float getDepth() const { return depth; }

    /// \return the widget last built under `name`, or null, and then the name has a null entry in
    ///         `widgets`
    static GLWidget* find(const std::string& widgetName);

    /// Builds the widgets of a layout file; docs/layout-files.md tells how one is written.
    ///
    /// What is there already stays. Never returns if the file cannot be opened or if a field of it
    /// is not what it must be: the caller makes sure of that.
    static bool loadLayout(const std::string& file);

    /// Reads the font, the icons and the speed of the animation from a configuration file;
    /// docs/themes-and-configuration.md tells how one is written. Prints
    ///     Loading <font file>
    ///     Loaded.
    /// and between them what the font has to say. A field that cannot be read keeps what it held,
    /// and so does every field behind it.
    static bool readConfig(const std::string& file);

    /// Tells all widgets where the pointer is: x and y from the window's top left.
    static bool mouseMoved(Vector pixels);
    /// Tells all widgets which buttons are down. Call `mouseMoved` first.
    static bool mouseButtons(bool left, bool middle, bool right);
    /// Tells all widgets which keys count as typed: the 512 bytes of `KeyboardState::pressed`.
    static bool keysChanged(const std::uint8_t* pressed);
    /// Lets the time pass, then looks whether an open message box was answered.
    static bool updateAll(std::int32_t milliseconds);
    /// Draws all widgets over what is there, later ones above earlier ones. The modelview matrix
    /// must be the identity.
    static bool renderAll();
    /// Does nothing: widgets and themes live until the process ends.
    static bool release();

    /// Opens a message box in the middle of the window, or nothing if one is open. The GUI goes on:
    /// ask for the answer with `takeMessageResult`.
    ///
    /// Each call first reads "messagebox.theme" as a new theme "messagebox" and prints what
    /// `Theme::read` prints, also if a box is open; the theme before stays with its widgets.
    ///
    /// An answer destroys the window and whatever widgets hold the names "__msgbox_ok", "_cancel",
    /// "_yes" and "_no", and lets nothing of the GUI point to them any more. The label and the
    /// frame stay registered until the next box.
    /// \param message  may hold line ends
    /// \param flags    the buttons, of `MessageButton`: 1 OK; 3 OK and Cancel; 12 Yes and No; 14 Yes,
    ///                 No and Cancel. Any other value makes a box without buttons, which never
    ///                 closes.
    static bool messageBox(const std::string& message, std::int32_t flags);

    /// \return the answer, once: a `MessageButton`, 0 while there is none
    static std::int32_t takeMessageResult();

    /// The theme registered under the name of its file, which is read on the first request.
    static Theme* themeOfFile(const std::string& file);

    /// Registers a new, unset theme under `key`, in place of the one that was there. That one is
    /// not deleted: widgets may use it.
    static Theme* createTheme(const std::string& key);

    // The state of the GUI as a whole. No widget and no theme is deleted at exit.

    static std::map<std::string, GLWidget*> widgets; ///< by name; an entry may be null
    static std::map<std::string, Theme*> themes;     ///< by key; an entry may be null
    static Font font;                                ///< of all text
    static std::vector<GLWidget*> topLevel;          ///< without a parent, in order of creation
    static std::int32_t messageResult;               ///< see `takeMessageResult`
    static std::array<std::int32_t, 4> viewport;     ///< x, y, width, height in pixels
    static float glowRate;                           ///< change of `glow` and `fade` a millisecond
    /// \name Rectangles in the themes' textures: uMin, vMin, uMax, vMax
    /// \{
    static Vector optionFrame; ///< the ring of an option
    static Vector optionMark;  ///< the dot in it
    static Vector checkFrame;  ///< the square of a check box
    static Vector checkMark;   ///< the tick in it
    static Vector sliderKnob;  ///< as on a horizontal slider
    /// \}
    static bool drawing; ///< while `renderAll` draws; nothing reads it

protected:
    // What the widget classes share.

    /// A `glow` or a `fade` at or below this has run down.
    static constexpr float animationEnd = 0.0001F;

    /// \return the factor of the theme's colours: from `dimBrightness` to `litBrightness` as `glow`
    ///         goes from 0 to 1
    float brightness() const
    {
        return theme->litBrightness * glow + (1.0F - glow) * theme->dimBrightness;
    }

    /// Moves OpenGL's origin from that of `position` to the middle of the widget.
    void translateToCentre() const;

    /// Sets OpenGL's colour to red, green and blue times `factor`.
    static void setColour(const Vector& colour, float factor = 1.0F);
    /// As above, with an alpha that `factor` leaves alone.
    static void setColour(const Vector& colour, float factor, float alpha);

    /// Draws one pass of the plate, a rectangle around the origin of the widget's size without its
    /// top left and bottom right corners, in OpenGL's polygon mode and colour.
    /// \param cut  length of the cut along both axes
    void drawPlate(float cut) const;
    /// As above, with texture coordinates.
    /// \param textureCut  the cut in texture coordinates, where the plate is 1 by 1
    void drawPlate(float cut, float textureCut) const;

    /// Draws the part `rectangle` (uMin, vMin, uMax, vMax) of the bound texture as a square with
    /// the bottom left corner (x, y).
    static void drawIcon(const Vector& rectangle, float x, float y, float side);

    /// Moves OpenGL's origin from the middle of the widget to where its text starts.
    void translateToText() const;

    /// Draws GUI text at OpenGL's origin, in OpenGL's colour.
    static void drawText(const std::string& newText);
    /// \return the width of the widest line of GUI text
    static float measureText(const std::string& newText);

    /// The space that a container keeps free on each side of its content.
    float innerMargin() const { return 3.0F * theme->margin; }
    /// The same of both sides together.
    float innerMargins() const { return 6.0F * theme->margin; }
    /// The rectangle in which a container with a title lets child windows be dragged: its own, less
    /// a hundredth of its width on every side, and at the top less a line and one and a half font
    /// heights.
    Vector clientRectBelowTitle() const;

    /// Keeps the buttons as those of the last `onMouseButtons`.
    void rememberButtons(bool left, bool middle, bool right)
    {
        prevLeft = left;
        prevMiddle = middle;
        prevRight = right;
    }
    /// Tells every child that `chosen` was chosen.
    void deselectChildren(GLWidget* chosen);

    /// Takes the widget's name out of `widgets`, if it still is the widget's: its entry becomes
    /// null. For whoever deletes a widget.
    static void unregister(const GLWidget& widget);
    /// Takes the part of a widget out of `widgets` and deletes it. A part that a widget was built
    /// below stays in memory, since it is that widget's `parent` for good.
    static void deletePart(GLWidget* part);

    /// Gives the buttons to the children, front to back. If an exclusive child answers true, the
    /// last that does is chosen and every other child deselected.
    void passButtonsToChildren(bool left, bool middle, bool right);
    /// Gives the pointer to the children, in their coordinates.
    void passPointerToChildren(float x, float y);
    /// \return whether the pointer is over a child
    bool isChildHovered() const;
    /// Draws the children at OpenGL's origin, those with a depth below -0.5 last.
    void renderChildren() const;

    // The fields stand in a settled order: do not sort them.

    GLWidget* parent;               ///< null for a top-level widget; not owned
    std::vector<std::string> lines; ///< given through `addText`
    std::uint32_t selection = 0;    ///< index into `lines`
    std::int32_t elapsed = 0;       ///< sum of the milliseconds of `update`; nothing reads it
    float depth = 0.0F;             ///< see `getDepth`
    float glow = 0.0F;              ///< hover animation, 0 idle to 1 fully lit
    float fade = 0.0F;              ///< 1 at a change of state, runs down to 0
    float value = 0.0F;             ///< of a slider
    bool prevLeft = false;          ///< the buttons of the last `onMouseButtons`
    bool prevMiddle = false;        ///< as `prevLeft`
    bool prevRight = false;         ///< as `prevLeft`
    Vector position;       ///< of the bottom left corner, in the parent's inner coordinates
    Vector dimensions;     ///< width and height
    Vector mouse;          ///< the pointer's last place, in the coordinates of `position`
    bool hover = false;    ///< the pointer is over the widget
    bool active = false;   ///< held down, or ticked
    bool clicked = false;  ///< see `wasClicked`
    bool isParent = false; ///< a widget was built below it; see `deletePart`
    std::string text;      ///< caption, title or content
    Theme* theme;          ///< never null; not owned
    std::string name;      ///< the key in `widgets`
    std::vector<GLWidget*> children; ///< in order of `addChild`; not owned

private:
    class LayoutReader;
    friend std::vector<LineFormat> layoutDirectives();

    /// Closes the message box if one of its buttons was clicked, and keeps the answer.
    static void pollMessageBox();
    /// Whoever is registered or at the top level, and whoever hangs below one that is.
    static std::set<GLWidget*> allWidgets();
    /// Lets none of `all`, nor the registry, nor the top level point to `dead`.
    static void letGoOf(const std::vector<GLWidget*>& dead, const std::set<GLWidget*>& all);
};
} // namespace tamor
