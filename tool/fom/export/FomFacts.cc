#include "tool/fom/export/FomFacts.hh"

#include "tool/fom/FomNames.hh"

#include <algorithm>

namespace {

using Kind = ClauseKind;

bool isName(std::string_view text) {
    return fomName(text) == text;
}

/// Splits the comment of a member into what it says, and the data type if its last line is one that an import wrote.
std::pair<std::string, std::string> splitComment(const std::string &text) {
    const std::size_t begin = text.rfind('\n') + 1; // 0 if there is one line
    const std::string line = text.substr(begin);
    const std::string name = line.substr(std::min(kDataTypeInComment.size(), line.size()));
    if (line != std::string(kDataTypeInComment) + name || !isName(name))
        return {text, ""};
    return {text.substr(0, begin > 0 ? begin - 1 : 0), name};
}

/// The length of a decimal number at the beginning of a text.
std::size_t numberAt(std::string_view text) {
    return std::min(text.find_first_not_of("0123456789"), text.size());
}

bool isPositive(std::string_view text) {
    return numberAt(text) == text.size() && text.find_first_not_of('0') != std::string_view::npos;
}

/// Whether a text is a default range of a dimension: a number, [A..B), [A) or Excluded.
bool isRange(std::string_view text) {
    if (text == "Excluded")
        return true;
    if (text.empty() || text.front() != '[' || text.back() != ')')
        return !text.empty() && numberAt(text) == text.size();
    text = text.substr(1, text.size() - 2);
    const std::size_t first = numberAt(text);
    if (first == 0 || first == text.size())
        return first > 0;
    const std::string_view last = text.substr(std::min(first + 2, text.size()));
    return text.substr(first, 2) == ".." && !last.empty() && numberAt(last) == last.size();
}

// clang-format off
const FomFactForm kForms[] = { // by fact
    {"dataType", "NA", {}, {Kind::attribute, Kind::parameter, Kind::dimension}, "a name that is legal in XML", isName},
    {"updateType", "NA", {"Static", "Periodic", "Conditional", "NA"}, {Kind::attribute}, nullptr, nullptr},
    {"updateCondition", "NA", {}, {Kind::attribute}, nullptr, nullptr},
    {"ownership", nullptr, {"Divest", "Acquire", "DivestAcquire", "NoTransfer"}, {Kind::attribute}, nullptr, nullptr},
    {"sharing", nullptr, {"Publish", "Subscribe", "PublishSubscribe", "Neither"},
        {Kind::objectClass, Kind::attribute, Kind::interactionClass}, nullptr, nullptr},
    {"upperBound", nullptr, {}, {Kind::dimension}, "a positive whole number", isPositive},
    {"normalization", nullptr, {}, {Kind::dimension}, nullptr, nullptr},
    {"value", nullptr, {}, {Kind::dimension}, "a number, [A..B), [A) or Excluded", isRange},
    {"semantics", "NA", {},
        {Kind::objectClass, Kind::attribute, Kind::interactionClass, Kind::parameter, Kind::space, Kind::dimension},
        nullptr, nullptr},
};
// clang-format on

constexpr std::size_t kNumFacts = std::size(kForms);

} // namespace

const FomFactForm &formOf(FomFact fact) {
    return kForms[static_cast<std::size_t>(fact)];
}

std::vector<FomFact> factsOf(ClauseKind kind) {
    std::vector<FomFact> facts;
    for (std::size_t i = 0; i < kNumFacts; ++i)
        if (std::count(kForms[i].kinds.begin(), kForms[i].kinds.end(), kind) > 0)
            facts.push_back(static_cast<FomFact>(i));
    return facts;
}

void FomFacts::set(const DeclarationRef &declaration, FomFact fact, std::string text) {
    if (text.empty())
        return;
    Known &known = _known[declaration];
    const auto at =
        std::find_if(known.begin(), known.end(), [fact](const auto &element) { return element.first == fact; });
    if (at == known.end())
        known.emplace_back(fact, std::move(text));
    else
        at->second = std::move(text);
}

void FomFacts::addComments(const DeclarationClauses &clauses) {
    clauses.forEachDocumentation([this](const DeclarationRef &declaration, const std::string &text) {
        const bool isMember = declaration.kind == Kind::attribute || declaration.kind == Kind::parameter;
        const auto [semantics, dataType] = isMember ? splitComment(text) : std::pair(text, std::string());
        set(declaration, FomFact::semantics, semantics);
        set(declaration, FomFact::dataType, dataType);
    });
}

void FomFacts::addMissing(const FomFacts &others) {
    for (const auto &[declaration, known] : others._known)
        for (const auto &[fact, text] : known)
            if (!find(of(declaration), fact))
                set(declaration, fact, text);
}

const FomFacts::Known &FomFacts::of(const DeclarationRef &declaration) const {
    static const Known nothing;
    const auto found = _known.find(declaration);
    return found == _known.end() ? nothing : found->second;
}

const std::string *FomFacts::find(const Known &known, FomFact fact) {
    for (const auto &[one, text] : known)
        if (one == fact)
            return &text;
    return nullptr;
}
