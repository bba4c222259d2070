// A program whose one work takes a known number of instructions, as many as getting ready for it.

#include <cstdio>

namespace
{
inline void takeAThousandInstructions()
{
    asm volatile(".rept 1000\nnop\n.endr");
}
} // namespace

extern "C" [[gnu::noinline]] void countedWork()
{
    takeAThousandInstructions();
}

int main(int count, char** /*words*/)
{
    takeAThousandInstructions();
    if (count < 2)
        std::puts("nops");
    else
        countedWork();
}
