#pragma once

#include <optional>
#include <string>

/// Follows the class clauses of a text, so that a class declared again gives one finding, not one for each class in it.
///
/// The idea: while the clauses are inside a repeated class, a subclass that the first declaration has as well is no
/// news. One that only the repetition declares counts as part of the first class, so that a duplicate of it within the
/// repetition is found. The two are told apart by the number of the clause that declared the subclass. This relies on
/// the parser delivering each class directly before its subclasses; where it does not know the nesting, the checker
/// reports no repetition at all.
class ClassClauses {
public:
    /// Begins the clause of the class with this full name.
    void begin(const std::string &name) {
        ++_number;
        if (_repetition && !isBelow(name, _repetition->name))
            _repetition.reset();
    }

    /// The current class is a repetition.
    void setRepeated(const std::string &name) {
        if (!_repetition)
            _repetition = Repetition{name, _number};
    }

    /// The number of the current clause, counted from 1; 0 before the first.
    unsigned long number() const { return _number; }

    /// Whether the current class is inside a repeated class whose first declaration may have had it too: a class
    /// declared in clause `declared` then was there before the repetition began.
    bool followsFromRepetition(unsigned long declared) const { return _repetition && declared < _repetition->clause; }

private:
    struct Repetition {
        std::string name;     // of the outermost repeated class around the current clause, itself included
        unsigned long clause; // the number of its clause
    };

    static bool isBelow(const std::string &name, const std::string &ancestor) {
        return name.size() > ancestor.size() && name[ancestor.size()] == '.' &&
               name.compare(0, ancestor.size(), ancestor) == 0; // unreached: a shorter name comes between
    }

    unsigned long _number = 0;
    std::optional<Repetition> _repetition;
};
