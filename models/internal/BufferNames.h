/// \file
/// Which model has the buffers of the process.
#pragma once

namespace tamor
{
/// Set by the first model that makes itself names of buffers, and never cleared.
///
/// Meant: one flag for the whole process, not one a model, so the first model to come has the only
/// buffers; `ModelBuffersGLTest.GivesBufferNamesToTheFirstModelOnly` holds it. Tests clear it with
/// the context that the names belonged to.
extern bool bufferNamesMade;
} // namespace tamor
