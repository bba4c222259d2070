// A program whose one work takes a known number of instructions, as many as getting ready for it.

#include <cstdio>

namespace
{
inline void takeTenThousandInstructions()
{
    asm volatile(".rept 10000\nnop\n.endr");
}
} // namespace

extern "C" [[gnu::noinline]] void countedWork()
{
    takeTenThousandInstructions();
}

int main(int count, char** /*words*/)
{
    takeTenThousandInstructions();
    if (count < 2)
        std::puts("nops");
    else
        countedWork();
}
