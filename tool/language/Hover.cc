#include "tool/language/Hover.hh"

#include "fed/storage/RtiFedName.hh"
#include "tool/language/Document.hh"
#include "tool/language/HoverText.hh"
#include "tool/language/NameUses.hh"
#include "tool/language/words/Comments.hh"

namespace {

using Index = SyntaxTree::Index;

std::string explanationOfDelivery(const DeliveryWords &words, std::string_view word, Markup markup) {
    for (const DeliveryWord &known : words)
        if (RtiFedName::equal(word, known.shortForm) || RtiFedName::equal(word, known.longForm))
            return code(markup, known.shortForm) + ": " + explanationOf(words, known);
    return {};
}

/// Explains a word by its role, without knowing what the text declares.
std::string explanationOfWord(const Document &document, Index token, Markup markup) {
    const SyntaxTree &tree = document.tree();
    const std::string_view word = wordOf(tree, token);
    const Index clause = tree.clauseAt(tree.begin(token));
    switch (document.clauses().role(token)) {
    case WordRole::transportation:
        return explanationOfDelivery(kTransportations, word, markup);
    case WordRole::ordering:
        return explanationOfDelivery(kOrderings, word, markup);
    case WordRole::keyword: {
        const ClauseForm &form = formOf(document.clauses()[clause].kind);
        return code(markup, form.keyword) + ": " + form.explanation;
    }
    case WordRole::name:
    case WordRole::value: {
        const ClauseForm &form = formOf(document.clauses()[clause].kind);
        return form.children[0] == ClauseKind::unknown && !isMember(document.clauses()[clause].kind)
                   ? std::string(form.explanation)
                   : std::string();
    }
    default:
        return {};
    }
}

} // namespace

std::optional<Hover> hoverAt(const Document &document, std::uint32_t offset, Markup markup) {
    if (const auto name = nameAt(document, offset)) {
        std::string text;
        for (const NamedEntity &meaning : name->meanings)
            text += (text.empty() ? "" : separator(markup)) + hoverText(document, meaning, name->use, markup);
        return Hover{name->span, text};
    }
    const Index token = wordAt(document.tree(), offset);
    if (token == SyntaxTree::kNone || !SyntaxTree::isWord(document.tree().kind(token)))
        return {};
    std::string text = explanationOfWord(document, token, markup);
    return text.empty() ? std::nullopt : std::optional(Hover{spanOf(document.tree(), token), std::move(text)});
}

std::string documentationOf(const Document &document, RtiFedSpan name, Markup markup) {
    const Index clause = document.tree().clauseAt(name.begin);
    return clause == SyntaxTree::kNone ? std::string() : plainText(markup, documentationOf(document.tree(), clause));
}
