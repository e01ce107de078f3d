#include "tool/fom/import/FomElements.hh"

#include "infrastructure/RtiFedLimits.hh"
#include "tool/check/Suggestion.hh"
#include "tool/console/Text.hh"

#include <algorithm>

namespace {

std::string_view prefixOf(pugi::xml_node element) {
    const std::string_view name = element.name();
    return name.substr(0, name.size() - localName(element).size());
}

/// Whether a text has a reference to an entity. The parser has replaced those of XML itself.
bool hasEntity(const std::string &text) {
    for (std::size_t at = text.find('&'); at != std::string::npos; at = text.find('&', at + 1))
        if (const std::size_t end = text.find_first_of("; \t\n&", at + 1);
            end != std::string::npos && end > at + 1 && text[end] == ';')
            return true;
    return false;
}

} // namespace

std::string knownContent(const XmlText &text, pugi::xml_node element) {
    std::string content = text.contentOf(element);
    return content == "NA" ? "" : content;
}

bool isOfModel(pugi::xml_node child, pugi::xml_node parent) {
    if (child.type() != pugi::node_element || prefixOf(child) != prefixOf(parent))
        return false;
    const pugi::xml_attribute space = child.attribute("xmlns");
    return !space || space.value() == std::string_view(kFomNamespace) ||
           space.value() == std::string_view(kOlderFomNamespace);
}

bool isElement(pugi::xml_node child, pugi::xml_node parent, std::string_view name) {
    return localName(child) == name && isOfModel(child, parent);
}

pugi::xml_node childOf(pugi::xml_node element, std::string_view name) {
    return element.find_child([&](pugi::xml_node child) { return isElement(child, element, name); });
}

bool reportEntity(FomModules &modules, const std::string &name, const FomPlace &place) {
    const bool has = hasEntity(name);
    if (has)
        modules.add(RuleId::unusableName, place,
                    "the name " + inQuotes(name) + " has an entity, and no entities are expanded");
    return has;
}

std::optional<std::string> usableName(FomModules &modules, const std::string &name, const FomPlace &place) {
    std::string fed = fedName(name);
    if (reportEntity(modules, name, place))
        return {};
    if (fed.size() > kMaxNameLength)
        modules.add(RuleId::unusableName, place,
                    "expected a name of at most " + std::to_string(kMaxNameLength) + " bytes, found " +
                        std::to_string(fed.size()));
    else if (!fitsFed(fed))
        modules.add(RuleId::unusableName, place,
                    "the name " + inQuotes(name) + " has a quote or line end, which no name in FED can have");
    else
        return fed;
    return {};
}

void checkChildren(FomModules &modules, std::size_t module, pugi::xml_node element, const FomContents &contents) {
    const XmlText &text = *modules.all()[module].text;
    std::vector<std::string> known = contents.once;
    known.insert(known.end(), contents.repeated.begin(), contents.repeated.end());
    std::vector<pugi::xml_node> first(contents.once.size());
    for (const pugi::xml_node child : element.children()) {
        if (!isOfModel(child, element))
            continue;
        const std::string_view name = localName(child);
        const FomPlace place{module, text.nameOf(child)};
        const auto found = std::find(known.begin(), known.end(), name);
        const auto index = static_cast<std::size_t>(found - known.begin());
        if (found == known.end())
            modules.add(RuleId::unknownElement, place,
                        "expected " + std::string(known.size() == 1 ? "" : "one of ") + joined(known) + " in " +
                            std::string(localName(element)) + ", found " + inQuotes(name) +
                            didYouMean(suggestionFor(std::string(name), known)));
        else if (index < first.size() && first[index])
            modules.add(RuleId::unknownElement, place,
                        "expected one " + *found + " in " + std::string(localName(element)) + ", found another",
                        {module, text.nameOf(first[index])}, "the first is");
        else if (index < first.size())
            first[index] = child;
    }
}
