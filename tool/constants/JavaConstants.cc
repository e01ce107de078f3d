#include "tool/constants/ConstantsWriter.hh"

#include "tool/console/Console.hh"
#include "tool/constants/Characters.hh"

namespace {

/// The keywords, words that cannot name a class in some version, and the class of the constants.
const Keywords kKeywords = {
    "String",     "abstract",  "assert",       "boolean", "break",  "byte",   "case",      "catch",      "char",
    "class",      "const",     "continue",     "default", "do",     "double", "else",      "enum",       "extends",
    "false",      "final",     "finally",      "float",   "for",    "goto",   "if",        "implements", "import",
    "instanceof", "int",       "interface",    "long",    "native", "new",    "null",      "package",    "permits",
    "private",    "protected", "public",       "record",  "return", "sealed", "short",     "static",     "strictfp",
    "super",      "switch",    "synchronized", "this",    "throw",  "throws", "transient", "true",       "try",
    "var",        "void",      "volatile",     "while",   "yield"};

/// Those that may name a package.
const Keywords kPackages = {"String", "permits", "record", "sealed", "var", "yield"}, kNone;

/// Returns a character beyond ASCII as Java reads it in any encoding of the file. Bytes that are not UTF-8 become the
/// characters with their numbers.
std::string escaped(char32_t character) {
    if (character < 0x10000)
        return "\\u" + hexadecimal(character, 4);
    const char32_t offset = character - 0x10000;
    return "\\u" + hexadecimal(0xD800 + (offset >> 10U), 4) + "\\u" + hexadecimal(0xDC00 + (offset & 0x3FFU), 4);
}

/// Returns a string literal. Control characters have octal escapes: Java reads \u000a as the end of a line.
std::string literal(std::string_view text) {
    std::string quoted = "\"";
    forEachCharacter(text, [&quoted](char32_t character, bool) {
        if (character == '"' || character == '\\')
            quoted += {'\\', static_cast<char>(character)};
        else if (character < 0x20 || character == 0x7F)
            for (const char digit :
                 {'\\', static_cast<char>('0' + (character >> 6U)), static_cast<char>('0' + (character >> 3U & 7U)),
                  static_cast<char>('0' + (character & 7U))})
                quoted += digit;
        else
            quoted += character < 0x80 ? std::string(1, static_cast<char>(character)) : escaped(character);
    });
    return quoted + '"';
}

/// Returns a line of a comment that javadoc shows as it is. Java reads escapes of characters in comments too, unless
/// their backslash is doubled.
std::string commentText(std::string_view text) {
    std::string result;
    forEachCharacter(commentLine(text), [&result](char32_t character, bool) {
        switch (character) {
        case '&':
            result += "&amp;";
            break;
        case '<':
            result += "&lt;";
            break;
        case '>':
            result += "&gt;";
            break;
        case '@':
            result += "&#64;";
            break;
        case '/':
            result += !result.empty() && result.back() == '*' ? "&#47;" : "/";
            break;
        case '\\':
            result += "&#92;";
            break;
        default:
            // equivalent: U+0080 is not visible, so it has become an escape
            result += character < 0x80 ? std::string(1, static_cast<char>(character)) : escaped(character);
        }
    });
    return result;
}

class JavaWriter : public ConstantsWriter {
public:
    using ConstantsWriter::ConstantsWriter;

private:
    void beginFile(const ConstantFile &file) override {
        line("// " + std::string(kGenerated));
        line();
        std::string package;
        for (std::size_t i = 0; i + 1 < file.path.size(); ++i)
            package += (i == 0 ? "" : ".") + file.path[i];
        if (!package.empty()) {
            line("package " + package + ';');
            line();
        }
        writeDocumentation(file.title);
        line("public final class " + file.path.back() + " {");
        indent();
        line("private " + file.path.back() + "() {}");
        line();
    }

    void endFile(const ConstantFile &) override {
        outdent();
        line("}");
    }

    void beginScope(const ConstantScope &scope) override {
        line();
        writeDocumentation(descriptionOf(scope));
        line("public static final class " + scope.identifier + " {");
        indent();
        line("private " + scope.identifier + "() {}");
        if (!scope.constants.empty())
            line();
    }

    void endScope(const ConstantScope &) override {
        outdent();
        line("}");
    }

    void writeConstant(const Constant &constant) override {
        if (!constant.documentation.empty())
            writeDocumentation(constant.documentation);
        if (const auto *name = std::get_if<std::string>(&constant.value))
            line("public static final String " + constant.identifier + " = " + literal(*name) + ';');
        else
            line("public static final int " + constant.identifier + " = " +
                 std::to_string(std::get<unsigned long>(constant.value)) + ';');
    }

    void writeComparison() override {
        line();
        writeDocumentation(kAboutComparison);
        line("public static boolean holdsFor(String digits) {");
        line("    return fingerprint.equalsIgnoreCase(digits);");
        line("}");
    }

    void writeComment(const std::string &text) override { line("// " + commentText(text)); }

    void writeDocumentation(const std::string &text) {
        if (text.find('\n') == std::string::npos) {
            line("/** " + commentText(text) + " */");
            return;
        }
        line("/**");
        forEachLine(text, [this](std::string_view each) {
            const std::string comment = commentText(each);
            line(comment.empty() ? " *" : " * " + comment);
        });
        line(" */");
    }
};

/// Returns the length of the longest name of a class file; each has the names of the classes around it.
std::size_t longestFileName(const ConstantScope &scope, std::size_t length) {
    std::size_t longest = length + std::string_view(".class").size();
    for (const ConstantScope &inner : scope.scopes)
        longest = std::max(longest, longestFileName(inner, length + 1 + inner.identifier.size()));
    return longest;
}

/// The greatest number of constants in one of the scopes, and the number of all scopes.
struct Numbers {
    std::size_t constants, scopes;
};

Numbers numbersIn(const ConstantScope &scope) {
    Numbers numbers = {scope.constants.size(), scope.scopes.size()};
    for (const ConstantScope &inner : scope.scopes) {
        const Numbers more = numbersIn(inner);
        numbers = {std::max(numbers.constants, more.constants), numbers.scopes + more.scopes};
    }
    return numbers;
}

/// A class file has fewer than 65,536 entries for its names and values: up to three for each constant, and in that of
/// the outermost class three for each class in it.
void refuseTooMany(const ConstantFile &file) {
    constexpr std::size_t kMost = 20000;
    const auto [numConstants, numScopes] = numbersIn(file.scope);
    if (numConstants > kMost)
        throw CannotWork("a class would have " + std::to_string(numConstants) + " constants, and in Java may have " +
                         std::to_string(kMost));
    if (numScopes > kMost)
        throw CannotWork("the file would have " + std::to_string(numScopes) + " classes, and in Java may have " +
                         std::to_string(kMost));
}

void write(const ConstantFile &file, std::ostream &out) {
    refuseTooMany(file);
    constexpr std::size_t kLongest = 255; // of a file name
    const std::size_t longest = longestFileName(file.scope, file.path.back().size());
    if (longest > kLongest)
        throw CannotWork("the classes are too deep for Java: the name of a class file would have " +
                         std::to_string(longest) + " characters, and may have " + std::to_string(kLongest));
    JavaWriter(out).write(file);
}

} // namespace

const ConstantLanguage kJavaConstants = {"Java", kKeywords, kNone, false, &kPackages, write};
