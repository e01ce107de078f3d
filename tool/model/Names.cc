#include "tool/model/Names.hh"

#include "fed/storage/RtiFedName.hh"

#include <algorithm>

std::string_view lastComponent(std::string_view path) {
    return path.substr(path.rfind('.') + 1);
}

bool endsIn(std::string_view path, std::string_view name) {
    if (path.size() < name.size())
        return false;
    const std::size_t begin = path.size() - name.size();
    return (begin == 0 || path[begin - 1] == '.') && RtiFedName::equal(path.substr(begin), name);
}

std::string_view endLike(std::string_view path, std::string_view name) {
    std::size_t begin = path.size() + 1;
    for (auto dots = std::count(name.begin(), name.end(), '.'); dots >= 0 && begin > 1; --dots)
        begin = path.rfind('.', begin - 2) + 1; // after the dot; 0 if there is none
    return path.substr(std::min(begin, path.size()));
}
