#include "tool/lsp/Params.hh"

#include <limits>

Params Params::operator[](const char *key) const {
    if (!_value->is_object())
        refuse("an object");
    const auto member = _value->find(key);
    if (member == _value->end())
        throw ProtocolError(ErrorCode::invalidParams, _path + '.' + key + " is missing");
    return Params(*member, _path + '.' + key);
}

std::optional<Params> Params::find(const char *key) const {
    if (!_value->is_object())
        return {};
    const auto member = _value->find(key);
    if (member == _value->end() || member->is_null())
        return {};
    return Params(*member, _path + '.' + key);
}

bool Params::isNull(const char *key) const {
    return _value->is_object() && _value->contains(key) && _value->at(key).is_null();
}

std::vector<Params> Params::items() const {
    if (!_value->is_array())
        refuse("a list");
    std::vector<Params> items;
    for (std::size_t i = 0; i < _value->size(); ++i)
        items.emplace_back((*_value)[i], _path + '[' + std::to_string(i) + ']');
    return items;
}

std::string Params::string() const {
    if (!_value->is_string())
        refuse("a string");
    return withOriginalBytes(_value->get_ref<const std::string &>());
}

/// A number beyond 32 bits is as good as the greatest: it is a line or column after the end.
std::uint32_t Params::number() const {
    constexpr std::uint32_t kMost = std::numeric_limits<std::uint32_t>::max();
    if (!_value->is_number_unsigned())
        refuse("a whole number that is not negative");
    const auto number = _value->get<std::uint64_t>();
    return number < kMost ? static_cast<std::uint32_t>(number) : kMost;
}

bool Params::boolean() const {
    if (!_value->is_boolean())
        refuse("true or false");
    return _value->get<bool>();
}

std::string Params::stringOf(const char *key, const char *otherwise) const {
    const auto member = find(key);
    return member ? member->string() : otherwise;
}

bool Params::flag(const char *key, bool otherwise) const {
    const auto member = find(key);
    return member ? member->boolean() : otherwise;
}

void Params::refuse(const char *expected) const {
    throw ProtocolError(ErrorCode::invalidParams, _path + ": expected " + expected + ", found " + _value->type_name());
}
