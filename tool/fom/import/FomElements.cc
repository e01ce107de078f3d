#include "tool/fom/import/FomElements.hh"

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
