#include "tool/fom/import/Import.hh"

#include "tool/fom/import/FedText.hh"
#include "tool/fom/import/FomOutline.hh"

std::string Import::text() const {
    std::vector<std::string> files;
    for (const FomModules::Module &module : _modules.all())
        files.push_back(module.name);
    return fedText(_model, files);
}

Outline Import::outline(const std::vector<Outline::Space> &similar) const {
    return outlineOf(_model, _modules, similar);
}
