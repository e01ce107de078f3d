#include "tool/fom/import/FomModules.hh"

#include "infrastructure/RtiFedLimits.hh"
#include "tool/console/Text.hh"

#include <algorithm>
#include <utility>

namespace {

/// Whether what is reported by a rule is not in the model. Of declarations that conflict, only the first is.
bool losesDeclaration(RuleId rule) {
    return rule == RuleId::unknownElement || rule == RuleId::unusableName || rule == RuleId::unknownSpace ||
           rule == RuleId::repeatedMember || rule == RuleId::conflictingModules;
}

} // namespace

FomModules::FomModules(std::vector<Input> inputs) {
    for (Input &input : inputs) {
        Module &module = _modules.emplace_back();
        module.name = std::move(input.name);
        module.text = std::make_unique<XmlText>(std::move(input.contents));
        if (const auto &fault = module.text->fault())
            add(_modules.size() - 1, *fault);
    }
}

void FomModules::add(std::size_t module, Finding finding) {
    const std::size_t count = ++numLike(finding);
    if (count < kMaxErrors)
        _modules[module].findings.push_back(std::move(finding));
    else if (count == kMaxErrors && finding.refusesFile())
        _modules[module].findings.push_back(
            {&ruleOf(RtiFedParser::tooManyErrors), finding.span, "too many errors: the rest is not reported"});
    else if (count == kMaxErrors)
        _modules[module].findings.push_back(
            {finding.rule, finding.span, "too many warnings: the rest is not reported"});
}

void FomModules::add(RuleId rule, const FomPlace &place, std::string text) {
    if (losesDeclaration(rule))
        addLoss(place);
    add(place.module, Finding{&ruleOf(rule), place.span, std::move(text)});
}

void FomModules::add(RuleId rule, const FomPlace &place, std::string text, const FomPlace &other,
                     const std::string &here, const std::string &particular) {
    if (losesDeclaration(rule))
        addLoss(place);
    Finding finding{&ruleOf(rule), place.span, text};
    if (numLike(finding) >= kMaxErrors) // do not look up the place for a finding that is dropped
        return add(place.module, std::move(finding));
    finding.text += "; " + here + " at " + placeFrom(place.module, other);
    if (!particular.empty())
        finding.setParticular(particular);
    if (other.module == place.module)
        finding.notes.push_back({other.span, here + " here"});
    add(place.module, std::move(finding));
}

void FomModules::addLoss(const FomPlace &place) {
    std::optional<std::uint32_t> &first = _modules[place.module].firstLoss;
    first = std::min(first.value_or(place.span.begin), place.span.begin);
}

std::string FomModules::placeFrom(std::size_t module, const FomPlace &place) const {
    const Module &other = _modules[place.module];
    const std::string position = textOf(other.text->positionAt(place.span.begin));
    return place.module == module ? position : shown(other.name) + ':' + position;
}

void FomModules::sort() {
    for (Module &module : _modules)
        std::stable_sort(module.findings.begin(), module.findings.end(),
                         [](const Finding &a, const Finding &b) { return a.span->begin < b.span->begin; });
}
