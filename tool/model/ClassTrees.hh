#pragma once

#include "fed/RtiFedDatabase.hh"
#include "fed/mom/RtiFedDatabaseMomVerifier.hh"
#include "tool/model/TreeKind.hh"

#include <string_view>

/// The two class trees of a database under one interface, for templates that work on either.
struct Objects {
    using Node = RtiFedObjectClass;
    using Member = RtiFedAttribute;
    static constexpr const TreeKind &kind = kObjectTree;

    static Node *find(const RtiFedDatabase &db, std::string_view name) {
        return db.objectClassExists(name) ? db.find(db.getObjectClassHandle(name)) : nullptr;
    }
    static Member *findMember(const Node &node, std::string_view name) {
        return node.attributeExists(name) ? node.find(node.getAttributeHandle(name)) : nullptr;
    }
    static auto handles(const RtiFedDatabase &db) { return db.getObjectClassHandleSet(); }
    static auto missing(const RtiFedDatabase &db) { return RtiFedDatabaseMomVerifier::missingObjectClasses(db); }
};

struct Interactions {
    using Node = RtiFedInteractionClass;
    using Member = RtiFedParameter;
    static constexpr const TreeKind &kind = kInteractionTree;

    static Node *find(const RtiFedDatabase &db, std::string_view name) {
        return db.interactionClassExists(name) ? db.find(db.getInteractionClassHandle(name)) : nullptr;
    }
    static Member *findMember(const Node &node, std::string_view name) { return node.findParameter(name); }
    static auto handles(const RtiFedDatabase &db) { return db.getInteractionClassHandleSet(); }
    static auto missing(const RtiFedDatabase &db) { return RtiFedDatabaseMomVerifier::missingInteractionClasses(db); }
};
