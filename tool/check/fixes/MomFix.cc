#include "tool/check/fixes/MomFix.hh"

#include "tool/check/mom/MomMatch.hh"
#include "tool/model/MomText.hh"

#include <algorithm>
#include <set>

namespace {

/// Adds what one tree lacks. The finding says which gaps are meant: by the places of the classes that have them, or of
/// the section if there is no such class.
template <class Tree>
class MomInsertion {
public:
    MomInsertion(const Checker &text, SyntaxEdits &edits) : _text(text), _match(text.database()), _edits(edits) {}

    bool isElsewhere() const {
        return std::any_of(_match.all().begin(), _match.all().end(),
                           [](const Match &match) { return match.how == How::elsewhere; });
    }

    /// New classes are the last ones of their superclass, so that no class of the text gets another handle.
    void addAt(const std::set<std::uint32_t> &places) {
        if (!_match.root().node) {
            const RtiFedSpan section = _text.parser().section(kSection);
            if (places.count(section.begin) > 0)
                addRoot(_text.tree().clauseAt(section.begin));
            return;
        }
        for (const Match &match : _match.all())
            if (match.required) {
                if (places.count(placeOf(match)) > 0)
                    add(match);
                addMisspeltMembers(match, places);
            }
    }

private:
    using Match = typename MomMatch<Tree>::Match;
    using How = typename MomMatch<Tree>::How;
    using Index = SyntaxTree::Index;
    static constexpr bool kHasObjects = Tree::kind.membersHaveProperties;
    static constexpr const char *kSection = kHasObjects ? "objects" : "interactions";
    static constexpr const char *kMember = kHasObjects ? "attribute" : "parameter";

    /// The place that a finding about what is missing has.
    std::uint32_t placeOf(const Match &match) const {
        const Match *existing = &match;
        while (!existing->node) // ends at the root, which the text has
            existing = existing->owner;
        return _text.declarations().span(existing->node)->begin;
    }

    void addRoot(Index clause) {
        const std::string root = rootClass(Tree::kind);
        if (_text.tree().keyword(clause) == kSection)
            return _edits.insertInto(clause, root);
        std::string section = std::string("(") + kSection;
        for (const std::string &line : split(root, '\n'))
            section += "\n  " + line;
        _edits.insertInto(clause, section + "\n)");
    }

    void add(const Match &match) {
        const Index clause = _text.tree().clauseAt(placeOf(match));
        if (match.how == How::misspelt && !isSure(*match.node, match.name)) {
            const RtiFedSpan owner = *_text.declarations().span(match.existingOwner()->node);
            _edits.insertInto(_text.tree().clauseAt(owner.begin), momClass(Tree::kind, match.required->className));
        } else if (match.how != How::missing) {
            for (const std::string &member : match.missingMembers)
                addMember(clause, member);
        } else if (match.owner->how != How::missing) { // else it comes with its superclass
            _edits.insertInto(clause, momClass(Tree::kind, match.required->className));
        }
    }

    /// Adds the members that others are spelt like.
    void addMisspeltMembers(const Match &match, const std::set<std::uint32_t> &places) {
        for (const auto &[member, meant] : match.misspeltMembers)
            if (places.count(_text.declarations().span(member)->begin) > 0) // else the name is replaced, or not meant
                addMember(_text.tree().clauseAt(placeOf(match)), meant);
    }

    template <class Record>
    static bool isSure(const Record &record, const std::string &meant) {
        return bestOf(lastComponent(record.getName()), {meant}).isSure;
    }

    /// Adds a member after the last one of its class, and in its column.
    void addMember(Index clause, const std::string &member) {
        const auto &clauses = _text.tree().clauses();
        Index last = SyntaxTree::kNone;
        for (Index child = clause + 1; child < clauses[clause].end; child = clauses[child].end)
            if (_text.tree().keyword(child) == kMember)
                last = child;
        if (last == SyntaxTree::kNone)
            return _edits.insertFirst(clause, momMember(Tree::kind, member));
        const std::vector<Index> words = _text.tree().words(last);
        const std::size_t width =
            words.size() > 2 ? _text.tree().begin(words[2]) - _text.tree().begin(words[1]) - 1 : 0;
        _edits.insertAfter(last, momMember(Tree::kind, member, width <= kNameLimit ? width : 0));
    }

    const Checker &_text;
    const MomMatch<Tree> _match;
    SyntaxEdits &_edits;
};

} // namespace

void addMissingMom(const Checker &text, const Finding &finding, SyntaxEdits &edits) {
    if (text.finds(RuleId::shiftedWords))
        return;
    MomInsertion<Objects> objects(text, edits);
    MomInsertion<Interactions> interactions(text, edits);
    if (objects.isElsewhere() || interactions.isElsewhere())
        return;
    std::set<std::uint32_t> places = {finding.span->begin};
    for (const RtiFedParser::Note &note : finding.notes) // the other tree
        places.insert(note.span.begin);
    objects.addAt(places);
    interactions.addAt(places);
}
