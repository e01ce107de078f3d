#include "tool/check/ReadOutline.hh"

#include "tool/check/Checker.hh"
#include "tool/model/Model.hh"

Outline outlineOf(const Checker &text) {
    Outline outline(text.database(), &text.declarations(), text.findsNoError());
    if (!outline.loads)
        outline.incompleteAt = text.firstLoss();
    outline.hasAllNames = text.hasAllNames();
    return outline;
}

Outline readOutline(const Input &input) {
    if (input.isImage())
        return {*restoreImage(input.contents), nullptr, true};
    return outlineOf(Checker(input.contents));
}
