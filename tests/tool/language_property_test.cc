// What is true of the answers about any document, each question asked very often.

#include "tests/Support.hh"
#include "tool/language/Completion.hh"
#include "tool/language/Document.hh"
#include "tool/language/DocumentSymbols.hh"
#include "tool/language/Hints.hh"
#include "tool/language/Hover.hh"
#include "tool/language/NameUses.hh"
#include "tool/language/Ranges.hh"
#include "tool/language/Rename.hh"
#include "tool/language/SemanticTokens.hh"
#include "tool/language/TypeHierarchy.hh"
#include "tool/language/words/DottedNames.hh"
#include "tool/model/Outline.hh"

#include <algorithm>
#include <map>
#include <random>
#include <set>

namespace {

bool isWithin(RtiFedSpan inner, RtiFedSpan outer) {
    return outer.begin <= inner.begin && inner.begin + inner.length <= outer.begin + outer.length;
}

/// Returns a text with these edits.
std::string edited(std::string text, const std::vector<RenameEdit> &edits) {
    for (auto edit = edits.rbegin(); edit != edits.rend(); ++edit)
        text.replace(edit->replacement.span.begin, edit->replacement.span.length, edit->replacement.text);
    return text;
}

bool offers(const Completions &completions, const std::string &text) {
    return std::any_of(completions.items.begin(), completions.items.end(),
                       [&](const Completion &item) { return item.text == text; });
}

/// Asks everything about a document and collects the spans of the answers, at some offsets or all.
std::vector<RtiFedSpan> allSpans(const Document &document, std::uint32_t step) {
    std::vector<RtiFedSpan> spans;
    const auto size = static_cast<std::uint32_t>(document.text().size());
    for (const DocumentSymbol &symbol : documentSymbols(document))
        spans.insert(spans.end(), {symbol.span, symbol.nameSpan});
    for (const FoldingRange &range : foldingRanges(document))
        spans.push_back(range.span);
    for (const SemanticToken &token : semanticTokens(document))
        spans.push_back(token.span);
    for (const InlayHint &hint : inlayHints(document, {0, size}))
        spans.push_back({hint.offset, 0});
    for (const CodeLens &lens : codeLenses(document))
        spans.push_back(lens.nameSpan);
    for (std::uint32_t offset = 0; offset <= size; offset += step) {
        const auto selected = selectionAt(document, offset);
        for (std::size_t i = 1; i < selected.size(); ++i)
            EXPECT_TRUE(isWithin(selected[i - 1], selected[i]) && selected[i - 1].length < selected[i].length);
        spans.insert(spans.end(), selected.begin(), selected.end());
        const auto defined = definitionsAt(document, offset);
        spans.insert(spans.end(), defined.begin(), defined.end());
        for (const Reference &reference : referencesAt(document, offset))
            spans.push_back(reference.span);
        for (const RenameEdit &edit : rename(document, offset, "New name").edits)
            spans.push_back(edit.replacement.span);
        spans.push_back(completionsAt(document, offset, Markup::none).replaced);
        spans.push_back(hoverAt(document, offset, Markup::none).value_or(Hover()).span);
        if (const auto item = hierarchyItemAt(document, offset))
            for (const HierarchyItem &below : subclassesOf(document, item->kind, item->fullName))
                spans.insert(spans.end(), {below.span, below.nameSpan});
    }
    return spans;
}

} // namespace

TEST(LanguageProperty, AnswersWithinAnyText) {
    const auto check = [](std::string text, std::uint32_t step) {
        const Document document("a.fed", std::move(text), Settings());
        for (const RtiFedSpan &span : allSpans(document, step))
            ASSERT_LE(std::size_t(span.begin) + span.length, document.text().size()) << document.text();
    };
    std::mt19937 random(1); // NOLINT(cert-msc51-cpp): the same texts in each run
    const std::string whole = example("tolerances.fed");
    for (std::size_t size = 0; size < whole.size(); size += 331)
        check(whole.substr(0, size), 7);
    for (int i = 0; i < 50; ++i) {
        std::string text = whole;
        for (int edits = 0; edits < 3; ++edits)
            text[random() % text.size()] = "()\";. \n\0"[random() % 8];
        check(text, 61);
    }
    for (const char *name : {"harbour.fed", "tolerances.fed"}) {
        const std::string text = example(name);
        check(text, 997);
        check(text.substr(random() % text.size()), 1499);
        check(text.substr(0, random() % text.size()), 1499);
    }
}

