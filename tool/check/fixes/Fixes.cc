#include "tool/check/fixes/Fixes.hh"

#include "tool/check/Suggestion.hh"
#include "tool/check/fixes/MomFix.hh"
#include "tool/model/DeliveryWords.hh"

#include <algorithm>
#include <filesystem>

namespace {

using Index = SyntaxTree::Index;
using Kind = SyntaxTree::Kind;

class FixMaker {
public:
    explicit FixMaker(const CheckedFile &file) : _file(file), _tree(file.text->tree()), _edits(_tree) {}

    Fix fixOf(const Finding &finding) {
        Fix fix = planFor(finding);
        fix.edits = _edits.take();
        return fix.empty() ? Fix() : fix;
    }

    /// Whether a fix may not look as the text does: one that writes a keyword or a ")".
    static bool canAdapt(const Finding &finding) {
        return finding.rule == &ruleOf(RtiFedParser::expectedClause) || finding.rule == &ruleOf(RtiFedParser::leftOpen);
    }

    void adapt(Finding &finding) {
        Replacement &edit = finding.fix.edits.front();
        if (finding.rule == &ruleOf(RtiFedParser::expectedClause)) {
            edit.text = _edits.spelt(edit.text);
            return;
        }
        const Index clause = _tree.clauseAt(finding.span->begin);
        // unreached: the layout shows where a ")" is missing only in texts whose clauses and words the tree has as the
        // parser
        const bool isInWord =
            edit.span.begin < _tree.text().size() && _tree.begin(_tree.tokenAt(edit.span.begin)) != edit.span.begin;
        // unreached: likewise
        if (clause == SyntaxTree::kNone || isInWord) {
            finding.fix = {};
            return;
        }
        _edits.insertClose(clause, edit.span.begin);
        finding.fix.edits = _edits.take();
    }

private:
    /// Makes the edits, and says what they do; the edits are still to be taken. In a text that does not parse, a clause
    /// of the tree may be another one than the parser's, so that only the ends of the text and repeated sections are
    /// edited there.
    Fix planFor(const Finding &finding) {
        const auto is = [&finding](auto id) { return finding.rule == &ruleOf(id); };
        if (is(RtiFedParser::missingClause))
            return addMissingClause(finding);
        if (is(RtiFedParser::secondClause))
            return joinRepeated(finding);
        if (is(RtiFedParser::leftOpen))
            return _tree.clauseAt(finding.span->begin) == 0 ? closeText() : closeMember(finding);
        if (is(RtiFedParser::trailingText))
            return removeLastClose(finding);
        if (_file.text->parser().numErrors() > 0)
            return {};
        if (is(RuleId::inheritedMember) || is(RuleId::repeatedMember) || is(RuleId::repeatedDimension))
            return removeRepeated(finding);
        if (is(RuleId::momIncomplete))
            return addMom(finding);
        if (is(RuleId::unusedSpace))
            return removeSpace(finding);
        if (is(RuleId::noPrivilegeToDelete))
            return addToRoot(finding, "(attribute privilegeToDelete reliable timestamp)");
        if (is(RuleId::noRtiPrivate))
            return addToRoot(finding, "(class RTIprivate" + deliveryOfRoot(finding) + ')');
        return {};
    }

    /// Whether each parenthesis has its partner, and all is in FED. To be called if the parser found "(FED", before
    /// which no parenthesis is.
    bool isBalanced() const {
        const auto &clauses = _tree.clauses();
        std::size_t numCloses = 0;
        // equivalent: the first token is no ")", nor is what follows the last one
        for (Index token = 0; token < _tree.numTokens(); ++token)
            numCloses += _tree.kind(token) == Kind::close ? 1 : 0;
        return clauses[0].end == clauses.size() && numCloses == clauses.size();
    }

    /// The first declaration stays, so nothing is taken away if the later one says the same.
    Fix removeRepeated(const Finding &finding) {
        const Index clause = declaring(*finding.span), first = declaring(finding.notes.front().span);
        const bool isSame = meaningsIn(clause) == meaningsIn(first);
        const bool isInherited = finding.rule == &ruleOf(RuleId::inheritedMember);
        std::string text = "remove this " + std::string(_tree.keyword(clause)) + ' ' + inQuotes(nameOf(finding));
        if (!isSame)
            text += ", which differs: " +
                    shown(_tree.text().substr(_tree.span(clause).begin, _tree.span(clause).length), kTextLimit);
        else
            text += isInherited ? ", which the class inherits" : ", which repeats the first one";
        removeAllowComments(clause);
        if (_edits.removeClause(clause))
            text += "; its comments stay";
        return {{}, isSame && finding.rule != &ruleOf(RuleId::repeatedDimension), std::move(text)};
    }

