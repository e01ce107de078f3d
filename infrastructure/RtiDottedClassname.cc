#include "infrastructure/RtiDottedClassname.hh"

#include <utility>

RtiDottedClassname::RtiDottedClassname(std::string name) : _name(std::move(name)) {
    for (std::size_t dot = _name.find('.'); dot != std::string::npos; dot = _name.find('.', dot + 1))
        ++_depth;
}

std::string RtiDottedClassname::getFullyQualifiedSubclass(int depth) const {
    if (depth < 1)
        return {};
    std::size_t end = _name.size();
    for (int component = _depth; component > depth; --component) // from the end, since most callers ask for the parent
        end = _name.rfind('.', end - 1);
    return _name.substr(0, end);
}
