#include "tool/model/Declarations.hh"

#include "fed/loading/RtiFedParserCodegen.hh"

/// Takes the declarations in the order in which the database has numbered their records.
class Declarations::Reader final : public RtiFedParserCodegen {
public:
    Reader(const RtiFedDatabase &database, Declarations &declarations)
        : _database(database), _declarations(declarations) {}

    // equivalent in this function: only for speed
    void expectDeclarations(const RtiFedDeclarationCounts &counts) override {
        const auto reserve = [this](Record::Kind kind, std::size_t count) {
            _declarations._byHandle.at(static_cast<std::size_t>(kind)).reserve(count + 1);
        };
        reserve(Record::Kind::objectClass, counts.objects.number);
        reserve(Record::Kind::attribute, counts.objects.numMembers);
        reserve(Record::Kind::interactionClass, counts.interactions.number);
        reserve(Record::Kind::parameter, counts.interactions.numMembers);
    }
    void setFederate(std::string) override {}
    void setFederateVersion(std::string) override {}
    void addSpace(std::string) override {
        add(Record::Kind::space);
        _numDimensions = 0;
    }
    void addDimension(std::string) override {
        const auto handle = static_cast<long>(_last[static_cast<std::size_t>(Record::Kind::space)]);
        const RtiFedSpace *space = _database.find(RtiSpaceHandle(handle));
        // equivalent: the number of the clause is read of duplicates only
        _declarations.add(space->getDimension(_numDimensions++), 0);
    }
    void declareObjectClass(std::string_view, std::size_t) override { add(Record::Kind::objectClass); }
    void declareObjectClassAttribute(std::string_view, std::string_view, std::string_view, std::string_view) override {
        add(Record::Kind::attribute);
    }
    void declareInteractionClass(std::string_view, std::string_view, std::string_view, std::string_view,
                                 std::size_t) override {
        add(Record::Kind::interactionClass);
    }
    void declareParameter(std::string_view) override { add(Record::Kind::parameter); }

private:
    // equivalent: the number of the clause is read of duplicates only
    void add(Record::Kind kind) { _declarations.add(Record(kind, ++_last[static_cast<std::size_t>(kind)]), 0); }

    const RtiFedDatabase &_database;
    Declarations &_declarations;
    std::array<std::size_t, 6> _last{}; // the handle of each kind that was added last. equivalent: enough for all kinds
    unsigned long _numDimensions = 0;   // of the space that was added last. equivalent: set when that was added
};

void Declarations::addAll(const RtiFedDatabase &database) {
    Reader reader(database, *this);
    _text.deliver(reader);
}

void Declarations::add(Record record, unsigned long classClause) {
    Declaration declaration{{}, classClause};
    for (std::size_t i = 0; i < kMaxArguments; ++i)
        if (_text.given(i))
            declaration.arguments[i] = _text.span(i);
    if (record._kind == Record::Kind::dimension) {
        _dimensions[record._number] = declaration;
        return;
    }
    std::vector<Declaration> &known = _byHandle.at(static_cast<std::size_t>(record._kind));
    if (known.size() <= record._number)
        // Refused declarations use up handles too. equivalent: one that is not declared has no arguments
        known.resize(record._number + 1);
    known[record._number] = declaration;
}

const Declarations::Declaration *Declarations::find(Record record) const {
    if (record._kind == Record::Kind::dimension) {
        const auto dimension = _dimensions.find(record._number);
        return dimension == _dimensions.end() ? nullptr : &dimension->second;
    }
    const std::vector<Declaration> &known = _byHandle.at(static_cast<std::size_t>(record._kind));
    return record._number < known.size() ? &known[record._number] : nullptr;
}

std::optional<RtiFedSpan> Declarations::span(Record record, Argument argument) const {
    const Declaration *const declared = find(record);
    if (!declared || declared->arguments[argument].length == 0)
        return {};
    return declared->arguments[argument];
}

std::optional<RtiFedPosition> Declarations::place(Record record) const {
    const auto found = span(record);
    return found ? std::optional(_text.positionAt(found->begin)) : std::nullopt;
}

const std::vector<RtiFedSpan> &Declarations::laterSpans(Record record) const {
    static const std::vector<RtiFedSpan> none;
    const auto later = _later.find(record.key());
    return later == _later.end() ? none : later->second;
}

std::vector<RtiFedPosition> Declarations::laterPlaces(Record record) const {
    std::vector<RtiFedPosition> places;
    for (const RtiFedSpan &span : laterSpans(record))
        places.push_back(_text.positionAt(span.begin));
    return places;
}

std::string Declarations::written(Record record, Argument argument) const {
    const auto found = span(record, argument);
    return found ? std::string(wordAt(*found)) : std::string();
}

std::string_view Declarations::wordAt(RtiFedSpan span) const {
    std::string_view word = _text.text().substr(span.begin, span.length);
    if (word.size() > 1 && word.front() == '"') // equivalent: no word is a single quote
        word = word.substr(1, word.size() - 2);
    return word;
}
