#include "tool/constants/ConstantsWriter.hh"

#include "tool/console/Console.hh"
#include "tool/constants/Characters.hh"

namespace {

const Keywords kKeywords = {"False", "None",     "True",  "and",    "as",   "assert", "async",  "await",    "break",
                            "class", "continue", "def",   "del",    "elif", "else",   "except", "finally",  "for",
                            "from",  "global",   "if",    "import", "in",   "is",     "lambda", "nonlocal", "not",
                            "or",    "pass",     "raise", "return", "try",  "while",  "with",   "yield"},
               kNone;

/// Returns a string literal. Bytes that are not UTF-8 become the surrogates that Python uses for them in the
/// names of files (surrogateescape).
std::string literal(std::string_view text) {
    std::string quoted = "\"";
    forEachCharacter(text, [&quoted](char32_t character, bool isText) {
        if (!isText)
            quoted += "\\udc" + hexadecimal(character, 2);
        else if (character == '"' || character == '\\')
            quoted += {'\\', static_cast<char>(character)};
        else if (character < 0x20 || character == 0x7F)
            quoted += "\\x" + hexadecimal(character, 2);
        else if (character < 0x7F)
            quoted += static_cast<char>(character);
        else
            quoted += character < 0x10000 ? "\\u" + hexadecimal(character, 4) : "\\U" + hexadecimal(character, 8);
    });
    return quoted + '"';
}

/// Returns a line of a documentation string.
std::string docstringLine(std::string_view text) {
    std::string result;
    for (const char c : commentLine(text))
        result += c == '"' || c == '\\' ? std::string("\\") + c : std::string(1, c);
    return result;
}

class PythonWriter : public ConstantsWriter {
public:
    using ConstantsWriter::ConstantsWriter;

private:
    void beginFile(const ConstantFile &file) override {
        line("\"\"\"" + docstringLine(file.title));
        line();
        line(kGenerated);
        line("\"\"\"");
        line();
    }

    void endFile(const ConstantFile &) override {}

    void beginScope(const ConstantScope &scope) override {
        line();
        if (depth() == 0)
            line();
        line("class " + scope.identifier + ':');
        indent();
        writeDocstring(descriptionOf(scope));
        if (!scope.constants.empty())
            line();
    }

    void endScope(const ConstantScope &) override { outdent(); }

    void writeConstant(const Constant &constant) override {
        if (!constant.documentation.empty())
            writeLines("#: ", constant.documentation);
        if (const auto *name = std::get_if<std::string>(&constant.value))
            line(constant.identifier + " = " + literal(*name));
        else
            line(constant.identifier + " = " + std::to_string(std::get<unsigned long>(constant.value)));
    }

    void writeComparison() override {
        line();
        line();
        line("def holds_for(digits):");
        indent();
        writeDocstring(kAboutComparison);
        line("return digits.lower() == fingerprint");
        outdent();
    }

    void writeComment(const std::string &text) override { writeLines("# ", text); }

    void writeLines(const std::string &prefix, const std::string &text) {
        forEachLine(text, [&](std::string_view each) {
            std::string comment = prefix + commentLine(each);
            comment.erase(comment.find_last_not_of(' ') + 1);
            line(comment);
        });
    }

    void writeDocstring(const std::string &text) {
        bool isFirst = true;
        std::string pending = "\"\"\"";
        forEachLine(text, [&](std::string_view each) {
            if (!isFirst)
                line(pending);
            pending = (isFirst ? pending : "") + docstringLine(each);
            isFirst = false;
        });
        if (text.find('\n') == std::string::npos) {
            line(pending + "\"\"\"");
        } else {
            line(pending);
            line("\"\"\"");
        }
    }
};

void write(const ConstantFile &file, std::ostream &out) {
    constexpr std::size_t kDeepest = 99; // levels of indentation, beyond which Python reads no file
    if (const std::size_t depth = depthBelow(file.scope); depth > kDeepest)
        throw CannotWork("the classes are too deep for Python: " + std::to_string(depth) +
                         " would be in each other, and " + std::to_string(kDeepest) + " may be");
    PythonWriter(out).write(file);
}

} // namespace

const ConstantLanguage kPythonConstants = {"Python", kKeywords, kNone, false, nullptr, write};
