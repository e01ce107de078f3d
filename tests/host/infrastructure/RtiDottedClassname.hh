#pragma once

#include <string>

class RtiDottedClassname {
public:
    RtiDottedClassname(const std::string &name) : _name(name) {}

    std::string getClassname() const { return _name; }

private:
    std::string _name;
};
