#pragma once

#include "tool/language/ClauseForm.hh"

/// Returns the number by which the protocol knows the kind of symbol that is most like what a clause declares.
inline int symbolKindOf(ClauseKind kind) {
    enum Kinds { nameSpace = 3, package = 4, classKind = 5, property = 7, field = 8, object = 19, event = 24 };
    switch (kind) {
    case ClauseKind::federation:
        return package;
    case ClauseKind::federate:
        return object;
    case ClauseKind::space:
    case ClauseKind::spaces:
    case ClauseKind::objects:
    case ClauseKind::interactions:
        return nameSpace;
    case ClauseKind::objectClass:
        return classKind;
    case ClauseKind::interactionClass:
        return event;
    case ClauseKind::attribute:
        return property;
    default: // a parameter or dimension: no other clause is a symbol
        return field;
    }
}
