#pragma once

#include <algorithm>
#include <string>

/// The root is at depth 1.
class RtiDottedClassname {
public:
    RtiDottedClassname(const std::string &name) : _name(name) {}

    int getDepth() const { return 1 + static_cast<int>(std::count(_name.begin(), _name.end(), '.')); }
    std::string getFullyQualifiedSubclass(int depth) const {
        std::size_t end = 0;
        while (end < _name.size() && (_name[end] != '.' || --depth > 0))
            ++end;
        return _name.substr(0, end);
    }
    std::string getClassname() const { return _name; }

private:
    std::string _name;
};
