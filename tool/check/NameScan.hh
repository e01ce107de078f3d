#pragma once

#include "fed/loading/RtiFedParserCodegen.hh"
#include "fed/storage/RtiFedNameMap.hh"
#include "infrastructure/RtiFedParser.hh"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

/// Finds the names of a text that may deserve a warning, so that the warnings need not look at all others: hardly any
/// name does.
///
/// The idea: one pass over the declarations enters each name into a table by the hash of its upper case, with the first
/// place in the text where it is spelt so. A later name that is the same there but for letter case is noted. The table
/// does not know the length of the name at that place, so that, very rarely, a longer one with the same hash is taken
/// for it; all further spellings are compared with that place too, so that none is missed, but a name may be noted that
/// is spelt in one way only. A name that occurs once costs a hash and a slot of eight bytes.
class NameScan final : private RtiFedParserCodegen {
public:
    enum Kind : unsigned char { objectClass, attribute, interactionClass, parameter };

    /// The text must have no syntax errors.
    explicit NameScan(RtiFedParser &text);

    /// The number of spaces that the text declares. The database numbers them from 1; that of the MOM comes after them.
    long numSpaces() const { return _numSpaces; }
    /// Whether an attribute or interaction class of the text names the space.
    bool isUsed(std::string_view space) const { return _used.at(_spaces.find(space).number); }
    /// Whether a space may be named in other letters than it is declared.
    bool spaceSpellingsVary() const { return _spaceSpellingsVary; }

    /// Whether names of this kind may contain blanks that are not ASCII, or be spelt in several ways.
    bool anyUnusual(Kind kind) const { return _hasForeignBytes || !_spellings[kind].varied.empty(); }
    bool mayContainBlanks() const { return _hasForeignBytes; }
    /// Whether this name may be spelt in several ways.
    bool mayVary(Kind kind, const RtiFedName &name) const { return _spellings[kind].varied.count(name.hash()) > 0; }

private:
    void setFederate(std::string) override {}
    void setFederateVersion(std::string) override {}
    void addSpace(std::string name) override;
    void addDimension(std::string) override {}
    void declareObjectClass(std::string_view, std::size_t) override { add(objectClass, ownName()); }
    void declareObjectClassAttribute(std::string_view name, std::string_view, std::string_view,
                                     std::string_view space) override {
        add(attribute, name);
        use(space);
    }
    void declareInteractionClass(std::string_view, std::string_view, std::string_view, std::string_view space,
                                 std::size_t) override {
        add(interactionClass, ownName());
        use(space);
    }
    void declareParameter(std::string_view name) override { add(parameter, name); }

    /// The name of the class that is being delivered, in the text.
    std::string_view ownName() const;
    void use(std::string_view space);

    /// The names of one kind: an open-addressing table that doubles when it is three quarters full. A slot with offset
    /// 0, where no name can be, is free.
    struct Spellings {
        struct Slot {
            std::uint32_t hash, offset;
        };

        std::vector<Slot> slots;
        std::size_t size = 0;
        std::unordered_set<std::uint64_t> varied; // hashes
    };

    /// `name` must be in the text.
    void add(Kind kind, std::string_view name);
    static void grow(Spellings &spellings);

    struct Space {
        std::size_t number = 0; // of the first one of its name; 0 for none
        const char *declared = nullptr;
    };

    const RtiFedParser &_parser;
    std::string_view _text;
    bool _hasForeignBytes, _spaceSpellingsVary = false;
    std::array<Spellings, 4> _spellings;
    RtiFedNameMap<Space> _spaces;
    std::vector<bool> _used; // by number of the space
    long _numSpaces = 0;
};
