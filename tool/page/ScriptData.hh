#pragma once

#include <ostream>
#include <streambuf>

/// Passes JSON, which is written in pieces, on into a script element. In such an element a browser knows no escapes,
/// but ends it at "</script", and
/// "<!--" may make it ignore that end. In JSON, "<" occurs in strings only; so each one is written as \u003c, which is
/// the same to a reader of JSON.
class ScriptData : public std::streambuf {
public:
    explicit ScriptData(std::ostream &page) : _page(page) {}

private:
    std::streamsize xsputn(const char *bytes, std::streamsize size) override;

    std::ostream &_page;
};
