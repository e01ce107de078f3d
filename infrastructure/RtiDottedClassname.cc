#include "infrastructure/RtiDottedClassname.hh"

#include <algorithm>
#include <utility>

RtiDottedClassname::RtiDottedClassname(std::string name) : _name(std::move(name)) {}

int RtiDottedClassname::getDepth() const {
    return static_cast<int>(std::count(_name.begin(), _name.end(), '.')) + 1;
}

std::string RtiDottedClassname::getFullyQualifiedSubclass(int depth) const {
    if (depth < 1)
        return {};
    std::size_t end = _name.find('.');
    for (int component = 1; component < depth && end != std::string::npos; ++component)
        end = _name.find('.', end + 1);
    return _name.substr(0, end);
}
