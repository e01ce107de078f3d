#include "tool/page/ScriptData.hh"

#include <string_view>

ScriptData::int_type ScriptData::overflow(int_type byte) {
    if (traits_type::eq_int_type(byte, traits_type::eof()))
        return traits_type::not_eof(byte);
    const char c = traits_type::to_char_type(byte);
    xsputn(&c, 1);
    return byte;
}

std::streamsize ScriptData::xsputn(const char *bytes, std::streamsize size) {
    std::string_view rest(bytes, static_cast<std::size_t>(size));
    for (std::size_t at = 0; (at = rest.find('<')) != std::string_view::npos; rest.remove_prefix(at + 1))
        _page << rest.substr(0, at) << "\\u003c";
    _page << rest;
    return size;
}
