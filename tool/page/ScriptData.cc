#include "tool/page/ScriptData.hh"

#include <string_view>

std::streamsize ScriptData::xsputn(const char *bytes, std::streamsize size) {
    std::string_view rest(bytes, static_cast<std::size_t>(size));
    for (std::size_t at = 0; (at = rest.find('<')) != std::string_view::npos; rest.remove_prefix(at + 1))
        _page << rest.substr(0, at) << "\\u003c";
    _page << rest;
    return size;
}