    /// Removes the comments above a clause that allow rules in it: they would allow them in the next one.
    void removeAllowComments(Index clause) {
        for (Index token = _tree.clauses()[clause].open; token-- > 0;) { // unreached: the "(" of FED comes before
            if (SyntaxTree::isSpace(_tree.kind(token)))
                continue;
            if (_tree.kind(token) != Kind::comment || !indentationOf(_tree, token) ||
                _tree.bytes(token).find("rtifed: allow") == std::string_view::npos)
                return;
            _edits.removeLine(token);
        }
    }

    Fix addMom(const Finding &finding) {
        addMissingMom(*_file.text, finding, _edits);
        std::size_t numDeclarations = 0;
        for (const Replacement &edit : _edits.replacements())
            numDeclarations += static_cast<std::size_t>(std::count(edit.text.begin(), edit.text.end(), '('));
        return {{}, true, "add what is missing of the MOM, " + counted(numDeclarations, "declaration")};
    }

    /// A federation that has no name gets that of the file. In a text with other errors, the clause may be there, or
    /// the place where it is added may be in another clause.
    Fix addMissingClause(const Finding &finding) {
        if (!isBalanced())
            return {};
        const RtiFedParser &parser = _file.text->parser();
        // equivalent: only a foreign comment before FED is before it, and is fixed as well
        for (std::size_t i = 0; i < parser.numErrors(); ++i)
            if (parser.error(i).problem != RtiFedParser::missingClause)
                return {};
        const std::string name = std::filesystem::path(_file.name).stem().string();
        const Index federation = childOf(0, "Federation");
        if (finding.text.find("\"FEDversion\"") != std::string::npos) {
            if (federation == SyntaxTree::kNone) // it is added first
                return {};
            _edits.insertAfter(federation, "(FEDversion v1.3)");
            return {{}, true, "add (FEDversion v1.3)"};
        }
        if (name[0] == '-' || name[0] == '.' || name[0] == '<' || name.size() > kNameLimit || shown(name) != name ||
            name.find('"') != std::string::npos)
            return {};
        const std::string clause = "(Federation " + asWord(name) + ')';
        _edits.insertFirst(0, clause);
        return {{}, true, "add " + clause + ", named after the file"};
    }

    /// Sections are joined; a repeated name or version is dropped if it is the same.
    Fix joinRepeated(const Finding &finding) {
        if (!isBalanced())
            return {};
        const Index second = beginningAt(finding.span->begin);
        const Index first = beginningAt(finding.notes.front().span.begin);
        // unreached: repairs that the tree does not have leave the parentheses unbalanced
        if (second == SyntaxTree::kNone || first == SyntaxTree::kNone)
            return {};
        const std::string keyword(_tree.keyword(second));
        // unreached: likewise, for clauses that the parser takes for others
        if (_tree.keyword(first) != keyword || _tree.clauses()[first].parent != 0 ||
            _tree.clauses()[second].parent != 0)
            return {};
        if (keyword == "spaces" || keyword == "objects" || keyword == "interactions") {
            _edits.moveContents(second, first);
            return {{}, true, "move what is in this \"" + keyword + "\" into the first one"};
        }
        if (meaningsIn(first) != meaningsIn(second))
            return {};
        _edits.removeClause(second);
        return {{}, true, "remove this \"" + keyword + "\", which repeats the first one"};
    }

    /// The last ")" of a text was lost.
    Fix closeText() {
        const auto isOpen = [this](const SyntaxTree::Clause &clause) { return clause.close == _tree.numTokens(); };
        const auto &clauses = _tree.clauses();
        // unreached: an open clause in FED leaves FED open
        const bool onlyFed = std::count_if(clauses.begin(), clauses.end(), isOpen) == 1 && isOpen(clauses[0]);
        if (!onlyFed || _file.text->parser().numErrors() > 1)
            return {};
        _edits.appendLine(")");
        return {{}, false, "add a \")\" at the end"};
    }

