#include "tool/console/Line.hh"
#include "tool/console/Text.hh"
#include "tool/fom/export/TypesFile.hh"
#include "tool/fom/export/TypesNames.hh"

#include <algorithm>

namespace {

constexpr const char *kAbout =
    R"(# What an object model of IEEE 1516 says and the FED does not, for rtifed export --types. Fill in the empty texts; what
# stays empty is exported as not known, but for privilegeToDelete, which the standard describes. Further keys, which may
# be added:
#   of an object class       sharing, semantics
#   of an attribute          dataType, updateType, updateCondition, ownership, sharing, semantics
#   of an interaction class  sharing, semantics
#   of a parameter           dataType, semantics
#   of a dimension           dataType, upperBound, normalization, value, semantics
# sharing is Publish, Subscribe, PublishSubscribe or Neither; updateType Static, Periodic, Conditional or NA; ownership
# Divest, Acquire, DivestAcquire or NoTransfer. Comments of the FED are the semantics unless others are given here.
)";

constexpr std::size_t kNameColumn = 30;     // a longer name does not move the column of the values
constexpr std::size_t kCommentLength = 100; // in bytes

/// Returns a text as a string of TOML.
std::string tomlString(std::string_view text) {
    std::string string = "\"";
    for (const char byte : text)
        if (byte == '"' || byte == '\\')
            string.append("\\").append(1, byte);
        else if (byte == '\n')
            string += "\\n";
        else if (static_cast<unsigned char>(byte) < ' ' || byte == 0x7F)
            string += "\\u00" + hexDigits(static_cast<unsigned char>(byte));
        else
            string += byte;
    return string + '"';
}

/// Returns a name as a key of TOML.
std::string keyOf(const std::string &key) {
    const bool isBare = !key.empty() && std::all_of(key.begin(), key.end(), [](char byte) {
        return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || (byte >= '0' && byte <= '9') ||
               byte == '_' || byte == '-';
    });
    return isBare ? key : tomlString(key);
}

/// The facts that the template names also where they are not known.
std::vector<FomFact> wantedOf(ClauseKind kind) {
    switch (kind) {
    case ClauseKind::objectClass:
    case ClauseKind::interactionClass:
        return {FomFact::sharing};
    case ClauseKind::dimension:
        return {FomFact::dataType, FomFact::upperBound};
    case ClauseKind::space:
        return {};
    default:
        return {FomFact::dataType};
    }
}

/// Returns KEY = "TEXT" for each fact that is known or wanted. Comments give data types.
std::vector<std::string> assignments(ClauseKind kind, const FomFacts::Known &known, const FomFacts::Known &comments) {
    const std::vector<FomFact> wanted = wantedOf(kind);
    const auto find = [&](FomFact fact) {
        const std::string *text = FomFacts::find(known, fact);
        return text || fact != FomFact::dataType ? text : FomFacts::find(comments, fact);
    };
    std::vector<std::string> all;
    for (const FomFact fact : factsOf(kind))
        if (const std::string *text = find(fact); text || std::count(wanted.begin(), wanted.end(), fact) > 0)
            all.push_back(std::string(formOf(fact).name) + " = " + (text ? tomlString(*text) : "\"\""));
    return all;
}

/// Returns what a comment of the FED says as the end of a line.
std::string asComment(const FomFacts::Known &comments) {
    const std::string *text = FomFacts::find(comments, FomFact::semantics);
    if (!text)
        return {};
    std::string line = *text;
    std::replace_if(
        line.begin(), line.end(), [](char byte) { return byte >= 0 && byte < ' '; }, ' ');
    return "  # " + shown(line, kCommentLength);
}

std::string membersOf(const TypesSection &section, const TypesOwner &owner, const FomFacts &known,
                      const FomFacts &comments) {
    std::size_t width = 0;
    for (const std::string &member : owner.members)
        if (const std::size_t size = columns(keyOf(member)); size <= kNameColumn)
            width = std::max(width, size);
    std::string text;
    for (std::size_t i = 0; i < owner.members.size(); ++i) {
        const DeclarationRef ref = owner.member(section.memberKind, i);
        std::string key = keyOf(owner.members[i]);
        key.append(width - std::min(columns(key), width), ' ');
        text += std::string(section.membersKey) + '.' + key + " = { " +
                joined(assignments(section.memberKind, known.of(ref), comments.of(ref))) + " }" +
                asComment(comments.of(ref)) + '\n';
    }
    return text;
}

} // namespace

std::string typesTemplate(const Outline &outline, const ExportPlan &plan, const FomFacts &known,
                          const FomFacts &comments) {
    std::string text = kAbout;
    for (const TypesSection &section : kTypesSections)
        for (const TypesOwner &owner : typesOwners(section, outline, plan)) {
            text += '\n';
            text += std::string("[") + section.key + '.' + keyOf(owner.name) + ']' + asComment(comments.of(owner.ref)) +
                    '\n';
            for (const std::string &assignment : assignments(section.kind, known.of(owner.ref), comments.of(owner.ref)))
                text += assignment + '\n';
            text += membersOf(section, owner, known, comments);
        }
    return text;
}
