#pragma once

#include "infrastructure/RtiFedParser.hh"

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

/// The places at which a FED text declares the records of a database. A record is known by its address; one that the
/// text does not declare, such as the routing space of the MOM, has no places.
class Declarations {
public:
    static constexpr std::size_t kMaxArguments = 4;
    enum Argument : std::size_t { name, transportation, ordering, space };

    /// `text` is the text that declares the records; it must outlive this object.
    explicit Declarations(const RtiFedParser &text) : _text(text) {}

    /// Adds the record that the parser is delivering, in the class clause of this number.
    void add(const void *record, unsigned long classClause);

    /// Adds a further declaration of a record: a duplicate in its class, or one in a subclass.
    void addLater(const void *record, RtiFedSpan span) { _later[record].push_back(span); }

    /// The number of the class clause in which the record is declared.
    unsigned long classClause(const void *record) const { return _declarations.at(record).classClause; }

    /// The span of an argument of the record's declaration, quotes included; nothing if it is absent.
    std::optional<RtiFedSpan> span(const void *record, Argument argument = name) const;

    /// The place of the record's name.
    std::optional<RtiFedPosition> place(const void *record) const;

    /// The names of the later declarations, and their places.
    const std::vector<RtiFedSpan> &laterSpans(const void *record) const;
    std::vector<RtiFedPosition> laterPlaces(const void *record) const;

    /// An argument as the text has it, without quotes; empty if it is absent.
    std::string written(const void *record, Argument argument) const;

    /// The word at a span of the text, without quotes.
    std::string_view wordAt(RtiFedSpan span) const;

private:
    struct Declaration {
        std::array<RtiFedSpan, kMaxArguments> arguments; // those of length 0 are absent
        unsigned long classClause;
    };

    const RtiFedParser &_text;
    std::unordered_map<const void *, Declaration> _declarations;
    std::unordered_map<const void *, std::vector<RtiFedSpan>> _later;
};
