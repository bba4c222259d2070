// The checker of GLSL shaders, as far as their text goes: what their words mean is the driver's
// business.

#include "tools/check/Formats.h"
#include "tools/check/Words.h"

#include <algorithm>
#include <cctype>

namespace tamor::check
{
namespace
{
// What a declaration may begin with.
const std::vector<std::string_view> firstWords = {
    "attribute", "varying",   "uniform",   "const",     "in",          "out",    "void",
    "float",     "int",       "bool",      "vec2",      "vec3",        "vec4",   "ivec2",
    "ivec3",     "ivec4",     "bvec2",     "bvec3",     "bvec4",       "mat2",   "mat3",
    "mat4",      "sampler1D", "sampler2D", "sampler3D", "samplerCube", "flat",   "smooth",
    "struct",    "precision", "highp",     "mediump",   "lowp",        "layout", "invariant",
    "centroid",  "uint"};

bool isWordCharacter(char c)
{
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_';
}

/// One word or sign of the text.
struct Token
{
    std::string_view text;
    std::size_t offset;
};

/// What a shader takes or gives: `varying vec3 normal`.
struct Declaration
{
    std::string_view storage;
    Token type;
    Token name;
};

/// Cuts a shader into words and signs, without remarks and lines for the preprocessor.
class Scanner
{
public:
    Scanner(std::string_view newText, Source* newReports) : text(newText), reports(newReports) {}

    std::vector<Token> run()
    {
        while (at < text.size())
            next();
        return std::move(tokens);
    }

private:
    void report(std::string_view code, std::size_t offset, const std::string& message)
    {
        if (reports != nullptr)
            reports->report(code, offset, message);
    }

    void next()
    {
        const char c = text[at];
        if (std::isspace(static_cast<unsigned char>(c)) != 0) {
            ++at;
        } else if (text.substr(at).starts_with("//")) {
            at = std::min(text.find('\n', at), text.size());
        } else if (text.substr(at).starts_with("/*")) {
            skipRemark();
        } else if (c == '#') {
            skipDirective();
        } else if (isWordCharacter(c)) {
            const std::size_t begin = at;
            while (at < text.size() && isWordCharacter(text[at]))
                ++at;
            tokens.push_back({text.substr(begin, at - begin), begin});
        } else {
            readSign();
        }
    }

    void skipRemark()
    {
        const std::size_t end = text.find("*/", at + 2);
        if (end == std::string_view::npos)
            report("glsl-remark", at, "the remark is not finished: it takes the rest of the file");
        at = end == std::string_view::npos ? text.size() : end + 2;
    }

    void skipDirective()
    {
        const bool isVersion = text.substr(at).starts_with("#version");
        if (isVersion && (!tokens.empty() || hasDirective)) {
            report("glsl-version", at,
                   "#version stands in front of everything but remarks: it does not compile");
        }
        hasDirective = true;
        at = std::min(text.find('\n', at), text.size());
    }

    void readSign()
    {
        if (static_cast<unsigned char>(text[at]) > 127 && !saidNotASCII) {
            saidNotASCII = true;
            report("glsl-not-ascii", at, "outside of remarks a shader is written in ASCII");
        }
        tokens.push_back({text.substr(at, 1), at});
        ++at;
    }