/// Whatever is renamed, the text declares the same but for the name, and renaming back gives the same text.
TEST(LanguageProperty, RenamingKeepsTheModel) {
    const std::string text =
        replaced(example("harbour.fed"), "(FED", "; Craft.Position GasTanker.Draught RadioTraffic.sector\n(FED");
    const Document document("a.fed", text, Settings());
    std::size_t numRenamed = 0;
    for (Entities::Index i = 0; i < document.entities().size(); i += 3) {
        const RtiFedSpan place = document.entities()[i].place;
        const Renaming renaming = rename(document, place.begin, "Renamed");
        if (!renaming.refusal.empty())
            continue;
        ++numRenamed;
        const Document after("a.fed", edited(text, renaming.edits), Settings());
        ASSERT_TRUE(after.checker().findsNoError()) << document.entities().path(i);
        ASSERT_EQ(after.entities().size(), document.entities().size());
        EXPECT_EQ(after.entities()[i].name, "Renamed");
        const Renaming back = rename(after, after.entities()[i].place.begin, document.entities()[i].name);
        EXPECT_EQ(edited(std::string(after.text()), back.edits), text) << document.entities().path(i) << back.refusal;
    }
    EXPECT_GT(numRenamed, 50u);
}

/// What the RTI uses is explained, coloured so, and keeps its name.
TEST(LanguageProperty, TheMomIsKnown) {
    const Document document("a.fed", example("minimal.fed"), Settings());
    const Entities &entities = document.entities();
    std::set<std::uint32_t> library;
    for (const SemanticToken &token : semanticTokens(document))
        if ((token.modifiers & defaultLibraryToken) != 0)
            library.insert(token.span.begin);
    for (Entities::Index i = 0; i < entities.size(); ++i) {
        const RtiFedSpan place = entities[i].place;
        if (place.length == 0) // the space of the MOM
            continue;
        EXPECT_NE(renameAt(document, place.begin).refusal, "") << entities.path(i);
        EXPECT_EQ(library.count(place.begin), 1u) << entities.path(i);
        const std::string text = hoverAt(document, place.begin, Markup::none).value_or(Hover()).text;
        EXPECT_EQ(text.back(), '.') << text; // of the explanation
    }
}

/// Each class of the MOM that is taken out is offered again, and inserting it gives a model that loads.
TEST(LanguageProperty, CompletionRestoresTheMom) {
    const std::string text = example("minimal.fed");
    const Document document("a.fed", text, Settings());
    const Entities &entities = document.entities();
    for (Entities::Index i = 0; i < entities.size(); ++i) {
        const auto clause = document.tree().clauseAt(entities[i].place.begin);
        if (!isClass(entities[i].kind) || entities.path(i).find("Manager.") == std::string::npos)
            continue;
        const RtiFedSpan span = document.tree().span(clause);
        const Document without("a.fed", std::string(text).erase(span.begin, span.length), Settings());
        const Completions offered = completionsAt(without, span.begin, Markup::none);
        const std::string label = "class " + std::string(entities[i].name);
        const auto item = std::find_if(offered.items.begin(), offered.items.end(),
                                       [&](const Completion &other) { return other.label == label; });
        ASSERT_NE(item, offered.items.end()) << label;
        const Document again("a.fed", std::string(without.text()).insert(span.begin, item->text), Settings());
        EXPECT_TRUE(again.checker().findsNoError()) << item->text;
    }
}

/// Where a text ends before a keyword, transportation, ordering or space, this word is offered.
TEST(LanguageProperty, CompletionOffersTheNextWord) {
    const std::string text = example("harbour.fed");
    const Document document("a.fed", text, Settings());
    const SyntaxTree &tree = document.tree();
    std::map<WordRole, std::size_t> numChecked;
    forEachToken(tree, [&](SyntaxTree::Index token, SyntaxTree::Index clause, std::size_t word) {
        const WordRole role = word == kNoWord ? WordRole::none : roleOf(document.clauses()[clause].kind, word);
        if (role == WordRole::none || role == WordRole::name || role == WordRole::value || token % 7 != 0)
            return;
        ++numChecked[role];
        const std::string before = text.substr(0, tree.begin(token));
        const Document cut("a.fed", before, Settings());
        EXPECT_TRUE(offers(completionsAt(cut, tree.begin(token), Markup::none), std::string(tree.bytes(token))))
            << before.substr(before.size() - 100) << "^" << tree.bytes(token);
    });
    EXPECT_EQ(numChecked.size(), 4u);
}

