#pragma once

#include "tool/control/Settings.hh"
#include "tool/language/Document.hh"
#include "tool/lsp/Message.hh"
#include "tool/lsp/Params.hh"
#include "tool/lsp/PositionedText.hh"

#include <memory>
#include <optional>
#include <string>

/// Texts of more bytes are not kept open.
inline constexpr std::size_t kMaxOpenText = std::size_t(256) << 20;

/// A text with what is known of it and the positions in it: one that the editor has open, or a file of the workspace.
class OpenDocument {
public:
    OpenDocument(std::string uri, std::string text, PositionEncoding encoding, Settings settings);

    const std::string &uri() const { return _uri; }
    /// The path of the file; the URI if it is no file, such as a text that was never saved.
    const std::string &path() const { return _path; }
    const PositionedText &text() const { return _text; }
    std::optional<std::int64_t> version; ///< As the editor counts them; nothing for a file that is not open.

    /// Applies one of the changes of `textDocument/didChange`: of a range, or of the whole text. Throws ProtocolError
    /// if the text would be too long; it is unchanged then.
    void apply(const Params &change);
    void setSettings(Settings settings);

    /// The text as it is understood; made when it is first asked for after an edit.
    const Document &document() const;

    Json position(std::uint32_t offset) const;
    Json range(RtiFedSpan span) const;
    Json location(RtiFedSpan span) const;

    /// The offset of a position that the client gives, and the bytes of a range.
    std::uint32_t offset(const Params &position) const;
    RtiFedSpan span(const Params &range) const;

private:
    std::string _uri, _path;
    PositionedText _text;
    Settings _settings;
    mutable std::unique_ptr<const Document> _document;
};
