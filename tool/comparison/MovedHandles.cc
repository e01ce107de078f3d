#include "tool/comparison/MovedHandles.hh"

#include "tool/console/Text.hh"
#include "tool/model/DeliveryWords.hh"

#include <map>

std::string movedHandles(const Outline &before, const Outline &after) {
    std::map<std::string, long> handles;
    std::size_t numMoved = 0;
    const auto visitAll = [](const Outline &outline, auto visit) {
        for (const TreeKind *tree : kTreeKinds)
            for (const Outline::Class &each : outline.classes(*tree)) {
                const std::string name = tree->className + (' ' + meaningOf(each.name));
                visit(name, static_cast<long>(each.handle));
                for (const Outline::Member &member : each.members)
                    visit(name + ' ' + meaningOf(member.name), static_cast<long>(member.handle));
            }
        for (const Outline::Space &space : outline.spaces)
            visit("space " + meaningOf(space.name), space.handle);
    };
    visitAll(after, [&](const std::string &name, long handle) { handles.emplace(name, handle); });
    visitAll(before, [&](const std::string &name, long handle) {
        const auto now = handles.find(name);
        numMoved += now != handles.end() && now->second != handle ? 1 : 0;
    });
    return (numMoved == 0 ? "no handle" : counted(numMoved, "handle")) + " moved";
}