    /// All words of a clause are there, but another clause begins before its ")".
    Fix closeMember(const Finding &finding) {
        const Index clause = beginningAt(finding.span->begin);
        // unreached: no repair is known that makes a clause in which only a ")" is missing
        if (clause == SyntaxTree::kNone || !_tree.hasClauses(clause) || _tree.keyword(clause + 1) == "sec_level")
            return {};
        const std::string_view keyword = _tree.keyword(clause);
        const std::vector<Index> words = _tree.words(clause);
        const bool isMember = keyword == "parameter" || keyword == "dimension";
        if (!(isMember && words.size() == 2) && !(keyword == "attribute" && words.size() >= 4 && words.size() <= 5))
            return {};
        _edits.replace({_tree.end(words.back()), 0}, ")");
        return {{}, false, "add a \")\" after " + inQuotes(_tree.bytes(words.back()))};
    }

    /// Nothing but ")" follows the end of FED.
    Fix removeLastClose(const Finding &finding) {
        Index close = SyntaxTree::kNone;
        // unreached: the finding is after the first token, and at a word or parenthesis
        for (Index token = _tree.numTokens(); token-- > 0 && _tree.begin(token) >= finding.span->begin;) {
            if (_tree.kind(token) == Kind::close)
                close = token;
            else if (!SyntaxTree::isSpace(_tree.kind(token)) && _tree.kind(token) != Kind::comment)
                return {};
        }
        if (close != SyntaxTree::kNone)
            _edits.removeToken(close);
        return {};
    }

    Fix removeSpace(const Finding &finding) {
        const Index space = declaring(*finding.span);
        _edits.removeClause(space);
        return {{}, false, "remove the space " + inQuotes(nameOf(finding))};
    }

    Fix addToRoot(const Finding &finding, const std::string &clause) {
        const Index root = declaring(*finding.span);
        Index last = SyntaxTree::kNone; // of the members, which come before the classes
        const auto &clauses = _tree.clauses();
        for (Index child = root + 1; child < clauses[root].end && _tree.keyword(child) != "class";
             child = clauses[child].end)
            last = child;
        if (last == SyntaxTree::kNone)
            _edits.insertFirst(root, clause);
        else
            _edits.insertAfter(last, clause);
        return {{}, false, "add " + clause};
    }

    /// The transportation and ordering of a root; nothing if it is an object class.
    std::string deliveryOfRoot(const Finding &finding) const {
        std::string delivery;
        const std::vector<Index> words = _tree.words(declaring(*finding.span));
        for (std::size_t i = 2; i < std::min<std::size_t>(words.size(), 4); ++i)
            delivery += ' ' + std::string(_tree.bytes(words[i]));
        return delivery;
    }

    /// Returns the clause that begins at an offset, or kNone: the parser repairs clauses that the tree does not have.
    Index beginningAt(std::uint32_t offset) const {
        const Index clause = _tree.clauseAt(offset);
        // unreached: no repair is known for which the tree and the parser differ here
        return clause != SyntaxTree::kNone && _tree.begin(_tree.clauses()[clause].open) == offset ? clause
                                                                                                  : SyntaxTree::kNone;
    }

    /// Returns the clause that has this name. In a text without syntax errors, the clauses are those of the parser.
    Index declaring(RtiFedSpan name) const { return _tree.clauseAt(name.begin); }

    std::string_view nameOf(const Finding &finding) const { return _file.text->declarations().wordAt(*finding.span); }

    std::vector<std::string> meaningsIn(Index clause) const {
        std::vector<std::string> meanings;
        // equivalent: a parenthesis is no word
        for (Index token = _tree.clauses()[clause].open; token < _tree.clauses()[clause].close; ++token)
            if (SyntaxTree::isWord(_tree.kind(token)))
                meanings.push_back(meaningOf(
                    _file.text->declarations().wordAt({_tree.begin(token), _tree.end(token) - _tree.begin(token)})));
        return meanings;
    }

    Index childOf(Index parent, std::string_view keyword) const {
        const auto &clauses = _tree.clauses();
        for (Index child = parent + 1; child < clauses[parent].end; child = clauses[child].end)
            if (_tree.keyword(child) == keyword)
                return child;
        return SyntaxTree::kNone;
    }

    const CheckedFile &_file;
    const SyntaxTree &_tree;
    SyntaxEdits _edits;
};

} // namespace

void addFixes(CheckedFile &file) {
    std::optional<FixMaker> maker; // most files need none, and no tree
    for (Finding &finding : file.findings) {
        if (!finding.fix.empty() && !FixMaker::canAdapt(finding))
            continue;
        if (!maker)
            maker.emplace(file);
        if (finding.fix.empty())
            finding.fix = maker->fixOf(finding);
        else
            maker->adapt(finding);
    }
}
