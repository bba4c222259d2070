/// \file
/// A real window with an OpenGL context, for tests that draw.
#pragma once

#include "tests/support/Picture.h"

#include <gtest/gtest.h>

namespace tamor::test
{
/// The base of suites that draw: each test has a window of 800 by 600 pixels with a fresh context,
/// on a display that nobody sees. Name suites so that they end in GLTest.
class WindowTest : public testing::Test
{
protected:
    static constexpr int windowWidth = 800;
    static constexpr int windowHeight = 600;

    /// Opens the window. A suite with a set-up of its own calls this first.
    void SetUp() override;

    /// Closes the window.
    void TearDown() override;

    /// All of the back buffer.
    static Picture picture() { return pictureOfWindow(0, 0, windowWidth, windowHeight); }
};

/// Opens and closes the window that `WindowTest` gives a test, for programs that are none.
void openTestWindow(int width, int height);
void closeTestWindow();
} // namespace tamor::test
