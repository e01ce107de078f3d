#pragma once

#include "tool/fom/import/FomModel.hh"
#include "tool/fom/import/FomModules.hh"

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>

/// What all modules of a model declare outside of the class trees.
struct FomTables {
    std::unordered_map<std::string, FomText> transportations; ///< The word in FED of each, where it is declared.
    std::unordered_map<std::string, std::size_t> dimensions;  ///< Their indices in the model.
};

/// Reads one of the class trees from all modules of a model.
///
/// The idea: a class is known by its superclass and its name. A class of which a module says no more than its name is a
/// scaffold: another module defines it. Definitions in two modules must be the same. The contents of a class without a
/// name count as those of the enclosing class, so that a comparison shows what else is different.
class FomTreeReader {
public:
    FomTreeReader(FomModules &modules, FomModel &model, const FomTables &tables, const FomTree &tree);

    /// Reads the section of a module that has the tree.
    void read(std::size_t module, pugi::xml_node section);

    /// Checks, after all modules are read, that each class is defined; completes a class that has the name of the MOM
    /// of FED; and drops members that a superclass has too.
    void finish();

private:
    struct Known {
        FomDelivery &delivery;
        const FomPlace &place; // of what has it
    };

    /// The key of a class or member: its owner, and its name in upper case, since names in FED match in any letter
    /// case.
    static std::string keyOf(std::size_t owner, std::string_view name);
    FomClass &at(std::size_t index) { return _classes[index]; }
    void readClass(pugi::xml_node element, std::size_t parent, std::size_t depth);
    void readContents(pugi::xml_node element, const FomText &name, std::size_t index, std::size_t depth);
    std::size_t classFor(const FomText &name, std::size_t parent);
    std::size_t rootFor(const FomText &name);
    /// Adds a class. Returns its index, or FomClass::kNone if the names are too long.
    std::size_t addClass(const FomText &name, std::size_t parent);
    bool isLeftOut(const FomText &name, std::size_t parent);
    FomClass draftOf(pugi::xml_node element, std::size_t index);
    FomMember readMember(pugi::xml_node element, std::size_t index);
    bool readDelivery(pugi::xml_node element, FomDelivery &delivery);
    FomText readWord(pugi::xml_node element, RuleId rule);
    void readDimensions(pugi::xml_node element, FomDelivery &delivery);
    FomText nameIn(pugi::xml_node element, const char *what);
    FomPlace placeOf(pugi::xml_node element) const;
    FomPlace contentPlace(pugi::xml_node element) const;
    std::string describe(const FomClass &node) const;

    void merge(std::size_t index, FomClass draft, bool isRepeated);
    void takeMembers(std::size_t index, FomClass &draft, bool isRepeated);
    void compareMembers(std::size_t index, const FomClass &draft);
    void mergeDelivery(Known known, const FomDelivery &more, const FomPlace &place, const std::string &what,
                       bool isComplete);
    void checkDefinition(const FomClass &node);
    void checkDelivery(const FomText &name, const FomDelivery &delivery, const std::string &what);
    void addMom();
    void addPrivilege();
    bool hasMember(std::size_t index, const std::string &name) const;
    void dropRedeclared(std::size_t index, std::unordered_map<std::string, const FomMember *> &inherited);

    FomModules &_modules;
    FomModel &_model;
    const FomTables &_tables;
    const FomTree &_tree;
    FomClasses &_classes;
    std::size_t _module = 0;                                // that is being read
    std::unordered_map<std::string, std::size_t> _children; // by the superclass and the name in upper case
    std::unordered_map<std::string, std::size_t> _members;  // by the class and the name in upper case
};
