#pragma once

#include "fed/RtiFedDatabase.hh"
#include "infrastructure/RtiFedParser.hh"

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// The places at which a FED text declares the records of a database. One that the text does not declare, such as the
/// routing space of the MOM, has no places.
///
/// A record is known by its kind and its handle: handles are counted in the order of the text, so that they are indices
/// of a vector. Only a dimension, whose handle is that within its space, is known by its address.
class Declarations {
public:
    static constexpr std::size_t kMaxArguments = 4;
    enum Argument : std::size_t { name, transportation, ordering, space };

    /// A record of the database, or none.
    class Record {
    public:
        Record(const RtiFedObjectClass *record) : Record(Kind::objectClass, record) {}
        Record(const RtiFedAttribute *record) : Record(Kind::attribute, record) {}
        Record(const RtiFedInteractionClass *record) : Record(Kind::interactionClass, record) {}
        Record(const RtiFedParameter *record) : Record(Kind::parameter, record) {}
        Record(const RtiFedSpace *record) : Record(Kind::space, record) {}
        Record(const RtiFedDimension *record) : Record(Kind::dimension, reinterpret_cast<std::uintptr_t>(record)) {}

    private:
        friend class Declarations;
        enum class Kind : unsigned char { objectClass, attribute, interactionClass, parameter, space, dimension };

        template <class Declared>
        Record(Kind kind, const Declared *record)
            : Record(kind, record ? static_cast<std::size_t>(record->getHandle()._value) : 0) {}
        Record(Kind kind, std::size_t number) : _kind(kind), _number(number) {}

        std::pair<Kind, std::size_t> key() const { return {_kind, _number}; }

        Kind _kind = Kind::objectClass;
        std::size_t _number = 0; // the handle or the address; 0 for none
    };

    /// `text` is the text that declares the records; it must outlive this object.
    explicit Declarations(RtiFedParser &text) : _text(text) {}

    /// Adds all declarations of the text, which `database` must have been built from without an error.
    void addAll(const RtiFedDatabase &database);

    /// Adds the record that the parser is delivering, in the class clause of this number.
    void add(Record record, unsigned long classClause);

    /// Adds a further declaration of a record: a duplicate in its class, or one in a subclass.
    void addLater(Record record, RtiFedSpan span) { _later[record.key()].push_back(span); }

    /// The number of the class clause in which the record is declared.
    unsigned long classClause(Record record) const { return find(record)->classClause; }

    /// The span of an argument of the record's declaration, quotes included; nothing if it is absent.
    std::optional<RtiFedSpan> span(Record record, Argument argument = name) const;

    /// The place of the record's name.
    std::optional<RtiFedPosition> place(Record record) const;

    /// The names of the later declarations, and their places.
    const std::vector<RtiFedSpan> &laterSpans(Record record) const;
    std::vector<RtiFedPosition> laterPlaces(Record record) const;

    /// An argument as the text has it, without quotes; empty if it is absent.
    std::string written(Record record, Argument argument) const;

    /// The word at a span of the text, without quotes.
    std::string_view wordAt(RtiFedSpan span) const;

private:
    struct Declaration {
        std::array<RtiFedSpan, kMaxArguments> arguments; // those of length 0 are absent
        unsigned long classClause = 0;
    };
    class Reader;

    const Declaration *find(Record record) const;

    RtiFedParser &_text;
    std::array<std::vector<Declaration>, 5> _byHandle; // for each kind but dimensions
    std::map<std::size_t, Declaration> _dimensions;    // by address
    std::map<std::pair<Record::Kind, std::size_t>, std::vector<RtiFedSpan>> _later;
};
