#include "tool/format/Format.hh"
#include "tool/lsp/TextEdits.hh"
#include "tool/lsp/methods/Methods.hh"
#include "tool/syntax/TextStyle.hh"

namespace {

/// A text that does not parse has no layout: its diagnostics say what is wrong.
Json formattingOf(const Session &session, const OpenDocument &document, std::optional<LineRange> lines) {
    if (document.document().parser().numErrors() > 0)
        return nullptr;
    const std::string after = formatted(document.document().tree(), {session.client.settings.indentation, lines});
    return textEdits(document, differences(document.text().text(), after));
}

using Index = SyntaxTree::Index;

/// Returns the blanks that the line of a clause begins with.
std::string blanksOfLine(const PositionedText &text, std::uint32_t offset) {
    const std::uint32_t line = text.positionAt(offset).line, begin = text.lineBegin(line);
    // equivalent: a line end ends the blanks, too
    const std::string_view rest = std::string_view(text.text()).substr(begin, text.lineEnd(line) - begin);
    return std::string(rest.substr(0, std::min(rest.find_first_not_of(" \t"), rest.size())));
}

} // namespace

Json formatText(Session &session, const Params &params) {
    return formattingOf(session, session.document(params), {});
}

/// A range that ends at the beginning of a line does not have that line.
Json formatRange(Session &session, const Params &params) {
    const OpenDocument &document = session.document(params);
    const RtiFedSpan span = document.span(params["range"]);
    const TextPosition begin = document.text().positionAt(span.begin);
    const TextPosition end = document.text().positionAt(span.begin + span.length);
    const bool endsBefore = end.character == 0 && end.line > begin.line;
    return formattingOf(session, document, LineRange{begin.line + 1UL, end.line + (endsBefore ? 0UL : 1UL)});
}

/// Indents the new line by the clause that it is in: by one level more than the line in which that clause begins, or
/// as that line if the new one closes it. This holds for texts that are being written and do not parse, too, since only
/// the line of that clause counts.
Json formatNewLine(Session &session, const Params &params) {
    const OpenDocument &document = session.document(params);
    const PositionedText &text = document.text();
    const std::uint32_t line = text.positionAt(document.offset(params["position"])).line;
    if (params["ch"].string() != "\n" || line == 0)
        return nullptr;
    const std::uint32_t begin = text.lineBegin(line), end = text.lineEnd(line);
    const std::string_view rest = std::string_view(text.text()).substr(begin, end - begin); // equivalent: likewise
    const auto blanks = static_cast<std::uint32_t>(std::min(rest.find_first_not_of(" \t"), rest.size()));
    const SyntaxTree &tree = document.document().tree();
    const Index clause = tree.clauseAt(begin - 1); // the innermost one with the line end before
    std::string indentation;
    if (clause != SyntaxTree::kNone) {
        indentation = blanksOfLine(text, tree.begin(tree.clauses()[clause].open));
        if (rest.substr(blanks, 1) != ")")
            indentation.append(session.client.settings.indentation, ' ');
    }
    return textEdits(document, indentation == rest.substr(0, blanks)
                                   ? std::vector<Replacement>()
                                   : std::vector<Replacement>{{{begin, blanks}, indentation}});
}
