// Every section of docs/checker.md: the wrong file has the finding, and the mended one has not.

#include "tools/check/Check.h"

#include "tests/support/TemporaryDirectory.h"

#include <gmock/gmock.h>

#include <fstream>
#include <set>
#include <sstream>

namespace tamor::test
{
namespace
{
using testing::Contains;
using testing::IsEmpty;
using testing::Not;

/// A file of a section, wrong and mended.
struct Listing
{
    std::string file;
    std::string wrong;
    std::string mended;
};

struct Section
{
    std::string code;
    std::vector<Listing> listings;
};

void replaceEvery(std::string& text, const std::string& pattern, const std::string& replacement)
{
    for (std::size_t at = 0; (at = text.find(pattern, at)) != std::string::npos;) {
        text.replace(at, pattern.size(), replacement);
        at += replacement.size();
    }
}

/// Writes out what the page shortens: `{x*600}`, and `^M` for a carriage return.
std::string writtenOut(std::string line)
{
    replaceEvery(line, "^M", "\r");
    for (std::size_t at = 0; (at = line.find('{', at)) != std::string::npos; ++at) {
        const std::size_t star = line.find('*', at);
        const std::size_t end = line.find('}', at);
        const bool isCount = star < end && end != std::string::npos &&
                             line.find_first_not_of("0123456789", star + 1) == end;
        if (!isCount)
            continue;
        std::string part = line.substr(at + 1, star - at - 1);
        replaceEvery(part, "\\n", "\n");
        replaceEvery(part, "\\0", std::string(1, '\0'));
        std::string all;
        for (int left = std::stoi(line.substr(star + 1)); left > 0; --left)
            all += part;
        line.replace(at, end + 1 - at, all);
        at += all.size() - 1;
    }
    return line + "\n";
}

/// Pictures are shown as hexadecimal digits and quoted texts.
std::string bytesOf(const std::string& listing)
{
    std::istringstream words(listing);
    std::string bytes;
    for (std::string word; words >> word;) {
        if (word.starts_with('"'))
            bytes += word.substr(1, word.size() - 2);
        else
            bytes += static_cast<char>(std::stoi(word, nullptr, 16));
    }
    return bytes;
}

Listing readListing(std::istream& page, const std::string& file)
{
    Listing listing{file, "", ""};
    for (std::string line; std::getline(page, line) && line != "```";) {
        if (line == "\\")
            listing.wrong.pop_back();
        else if (line.starts_with('-'))
            listing.wrong += writtenOut(line.substr(1));
        else if (line.starts_with('+'))
            listing.mended += writtenOut(line.substr(1));
        else {
            listing.wrong += writtenOut(line.substr(1));
            listing.mended += writtenOut(line.substr(1));
        }
    }
    if (file.ends_with(".tga") || file.ends_with(".png")) {
        listing.wrong = bytesOf(listing.wrong);
        listing.mended = bytesOf(listing.mended);
    }
    return listing;
}

std::vector<Section> sections()
{
    std::ifstream page(TAMOR_DOCS "/checker.md");
    std::vector<Section> all;
    for (std::string line; std::getline(page, line);) {
        if (line.starts_with("### "))
            all.push_back({line.substr(4), {}});
        else if (line.starts_with("```diff "))
            all.back().listings.push_back(readListing(page, line.substr(8)));
    }
    return all;
}

/// The codes of the findings in the files: in a directory if there are several, or if the section
/// speaks of one.
std::set<std::string> codesIn(const Section& section, bool isMended)
{
    const TemporaryDirectory directory;
    const std::set<std::string> ofDirectories = {"font-missing", "texture-missing",
                                                 "texture-format", "glsl-alone"};
    std::vector<check::Finding> findings;
    const Listing& only = section.listings.front();
    if (section.listings.size() == 1 && !ofDirectories.contains(section.code)) {
        findings = check::checkText(only.file, isMended ? only.mended : only.wrong,
                                    check::kindOfName(only.file).value());
    } else {
        for (const Listing& listing : section.listings) {
            const std::string& text = isMended ? listing.mended : listing.wrong;
            if (!text.empty())
                directory.write(listing.file, text);
        }
        findings = check::checkDirectory(".").value().findings;
    }
    std::set<std::string> codes;
    for (const check::Finding& finding : findings)
        codes.emplace(finding.code->name);
    return codes;
}

TEST(CheckerManual, HasASectionForEachCode)
{
    std::multiset<std::string> codes;
    for (const check::Code& code : check::codes())
        codes.emplace(code.name);
    std::multiset<std::string> titles;
    for (const Section& section : sections())
        titles.insert(section.code);

    EXPECT_EQ(titles, codes);
}

TEST(CheckerManual, ShowsFilesThatHaveTheFinding)
{
    for (const Section& section : sections()) {
        ASSERT_THAT(section.listings, Not(IsEmpty())) << section.code;
        EXPECT_THAT(codesIn(section, false), Contains(section.code));
    }
}

// A few mended files are short of what the same page tells elsewhere.
TEST(CheckerManual, ShowsMendedFilesThatHaveNone)
{
    const std::set<std::string> knownElsewhere = {"layout-no-config", "layout-deep"};
    for (const Section& section : sections()) {
        std::set<std::string> codes = codesIn(section, true);
        for (const std::string& code : knownElsewhere)
            if (code != section.code)
                codes.erase(code);
        EXPECT_THAT(codes, IsEmpty()) << section.code;
    }
}
} // namespace
} // namespace tamor::test
