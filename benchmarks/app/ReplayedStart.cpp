/// \file
/// The least program that shows what the demonstration shows first: a window, and the OpenGL calls of
/// the demonstration's start, from a list. `tamor-replayed-start FILE` with what
/// tamor-start-recorder wrote.
#include "benchmarks/app/FirstWindow.h"
#include "benchmarks/support/CallList.h"

int main(int argumentCount, char** arguments)
{
    if (argumentCount != 2 || !tamor::bench::openFirstWindow())
        return 1;
    tamor::bench::CallList(arguments[1]).play();
    return 1; // who preloads FirstFrame.cpp has ended this program in the last call
}
