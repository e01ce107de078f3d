#include "tool/lsp/OpenDocument.hh"

#include "tool/lsp/Uri.hh"

#include <utility>

OpenDocument::OpenDocument(std::string uri, std::string text, PositionEncoding encoding, Settings settings)
    : _uri(std::move(uri)), _path(pathOfUri(_uri).value_or(_uri)), _text(std::move(text), encoding),
      _settings(std::move(settings)) {}

void OpenDocument::apply(const Params &change) {
    const std::string with = change["text"].string();
    const auto range = change.find("range");
    const RtiFedSpan replaced = range ? span(*range) : RtiFedSpan{0, static_cast<std::uint32_t>(_text.text().size())};
    // unreached: takes two messages of hundreds of megabytes
    if (_text.text().size() - replaced.length + with.size() > kMaxOpenText)
        throw ProtocolError(ErrorCode::requestFailed,
                            "expected a text of at most " + std::to_string(kMaxOpenText) + " bytes, found more");
    if (range)
        _text.replace(replaced.begin, replaced.begin + replaced.length, with);
    else
        _text = PositionedText(with, _text.encoding());
    _document.reset();
}

void OpenDocument::setSettings(Settings settings) {
    _settings = std::move(settings);
    _document.reset();
}

const Document &OpenDocument::document() const {
    if (!_document)
        _document = std::make_unique<const Document>(_path, _text.text(), _settings);
    return *_document;
}

Json OpenDocument::position(std::uint32_t offset) const {
    const TextPosition position = _text.positionAt(offset);
    return {{"line", position.line}, {"character", position.character}};
}

Json OpenDocument::range(RtiFedSpan span) const {
    Json start = position(span.begin); // first, since positions are found faster in their order
    return {{"start", std::move(start)}, {"end", position(span.begin + span.length)}};
}

Json OpenDocument::location(RtiFedSpan span) const {
    return {{"uri", _uri}, {"range", range(span)}};
}

std::uint32_t OpenDocument::offset(const Params &position) const {
    return _text.offsetAt({position["line"].number(), position["character"].number()});
}

/// A range whose end is before its start is read the other way round.
RtiFedSpan OpenDocument::span(const Params &range) const {
    const std::uint32_t start = offset(range["start"]), end = offset(range["end"]);
    return {std::min(start, end), std::max(start, end) - std::min(start, end)};
}