/// The entities are those of the outline that `find` and `tree` show, and each end of a path with a dot means its
/// entity, also where a subclass inherits it.
TEST(LanguageProperty, EachPathMeansItsEntity) {
    const Document document("a.fed", example("harbour.fed"), Settings());
    const Entities &entities = document.entities();
    const Outline outline(document.database(), &document.declarations(), true);
    std::map<std::string, std::size_t> numDescendants;
    for (const TreeKind *tree : kTreeKinds)
        for (const Outline::Class &node : outline.classes(*tree))
            numDescendants[node.name] = node.numDescendants;
    const auto means = [&](const std::string &path, Entities::Index entity) {
        const auto words = dottedWordsIn(path, {0, static_cast<std::uint32_t>(path.size())});
        const auto meanings = words.size() == 1 ? meaningsOf(entities, path, words[0]) : std::vector<DottedMeaning>();
        return std::any_of(meanings.begin(), meanings.end(),
                           [entity](const DottedMeaning &meaning) { return meaning.back().entity == entity; });
    };
    for (Entities::Index i = 0; i < entities.size(); ++i) {
        const std::string path = entities.path(i);
        if (isClass(entities[i].kind)) {
            EXPECT_EQ(entities[i].numDescendants, numDescendants.at(path)) << path;
        }
        for (std::size_t at = 0; path.find('.', at) != std::string::npos; at = path.find('.', at) + 1)
            EXPECT_TRUE(means(path.substr(at), i)) << path.substr(at);
        if (entities[i].kind == ClauseKind::attribute || entities[i].kind == ClauseKind::parameter) {
            for (Entities::Index sub = entities[entities[i].owner].firstSubclass; sub != Entities::kNone;
                 sub = entities[sub].nextSibling)
                EXPECT_TRUE(means(entities.path(sub) + '.' + std::string(entities[i].name), i)) << path;
        }
    }
}

/// Outline, colours and the checker agree about what a text declares and where.
TEST(LanguageProperty, AllViewsAgree) {
    const Document document("a.fed", example("harbour.fed"), Settings());
    std::map<std::uint32_t, RtiFedSpan> symbols;
    const std::vector<DocumentSymbol> outline = documentSymbols(document);
    for (const DocumentSymbol &symbol : outline) {
        symbols[symbol.nameSpan.begin] = symbol.span;
        EXPECT_TRUE(isWithin(symbol.nameSpan, symbol.span)) << symbol.name;
        if (symbol.parent != DocumentSymbol::kNone) {
            EXPECT_TRUE(isWithin(symbol.span, outline.at(symbol.parent).span)) << symbol.name;
        }
    }
    std::set<std::uint32_t> declared;
    for (const SemanticToken &token : semanticTokens(document))
        if ((token.modifiers & declarationToken) != 0)
            declared.insert(token.span.begin);
    for (const Entities::Place &place : document.entities().places()) {
        EXPECT_EQ(declared.count(place.span.begin), 1u);
        EXPECT_EQ(symbols.count(place.span.begin), 1u);
    }
    EXPECT_EQ(declared.size(), document.entities().places().size() + 1); // and the federation
}

/// The parser accepts each clause in each place where the table of clauses has it, with the words that it requires.
TEST(LanguageProperty, KnowsTheGrammar) {
    const auto clauseOf = [](ClauseKind kind, const std::string &inner) {
        std::string text = "(" + std::string(formOf(kind).keyword);
        for (std::size_t i = 0; i < formOf(kind).numRequired; ++i)
            text += " w";
        return text + inner + ")";
    };
    const auto check = [&](const auto &self, ClauseKind kind, const std::string &before,
                           const std::string &after) -> void {
        for (const ClauseKind child : formOf(kind).children) {
            if (child == ClauseKind::unknown || (child == kind && before.size() > 200))
                continue;
            const std::string needed =
                kind != ClauseKind::fed || child == ClauseKind::federation ? "" : "(Federation w)";
            const std::string version = kind != ClauseKind::fed || child == ClauseKind::version ? "" : "(FEDversion w)";
            const std::string whole = before + needed + version + clauseOf(child, "") + after;
            EXPECT_EQ(RtiFedParser(whole).numErrors(), 0u) << whole;
            std::string open = clauseOf(child, "");
            open.pop_back();
            self(self, child, before + needed + version + open, ")" + after);
        }
    };
    check(check, ClauseKind::fed, "(FED", ")");
}
