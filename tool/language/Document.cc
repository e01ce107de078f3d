#include "tool/language/Document.hh"

#include "tool/check/fixes/Fixes.hh"
#include "tool/control/Decision.hh"

#include <utility>

Document::Document(std::string name, std::string text, const Settings &settings)
    : _name(std::move(name)), _settings(settings), _file{_name, std::make_unique<Checker>(std::move(text)), {}} {}

const std::vector<Finding> &Document::findings() const {
    if (!_decided) {
        _file.findings = findingsOfText(*_file.text, Severity::warning);
        addFixes(_file);
        decide(_file, _settings, nullptr);
        _decided = true;
    }
    return _file.findings;
}

const SyntaxTree &Document::tree() const {
    return checker().tree();
}

const Clauses &Document::clauses() const {
    if (!_clauses)
        _clauses.emplace(tree());
    return *_clauses;
}

const Entities &Document::entities() const {
    if (!_entities)
        _entities.emplace(checker());
    return *_entities;
}
