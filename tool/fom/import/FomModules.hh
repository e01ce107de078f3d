#pragma once

#include "tool/fom/import/FomModel.hh"
#include "tool/fom/import/XmlText.hh"
#include "tool/input/Input.hh"

#include <memory>
#include <optional>
#include <string>
#include <vector>

/// The files of an object model, and what is found in them.
class FomModules {
public:
    struct Module {
        std::string name; ///< Of the file.
        std::unique_ptr<XmlText> text;
        std::vector<Finding> findings;          ///< In the order of the text, after sort().
        std::optional<std::uint32_t> firstLoss; ///< Where the first declaration is that is not in the model.
    };

    explicit FomModules(std::vector<Input> inputs);

    const std::vector<Module> &all() const { return _modules; }
    /// Of those that keep the model from being imported; warnings do not.
    std::size_t numErrors() const { return _numErrors; }

    /// Adds a finding. The first kMaxErrors errors and as many warnings are kept.
    void add(RuleId rule, const FomPlace &place, std::string text);
    /// The same, with another place in a note: `here` says what is there, such as "the first is". In another file, the
    /// text gets the place. `particular` as in Finding::setParticular().
    void add(RuleId rule, const FomPlace &place, std::string text, const FomPlace &other, const std::string &here,
             const std::string &particular = "");

    /// Notes that what a module declares at a place is not in the model, because it was not understood.
    void addLoss(const FomPlace &place);

    /// Returns `LINE:COLUMN` of a place, or `FILE:LINE:COLUMN` if it is not in this module.
    std::string placeFrom(std::size_t module, const FomPlace &place) const;

    /// Puts the findings in the order of the texts.
    void sort();

private:
    void add(std::size_t module, Finding finding);
    std::size_t &numLike(const Finding &finding) { return finding.refusesFile() ? _numErrors : _numWarnings; }

    std::vector<Module> _modules;
    std::size_t _numErrors = 0, _numWarnings = 0;
};
