#include "tool/constants/ConstantsWriter.hh"

#include "tool/console/Text.hh"

#include <algorithm>

void ConstantsWriter::write(const ConstantFile &file) {
    beginFile(file);
    for (const Constant &constant : file.scope.constants)
        writeConstant(constant);
    if (!file.fingerprint.empty())
        writeComparison();
    for (const ConstantScope &scope : file.scope.scopes)
        writeScope(scope);
    endFile(file);
}

void ConstantsWriter::writeScope(const ConstantScope &scope) {
    beginScope(scope);
    for (const Constant &constant : scope.constants) {
        if (constant.superclass != nullptr)
            writeComment("Inherited from " + shown(*constant.superclass) + ':');
        writeConstant(constant);
    }
    for (const ConstantScope &inner : scope.scopes)
        writeScope(inner);
    endScope(scope);
}

void ConstantsWriter::line(std::string_view text) {
    if (!text.empty())
        _out << std::string(4 * _depth, ' ') << text;
    _out << '\n';
}

std::string commentLine(std::string_view line) {
    std::string text(line);
    std::replace(text.begin(), text.end(), '\t', ' ');
    return shown(text);
}
