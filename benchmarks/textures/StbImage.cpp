// The peer's code, in a source of its own since its warnings are not ours.
#define STB_IMAGE_IMPLEMENTATION
#include <stb_image.h>
