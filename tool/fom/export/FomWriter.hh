#pragma once

#include "tool/console/Xml.hh"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Writes elements with a line for each, indented by two blanks a level.
class FomWriter {
public:
    /// `attributes` are written as they are, after a blank.
    void open(const char *element, const std::string &attributes = "") {
        begin(element, attributes);
        _text += ">\n";
        _open.push_back(element);
    }

    void close() {
        const char *element = _open.back();
        _open.pop_back();
        indent();
        end(element);
    }

    void empty(const char *element, const std::string &attributes = "") {
        begin(element, attributes);
        _text += "/>\n";
    }

    /// Writes an element with a text. Blanks of all kinds become spaces; line ends stay.
    void leaf(const char *element, std::string_view text) {
        begin(element, "");
        _text += '>';
        std::string plain(text);
        std::replace_if(
            plain.begin(), plain.end(), [](char byte) { return byte == '\t' || (byte >= '\v' && byte <= '\r'); }, ' ');
        _text += xml(plain);
        end(element);
    }

    /// Writes an element only if there is a text.
    void leafUnlessEmpty(const char *element, std::string_view text) {
        if (!text.empty())
            leaf(element, text);
    }

    std::size_t size() const { return _text.size(); }
    std::string take() { return std::move(_text); }

private:
    void indent() { _text.append(2 * _open.size(), ' '); }
    void begin(const char *element, const std::string &attributes) {
        indent();
        _text.append("<").append(element).append(attributes.empty() ? "" : " ").append(attributes);
    }
    void end(const char *element) { _text.append("</").append(element).append(">\n"); }

    std::string _text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
    std::vector<const char *> _open;
};
