#include "tool/constants/ConstantsWriter.hh"

#include "tool/constants/Characters.hh"

namespace {

/// The keywords of all versions up to C++20, and macros of the standard library, of GNU compilers and of systems.
const Keywords kKeywords = {
    "alignas", "alignof", "and", "and_eq", "asm", "auto", "bitand", "bitor", "bool", "break", "case", "catch", "char",
    "char16_t", "char32_t", "char8_t", "class", "co_await", "co_return", "co_yield", "compl", "concept", "const",
    "const_cast", "consteval", "constexpr", "constinit", "continue", "decltype", "default", "delete", "do", "double",
    "dynamic_cast", "else", "enum", "explicit", "export", "extern", "false", "float", "for", "friend", "goto", "if",
    "inline", "int", "long", "mutable", "namespace", "new", "noexcept", "not", "not_eq", "nullptr", "operator", "or",
    "or_eq", "private", "protected", "public", "register", "reinterpret_cast", "requires", "return", "short", "signed",
    "sizeof", "static", "static_assert", "static_cast", "struct", "switch", "template", "this", "thread_local", "throw",
    "true", "try", "typedef", "typeid", "typename", "typeof", "union", "unsigned", "using", "virtual", "void",
    "volatile", "wchar_t", "while", "xor", "xor_eq",
    // Macros.
    "ABSOLUTE", "BIG_ENDIAN", "BOOL", "BUFSIZ", "BYTE_ORDER", "CALLBACK", "CHAR_BIT", "CHAR_MAX", "CHAR_MIN", "CONST",
    "DELETE", "DIFFERENCE", "DOMAIN", "EDOM", "EOF", "ERANGE", "ERROR", "EXIT_FAILURE", "EXIT_SUCCESS", "FALSE",
    "HUGE_VAL", "IGNORE", "IN", "INFINITE", "INFINITY", "INT_MAX", "INT_MIN", "LITTLE_ENDIAN", "LONG_MAX", "LONG_MIN",
    "NAN", "NO_ERROR", "NULL", "OPTIONAL", "OUT", "OVERFLOW", "PATH_MAX", "PDP_ENDIAN", "RAND_MAX", "RELATIVE",
    "STRICT", "TRUE", "UNDERFLOW", "VOID", "assert", "errno", "far", "i386", "interface", "linux", "major", "max",
    "min", "minor", "near", "offsetof", "setjmp", "signals", "slots", "emit", "small", "stderr", "stdin", "stdout",
    "unix", "va_arg"};

/// Namespaces that belong to the language, and names of the C library with a capital letter that are no macros.
const Keywords kGlobal = {"ACTION", "DIR", "ENTRY", "FILE", "VISIT", "posix", "std"};

/// Returns a string literal of these bytes. "?" is escaped, for it may begin a trigraph; octal escapes end after three
/// digits, whatever follows.
std::string literal(std::string_view text) {
    std::string quoted = "\"";
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte > 0x7E) {
            quoted += '\\';
            for (const unsigned shift : {6U, 3U, 0U})
                quoted += static_cast<char>('0' + (byte >> shift & 7U));
        } else {
            quoted += c == '"' || c == '\\' || c == '?' ? std::string("\\") + c : std::string(1, c);
        }
    }
    return quoted + '"';
}

class CppWriter : public ConstantsWriter {
public:
    using ConstantsWriter::ConstantsWriter;

private:
    void beginFile(const ConstantFile &file) override {
        line("// " + commentLine(file.title));
        line("// " + std::string(kGenerated));
        line();
        const std::string guard = guardOf(file);
        line("#ifndef " + guard);
        line("#define " + guard);
        line();
        for (const std::string &scope : file.path)
            line("namespace " + scope + " {");
        line();
    }

    void endFile(const ConstantFile &file) override {
        line();
        for (auto scope = file.path.rbegin(); scope != file.path.rend(); ++scope)
            line("} // namespace " + *scope);
        line();
        line("#endif // " + guardOf(file));
    }

    /// Returns the name of the include guard, which differs for any other scopes: letter case stays, and the "_" of an
    /// identifier becomes "_0". No identifier begins with a digit, so other "_" are between two of them.
    static std::string guardOf(const ConstantFile &file) {
        std::string guard;
        for (const std::string &scope : file.path) {
            for (const char c : scope)
                guard += c == '_' ? std::string("_0") : std::string(1, c);
            guard += '_';
        }
        return guard + "CONSTANTS_HH";
    }

    void beginScope(const ConstantScope &scope) override {
        line();
        writeDocumentation(descriptionOf(scope));
        line("namespace " + scope.identifier + " {");
        indent();
    }

    void endScope(const ConstantScope &scope) override {
        outdent();
        line("} // namespace " + scope.identifier);
    }

    void writeConstant(const Constant &constant) override {
        if (!constant.documentation.empty())
            writeDocumentation(constant.documentation);
        if (const auto *name = std::get_if<std::string>(&constant.value))
            line("constexpr const char *" + constant.identifier + " = " + literal(*name) + ';');
        else
            line("constexpr unsigned long " + constant.identifier + " = " +
                 std::to_string(std::get<unsigned long>(constant.value)) + ';');
    }

    void writeComparison() override {
        line();
        writeDocumentation(kAboutComparison);
        line("inline bool holdsFor(const char *digits) {");
        line("    for (const char *digit = fingerprint; *digit != '\\0'; ++digit, ++digits)");
        line("        if (*digits != *digit && (*digits < 'A' || *digits > 'F' || *digits - 'A' + 'a' != *digit))");
        line("            return false;");
        line("    return *digits == '\\0';");
        line("}");
    }

    void writeComment(const std::string &text) override { writeLines("// ", text); }
    void writeDocumentation(const std::string &text) { writeLines("/// ", text); }

    /// A backslash at the end of a line, or the trigraph for it, would continue the comment on the next line.
    void writeLines(const std::string &prefix, const std::string &text) {
        forEachLine(text, [&](std::string_view each) {
            std::string comment = prefix + commentLine(each);
            comment.erase(comment.find_last_not_of(' ') + 1);
            const std::string end = comment.substr(comment.size() - std::min<std::size_t>(comment.size(), 3));
            line(comment + (end.back() == '\\' || end == "?\?/" ? "." : ""));
        });
    }
};

void write(const ConstantFile &file, std::ostream &out) {
    CppWriter(out).write(file);
}

} // namespace

const ConstantLanguage kCppConstants = {"C++", kKeywords, kGlobal, true, nullptr, write};
