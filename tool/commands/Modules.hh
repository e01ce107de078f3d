#pragma once

#include "tool/fom/import/Import.hh"
#include "tool/report/Source.hh"

/// Returns a module as findings refer to it. The module must outlive the result.
inline Source sourceOf(const FomModules::Module &module) {
    return {module.name, module.text->text(),
            [text = module.text.get()](std::uint32_t offset) { return text->positionAt(offset); }};
}
