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

} // namespace

std::string knownContent(const XmlText &text, pugi::xml_node element) {
    std::string content = text.contentOf(element);
    return content == "NA" ? "" : content;
}

pugi::xml_node childOf(pugi::xml_node element, std::string_view name) {
    return element.find_child([name](pugi::xml_node child) { return localName(child) == name; });
}

std::optional<std::string> usableName(FomModules &modules, const std::string &name, const FomPlace &place) {
    std::string fed = fedName(name);
    if (name.find('&') != std::string::npos)
        modules.add(RuleId::unusableName, place,
                    "the name " + inQuotes(name) + " has an entity, and no entities are expanded");
    else if (fed.size() > kMaxNameLength)
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

void checkChildren(FomModules &modules, std::size_t module, pugi::xml_node element,
                   const std::vector<std::string> &known) {
    for (const pugi::xml_node child : element.children()) {
        if (child.type() != pugi::node_element || prefixOf(child) != prefixOf(element) || child.attribute("xmlns"))
            continue;
        const std::string name(localName(child));
        if (std::find(known.begin(), known.end(), name) == known.end())
            modules.add(RuleId::unknownElement, {module, modules.all()[module].text->nameOf(child)},
                        "expected " + std::string(known.size() == 1 ? "" : "one of ") + joined(known) + " in " +
                            std::string(localName(element)) + ", found " + inQuotes(name) +
                            didYouMean(suggestionFor(name, known)));
    }
}
