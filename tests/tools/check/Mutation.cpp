#include "tests/tools/check/Mutation.h"

#include <sys/time.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstring>

namespace tamor::test
{
namespace
{
constexpr std::string_view letters = "0123456789.-+,;:(){}[]\"'%/#! \n\tabefixNULL";

class Mutator
{
public:
    Mutator(std::string newText, std::uint32_t seed, const std::vector<std::string>& newWords)
        : text(std::move(newText)), random(seed), words(newWords)
    {}

    std::string run()
    {
        for (std::size_t left = 1 + below(3); left > 0; --left)
            change();
        return text;
    }

private:
    /// The same on every machine, unlike the library's distributions.
    std::size_t below(std::size_t limit) { return limit == 0 ? 0 : random() % limit; }

    char letter() { return letters[below(letters.size())]; }

    /// The stretch of characters around a place that `separators` do not cut.
    std::pair<std::size_t, std::size_t> stretch(std::string_view separators)
    {
        const std::size_t at = below(text.size());
        const std::size_t before =
            at == 0 ? std::string::npos : text.find_last_of(separators, at - 1);
        const std::size_t begin = before == std::string::npos ? 0 : before + 1;
        const std::size_t end = std::min(text.find_first_of(separators, begin), text.size());
        return {begin, end - begin};
    }

    void change()
    {
        const std::size_t at = below(text.size() + 1);
        switch (below(11)) {
        case 0:
            if (at < text.size())
                text.erase(at, 1);
            break;
        case 1:
            text.insert(at, 1, letter());
            break;
        case 2:
            if (at < text.size())
                text[at] = letter();
            break;
        case 3:
        case 4:
            changeWord();
            break;
        case 5:
            insertWord();
            break;
        case 6:
        case 7:
            changeLine();
            break;
        case 8:
            moveLine();
            break;
        case 9:
            text.resize(at);
            break;
        default:
            swapWords();
            break;
        }
    }

    void changeWord()
    {
        const auto [begin, length] = stretch(" \n");
        if (below(2) == 0)
            text.erase(begin, length);
        else
            text.replace(begin, length, words[below(words.size())]);
    }

    void insertWord() { text.insert(stretch(" \n").first, words[below(words.size())] + " "); }

    void swapWords()
    {
        const auto [a, aLength] = stretch(" \n");
        const auto [b, bLength] = stretch(" \n");
        const std::string first = text.substr(a, aLength);
        const std::string second = text.substr(b, bLength);
        if (a + aLength <= b) {
            text.replace(b, bLength, first);
            text.replace(a, aLength, second);
        }
    }

    void changeLine()
    {
        const auto [begin, length] = stretch("\n");
        const std::string line = text.substr(begin, length) + "\n";
        if (below(2) == 0)
            text.erase(begin, std::min(length + 1, text.size() - begin));
        else
            text.insert(begin, line);
    }

    void moveLine()
    {
        const auto [begin, length] = stretch("\n");
        const std::string line = text.substr(begin, length) + "\n";
        text.erase(begin, std::min(length + 1, text.size() - begin));
        text.insert(stretch("\n").first, line);
    }

    std::string text;
    std::mt19937 random;
    const std::vector<std::string>& words;
};

// What the handler writes: it may call no more than `write`.
char limitText[8192];

void endProcess(int number)
{
    const char* const why =
        number == SIGALRM ? "\nthe reader does not return: " : "\nthe reader crashes: ";
    if (write(STDOUT_FILENO, why, std::strlen(why)) < 0 ||
        write(STDOUT_FILENO, limitText, std::strlen(limitText)) < 0)
        _exit(2);
    _exit(1);
}

void setTimer(long seconds)
{
    const itimerval timer{{0, 0}, {seconds, 0}};
    setitimer(ITIMER_REAL, &timer, nullptr);
}
} // namespace

std::string mutate(std::string text, std::uint32_t seed, const std::vector<std::string>& words)
{
    return Mutator(std::move(text), seed, words).run();
}

std::string mutateBytes(std::string bytes, std::uint32_t seed)
{
    std::mt19937 random(seed);
    for (std::size_t left = 1 + random() % 3; left > 0; --left) {
        const std::size_t at = random() % (bytes.size() + 1);
        switch (random() % 4) {
        case 0:
            bytes.resize(at);
            break;
        case 1:
            bytes.insert(at, 1, static_cast<char>(random()));
            break;
        default:
            if (at < bytes.size())
                bytes[at] = static_cast<char>(random());
            break;
        }
    }
    return bytes;
}

ReaderLimit::ReaderLimit(const std::string& what)
{
    const std::size_t length = std::min(what.size(), sizeof limitText - 1);
    std::memcpy(limitText, what.data(), length);
    limitText[length] = '\0';
    std::signal(SIGALRM, endProcess);
    std::signal(SIGSEGV, endProcess);
    setTimer(5);
}

ReaderLimit::~ReaderLimit()
{
    setTimer(0);
    std::signal(SIGSEGV, SIG_DFL);
}
} // namespace tamor::test
