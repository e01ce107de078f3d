#pragma once

#include "infrastructure/RtiFedPosition.hh"
#include "tool/check/Finding.hh"

#include <pugixml.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Elements and attributes of an XML text. Each allocates at most twice the 64 bytes of a node, so that a hostile text
/// cannot allocate more than 1 GiB; the largest object models in use have a hundredth of that.
inline constexpr std::size_t kMaxXmlTags = std::size_t(1) << 23;

/// An XML text with its elements and the line and column of each of its bytes.
///
/// No entity is expanded except those of XML itself, and no other file is read: a DOCTYPE is passed over.
class XmlText {
public:
    /// Reads a text in UTF-8, or in ISO 8859-1 if it says so, which is converted.
    explicit XmlText(std::string text);
    XmlText(const XmlText &) = delete;
    XmlText &operator=(const XmlText &) = delete;

    /// Why the text is not well-formed XML that can be read; nothing if it is.
    const std::optional<Finding> &fault() const { return _fault; }

    /// The outermost element. Null if the text has a fault.
    pugi::xml_node root() const { return _document.document_element(); }

    std::string_view text() const { return _text; }
    RtiFedPosition positionAt(std::uint32_t offset) const;

    /// The name in the start tag of an element.
    RtiFedSpan nameOf(pugi::xml_node element) const;
    /// What is in an element without the blanks around it, and where it is: the name in the start tag if it is empty.
    std::string contentOf(pugi::xml_node element) const;
    RtiFedSpan contentSpan(pugi::xml_node element) const;

private:
    struct Line {
        std::uint32_t number, begin;
    };

    void parse();
    void explain(const pugi::xml_parse_result &failure);
    void step(Line &line, std::uint32_t offset) const;

    std::string _text;
    pugi::xml_document _document;
    std::optional<Finding> _fault;
    mutable std::vector<Line> _checkpoints; // the line at every kCheckpoint-th byte, filled on demand
};

/// The name of an element without the prefix of its namespace.
std::string_view localName(pugi::xml_node element);
