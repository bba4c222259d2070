/// \file
/// Lets nothing be drawn and nothing be shown by the program that it is preloaded into. What it asks
/// and sets of OpenGL's state still goes to the driver; vertices do not come to it, since a driver
/// without anything to show them on may keep them for ever. For long runs of the rest.
#include <SDL.h>

#include <GL/gl.h>

// Each stands in front of the function of OpenGL or of SDL that has its name.
extern "C" {
void glBegin(GLenum /*mode*/) {}
void glEnd() {}
void glVertex2f(GLfloat /*x*/, GLfloat /*y*/) {}
void glTexCoord2f(GLfloat /*s*/, GLfloat /*t*/) {}
void glColor3f(GLfloat /*red*/, GLfloat /*green*/, GLfloat /*blue*/) {}
void glColor4f(GLfloat /*red*/, GLfloat /*green*/, GLfloat /*blue*/, GLfloat /*alpha*/) {}
void glCallLists(GLsizei /*count*/, GLenum /*type*/, const void* /*lists*/) {}
void glClear(GLbitfield /*buffers*/) {}
void SDL_GL_SwapBuffers() {}
}