    std::string_view text;
    Source* reports;
    std::size_t at = 0;
    bool hasDirective = false;
    bool saidNotASCII = false;
    std::vector<Token> tokens;
};

/// Reports brackets without a partner. Returns whether all have one.
bool checkBrackets(Source& source, const std::vector<Token>& tokens)
{
    constexpr std::string_view opening = "([{";
    constexpr std::string_view closing = ")]}";
    std::vector<Token> open;
    for (const Token& token : tokens) {
        if (opening.find(token.text) != std::string_view::npos) {
            open.push_back(token);
            continue;
        }
        const std::size_t kind = closing.find(token.text);
        if (kind == std::string_view::npos)
            continue;
        if (open.empty() || open.back().text[0] != opening[kind]) {
            source.report("glsl-bracket", token.offset, inQuotes(token.text) + " closes nothing");
            return false;
        }
        open.pop_back();
    }
    if (!open.empty()) {
        source.report("glsl-bracket", open.back().offset,
                      inQuotes(open.back().text) + " is never closed");
    }
    return open.empty();
}

/// The declarations outside of blocks, each a row of words up to a ";" or a block.
std::vector<std::vector<Token>> outerStatements(const std::vector<Token>& tokens)
{
    std::vector<std::vector<Token>> statements(1);
    int depth = 0;
    for (const Token& token : tokens) {
        const bool opens = token.text == "{";
        const bool closes = token.text == "}";
        depth += opens ? 1 : closes ? -1 : 0;
        if (depth == 0 && (closes || token.text == ";"))
            statements.emplace_back();
        else if (depth == 0 || (opens && depth == 1))
            statements.back().push_back(token);
    }
    return statements;
}

std::vector<Declaration> declarations(const std::vector<Token>& tokens)
{
    std::vector<Declaration> found;
    for (const std::vector<Token>& statement : outerStatements(tokens)) {
        const auto isStorage = [](const Token& token) {
            return token.text == "varying" || token.text == "in" || token.text == "out" ||
                   token.text == "uniform" || token.text == "attribute";
        };
        const auto storage = std::find_if(statement.begin(), statement.end(), isStorage);
        const bool isFunction =
            std::any_of(statement.begin(), storage, [](const Token& t) { return t.text == "("; });
        if (isFunction || statement.end() - storage < 3)
            continue;
        const Token& type = *(storage + 1);
        bool isName = true;
        for (auto token = storage + 2; token != statement.end(); ++token) {
            if (isName && isWordCharacter(token->text[0]))
                found.push_back({storage->text, type, *token});
            isName = token->text == ",";
        }
    }
    return found;
}

void checkMain(Source& source, const std::vector<Token>& tokens)
{
    for (std::size_t i = 1; i < tokens.size(); ++i) {
        if (tokens[i].text == "main" && tokens[i - 1].text == "void")
            return;
    }
    source.report("glsl-main", 0, "the shader has no void main(): it does not link");
}
} // namespace

void checkShader(Source& source)
{
    const std::vector<Token> tokens = Scanner(source.text(), &source).run();
    checkMain(source, tokens);
    if (!checkBrackets(source, tokens))
        return;
    for (const std::vector<Token>& statement : outerStatements(tokens)) {
        if (statement.empty())
            continue;
        const std::string guess = source.guess(statement[0].text, firstWords);
        const bool isKnown =
            std::find(firstWords.begin(), firstWords.end(), statement[0].text) != firstWords.end();
        if (!isKnown && !guess.empty()) {
            source.report("glsl-word", statement[0].offset,
                          inQuotes(statement[0].text) + " begins no declaration" + guess);
        }
    }
    for (const Declaration& each : declarations(tokens)) {
        const std::string_view type = each.type.text;
        const bool isSettable =
            type == "float" || type == "vec2" || type == "vec3" || type.starts_with("sampler");
        if (each.storage == "uniform" && !isSettable) {
            source.report("glsl-uniform", each.name.offset,
                          inQuotes(each.name.text) + " is a " + std::string(type) +
                              ": the engine sets one to three floats");
        }
    }
}

void checkShaderInterface(const Source& vertex, Source& fragment)
{
    const std::vector<Declaration> given = declarations(Scanner(vertex.text(), nullptr).run());
    const std::vector<Declaration> taken = declarations(Scanner(fragment.text(), nullptr).run());
    std::vector<std::string_view> names;
    for (const Declaration& each : given) {
        if (each.storage == "varying" || each.storage == "out")
            names.push_back(each.name.text);
    }
    for (const Declaration& each : taken) {
        if (each.storage != "varying" && each.storage != "in")
            continue;
        const auto isSame = [&](const Declaration& other) {
            return (other.storage == "varying" || other.storage == "out") &&
                   other.name.text == each.name.text;
        };
        const auto found = std::find_if(given.begin(), given.end(), isSame);
        if (found == given.end()) {
            fragment.report("glsl-varying", each.name.offset,
                            vertex.name() + " gives no " + inQuotes(each.name.text) +
                                fragment.guess(each.name.text, names));
        } else if (found->type.text != each.type.text) {
            fragment.report("glsl-varying", each.type.offset,
                            vertex.name() + " gives " + inQuotes(each.name.text) + " as " +
                                std::string(found->type.text));
        }
    }
}
} // namespace tamor::check
