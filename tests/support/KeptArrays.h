/// \file
/// The arrays that a call leaves behind on purpose, for fuzz targets, which call without end.
#pragma once

namespace tamor::test
{
/// Frees at its end what array new has given since its beginning and array delete has not taken
/// back. This program's array new notes it. One at a time.
class KeptArrays
{
public:
    KeptArrays();
    ~KeptArrays();
    KeptArrays(const KeptArrays&) = delete;
    KeptArrays& operator=(const KeptArrays&) = delete;
};
} // namespace tamor::test
