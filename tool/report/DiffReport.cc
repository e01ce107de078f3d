#include "tool/report/DiffReport.hh"

#include "tool/console/TerminalBuffer.hh"
#include "tool/console/Text.hh"
#include "tool/report/ChangeGroup.hh"

#include <algorithm>

namespace {

using Verdict = Comparison::Verdict;
using Change = Comparison::Change;
using Element = Comparison::Element;

std::size_t numOf(Change::Kind kind, const Comparison &comparison) {
    const std::vector<Change> &changes = comparison.changes();
    return static_cast<std::size_t>(
        std::count_if(changes.begin(), changes.end(), [kind](const Change &change) { return change.kind == kind; }));
}

class TextWriter {
public:
    TextWriter(const Difference &difference, bool all, const Console &console)
        : _difference(difference), _all(all), _console(console) {}

    void write() const {
        const Comparison &comparison = _difference.comparison;
        const Verdict verdict = comparison.verdict();
        _console.out << _difference.before.input.name << " -> " << _difference.after.input.name << ": "
                     << Comparison::nameOf(verdict)
                     << (_difference.isWhole() || verdict == Verdict::identical ? ""
                                                                                : ", as far as it can be understood")
                     << (verdict <= Verdict::same ? ": " : "\n") << explanationOf(_difference) << '\n';
        for (const ChangeGroup &group : ChangeGroup::groupsOf(comparison))
            write(group);
    }

private:
    static constexpr std::size_t kFew = 3; // items of a group

    void write(const ChangeGroup &group) const {
        _console.out << "  " << colored(group.sign()) << ' ' << group.headline();
        if (group.size() == 1) {
            _console.out << placeOf(group[0]) << '\n';
            writeContents(group[0], "      ");
        } else if (_all) {
            _console.out << '\n';
            for (std::size_t i = 0; i < group.size(); ++i) {
                _console.out << "      " << group.item(i) << placeOf(group[i]) << '\n';
                writeContents(group[i], "          ");
            }
        } else {
            writeFew(group);
        }
    }

    void writeFew(const ChangeGroup &group) const {
        if (group[0].kind == Change::Kind::renumbered) { // of which nobody reads a few; equivalent: all have one kind
            _console.out << " (--all)\n";
            return;
        }
        for (std::size_t i = 0; i < std::min(group.size(), kFew); ++i)
            _console.out << (i > 0 ? ", " : "\n      ") << group.item(i);
        if (group.size() > kFew)
            _console.out << ", ... and " << group.size() - kFew << " more (--all)";
        _console.out << '\n';
    }

    void writeContents(const Change &change, const char *indent) const {
        if (!_all)
            return;
        const bool gone = change.kind == Change::Kind::removed && change.element().hasMembers();
        for (const Element &element : change.contents)
            _console.out << indent << Comparison::nameOf(element.kind) << ' ' << shownFullName(element)
                         << placeOf(element, gone ? _difference.before : _difference.after) << '\n';
    }

    /// The place in the new file, except where the text names the place in the old one.
    std::string placeOf(const Change &change) const {
        const bool now = change.after && change.after->place && change.kind != Change::Kind::movedUp;
        return now             ? placeOf(*change.after, _difference.after)
               : change.before ? placeOf(*change.before, _difference.before)
                               : "";
    }

    static std::string placeOf(const Element &element, const ComparedFile &side) {
        if (element.kind == Element::Kind::federation && element.place)
            return ": " + textOf(side.input.name, element.place);
        return element.place ? " (" + side.input.name + ':' + std::to_string(element.place->line) + ')' : "";
    }

    Colored colored(char sign) const {
        const char *color = sign == '-' ? "\033[31m" : sign == '+' ? "\033[32m" : "\033[33m";
        return {_console.color ? color : nullptr, {sign}};
    }

    const Difference &_difference;
    const bool _all;
    const Console &_console;
};

} // namespace

std::string explanationOf(const Difference &difference) {
    const Comparison &comparison = difference.comparison;
    const std::size_t numMoved = numOf(Change::Kind::renumbered, comparison);
    const std::string moved = counted(numMoved, "handle") + " moved";
    // A file that does not load has neither image nor checksum. The terms of checksums may cancel out.
    const std::string disagree = !comparison.handlesCompared() ? "."
                                 : difference.checksumsAgree()
                                     ? "; the images differ, but the 32-bit checksums are equal, so a mix-up goes "
                                       "unnoticed: all federates must use "
                                       "the same file."
                                     : "; images and checksums differ, so all federates must use the same file.";
    switch (comparison.verdict()) {
    case Verdict::identical:
        return "the files are the same, byte for byte.";
    case Verdict::same:
        return "the models are the same; only text, comments or form of the files differ.";
    case Verdict::relabelled:
        return "Lookups by name give the same answers in both" + disagree;
    case Verdict::renumbered:
        return "Every name is still there with the same properties, but " + moved + disagree;
    case Verdict::additions:
        return "Everything in the old model is still there with the same properties" +
               (numMoved > 0                   ? ", but " + moved
                : comparison.handlesCompared() ? " and handles"
                                               : "") +
               disagree;
    case Verdict::incompatible:
        break; // equivalent: this is the last one
    }
    if (numOf(Change::Kind::refused, comparison) > 0)
        return "No federation can run with the new file: the library refuses it.";
    if (numOf(Change::Kind::unclear, comparison) > 0)
        return "The files were not understood completely, so it is unknown whether federates made for the old one work "
               "with the new one.";
    return "Something in the old model was removed or changed: federates made for it may fail with the new one.";
}

void writeDifference(const Difference &difference, bool all, const Console &console) {
    TextWriter(difference, all, console).write();
}
