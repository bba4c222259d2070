/// \file
/// Where things are in the demonstration's window, in pixels from its top left corner. They follow
/// data/my.gui and change with it.
#pragma once

#include "tests/end_to_end/Demonstration.h"

namespace tamor::test
{
/// The clear colour shows here in every state, and no widget is near.
constexpr Place freePlace{400, 395};

/// Knobs at their first value. The upright lines are 308 pixels long, the level ones 292.
constexpr Place redKnob{36, 215};
constexpr Place greenKnob{70, 215};
constexpr Place blueKnob{104, 215};
constexpr Place firstKnob{307, 96};
constexpr Place secondKnob{307, 171};

constexpr Place redButton{70, 402};
constexpr Place greenButton{70, 426};
constexpr Place blueButton{70, 450};
constexpr Place quillButton{70, 530};
constexpr Place exitButton{754, 572};

/// Buttons of the message boxes, as the three sets of them stand.
constexpr Place onlyOk{400, 341};
constexpr Place okOfTwo{345, 341};
constexpr Place cancelOfTwo{421, 341};
constexpr Place yesOfTwo{364, 341};
constexpr Place noOfTwo{421, 341};
constexpr Place yesOfThree{318, 341};
constexpr Place noOfThree{375, 341};
constexpr Place cancelOfThree{451, 341};

constexpr Place slidersTab{182, 21};
constexpr Place optionsTab{257, 21};
constexpr Place checksTab{335, 21};

/// The middle of an option's and of a check's icon, by row from the top.
constexpr Place iconOfRow(int row)
{
    return {167, 72 + 38 * row};
}

/// The list's box, and a row of the open list, from the top.
constexpr Place listBox{600, 91};
constexpr Place listRow(int row)
{
    return {580, 116 + 24 * row};
}

/// The page to write on, whose first row of text stands at its top.
constexpr Place notebook{307, 540};

/// The strips by which two of the windows are dragged, and places that only their plates cover.
constexpr Place choicesStrip{700, 20};
constexpr Place choicesPlate{740, 180};

/// The status line and the frame rate: the corners of their texts' surroundings, and the sizes.
constexpr Place statusCorner{495, 452};
constexpr int statusWidth = 285;
constexpr int statusHeight = 26;
constexpr Place rateCorner{495, 481};
constexpr int rateWidth = 285;
constexpr int rateHeight = 26;
} // namespace tamor::test
