#include "tests/model/Calls.hh"

#include "fed/loading/RtiFedDatabaseCodegen.hh"
#include "tests/model/Answers.hh"
#include "tests/model/PlainImage.hh"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <functional>

namespace {

using plain::Number;

std::string bytesOf(const RtiBuffer &buffer) {
    return {reinterpret_cast<const char *>(buffer.data()), buffer.size()};
}
template <class Record>
std::string imageOf(Record &record) {
    RtiBuffer buffer;
    if constexpr (std::is_base_of_v<RtiSaveableType, Record>)
        record.save(buffer);
    else
        plain::Image(buffer, false)(record);
    return bytesOf(buffer);
}

/// A record of the library and the same of the model.
template <class Library, class Model>
struct Pair {
    Library *library = nullptr;
    Model *model = nullptr;
};

/// A class that no database owns.
template <class Node>
struct Alone {
    std::unique_ptr<Node> library;
    std::shared_ptr<plain::Record> model;
};

/// Makes a call on both sides and compares the answers.
#define SAME(library, model) compare(#library, answerOf([&] { return library; }), answerOf([&] { return model; }))

std::string inCase(std::string name, unsigned variant) {
    for (std::size_t at = 0; at < name.size(); ++at)
        if (std::isalpha(static_cast<unsigned char>(name[at])) && (variant == 1 || (variant == 2 && at % 3 == 0)))
            name[at] = static_cast<char>(name[at] ^ 0x20);
    return name;
}

std::string wordOf(unsigned byte) {
    static const char *const kWords[] = {"a", "A", "b", "ObjectRoot", "Manager", "", "\xE4{", "x.y"};
    const std::string number = std::to_string(byte % 32);
    return byte < 128 ? kWords[byte % std::size(kWords)]
                      : (byte < 192 ? "Member" : "A_member_with_a_long_name") + number;
}

std::string classNameOf(const plain::Record *node, const std::string &own, unsigned byte) {
    const std::string name = inCase(node ? node->name : "Root", byte / 8 % 4);
    switch (byte % 8) {
    case 0:
        return name;
    case 1:
        return name.substr(name.find('.') + 1);
    case 2:
        return own;
    default:
        return name + '.' + own;
    }
}

/// Returns the one of the first `limit` that a byte chooses, or none.
template <class Value>
Value pick(const std::vector<Value> &from, std::size_t limit, unsigned byte) {
    return limit == 0 ? Value() : from[byte % limit];
}

// A call on the library and the same on the model, which is made if there is a record to call.
#define CALL(possible, library, model)                                                                                 \
    {                                                                                                                  \
        possible, #library, [&] { return answerOf([&] { return library; }); },                                         \
            [&] { return answerOf([&] { return model; }); }                                                            \
    }
#define ALWAYS(library, model) CALL(true, library, model)
#define OBJECT(library, model) CALL(om != nullptr, library, model)
#define INTERACTION(library, model) CALL(im != nullptr, library, model)
#define SPACE(library, model) CALL(sm != nullptr, library, model)

/// A database and its model. Each call has arguments of all kinds, chosen by its bytes.
struct Both {
    std::unique_ptr<RtiFedDatabase> db =
        std::make_unique<RtiFedDatabase>(RtiFedDatabaseConstructorArg("none.fed", RTI_false));
    std::unique_ptr<plain::Database> model = std::make_unique<plain::Database>();
    std::unique_ptr<RtiFedDatabaseCodegen> codegen = std::make_unique<RtiFedDatabaseCodegen>(db.get());
    std::vector<Alone<RtiFedObjectClass>> objectsAlone;
    std::vector<Alone<RtiFedInteractionClass>> interactionsAlone;
    std::string kept; ///< An image.

    std::string n, on, in;        ///< Names: of a member, of an object class, of an interaction class.
    std::string tn, rn, sn;       ///< Of a transportation, an ordering, a space.
    Number k = 0, oh = 0, ih = 0; ///< Handles: of a member, of an object class, of an interaction class.
    long sh = 0;
    plain::Fields m; ///< A member, or a class, with a handle that a host may choose.
    std::size_t index = 0;
    Pair<RtiFedObjectClass, plain::Record> o, above; ///< Any, and one of the database or null.
    Pair<RtiFedInteractionClass, plain::Record> i, aboveI;
    Pair<RtiFedSpace, plain::Record> s;

    std::string calls, arguments, fault;

    void make(const Call &chosen) {
        choose(chosen);
        RtiFedObjectClass *const ol = o.library;
        RtiFedInteractionClass *const il = i.library;
        RtiFedSpace *const sl = s.library;
        plain::Record *const om = o.model, *const im = i.model, *const sm = s.model;
        plain::Database &pm = *model;
        const Number h = m.handle, t = m.transport, r = m.ordering;
        const long p = m.space;
        const auto spaceNumber = static_cast<Number>(sh);
        const auto handleOrNone = [](const plain::Record *member) { return member ? member->handle : 0; };
        const auto child = [this](const plain::Record *node) {
            return std::min(node->handle + 1 + index, 0xFFFFFFFFUL);
        };
        RtiAttributeHandleSet asked(2);
        asked.add(k);
        asked.add(k + index % 2);
        struct Operation {
            bool possible;
            const char *call;
            std::function<std::string()> library, model;
        };
        const Operation operations[] = {
            // Building by the database.
            ALWAYS(db->setFederateName(n), void(pm.name = n)),
            ALWAYS(db->setFederateVersion(n), void(pm.version = n)),
            ALWAYS(db->createSpaceHandle(), ++pm.spaces.last),
            ALWAYS(db->createObjectClassHandle(), ++pm.objects.last),
            ALWAYS(db->createAttributeHandle(), ++pm.objects.lastMember),
            ALWAYS(db->createInteractionClassHandle(), ++pm.interactions.last),
            ALWAYS(db->createParameterHandle(), ++pm.interactions.lastMember),
            ALWAYS(db->addSpace(n), pm.spaces.add({n})),
            ALWAYS(db->addSpaceDimension(sl, n), void(pm.spaces.addMember(sm, {n}))),
            ALWAYS(db->addObjectClass(on), pm.objects.add({on})),
            ALWAYS(db->addObjectClass(RtiDottedClassname(on)), pm.objects.add({on})),
            ALWAYS(db->addInteractionClass(in, t, r, p), pm.interactions.add({in, 0, t, r, p})),
            ALWAYS(db->addObjectClassAttribute(ol, n, t, r, p), void(pm.objects.addMember(om, m))),
            ALWAYS(db->createMomDefaultSpace(), void(pm.spaces.add({"HLAMomDefaultSpace"}))),
            ALWAYS(db->setMomDefaultSpace(), pm.setMomDefaultSpace()),
            OBJECT(db->setMomDefaultSpaceForAttributes(ol, p), pm.objects.setSpace(om, p)),
            INTERACTION(db->setMomDefaultSpaceForInteractionClasses(il, p), pm.interactions.setSpace(im, p)),
            // Building as a parser does.
            ALWAYS(codegen->addSpace(n), pm.declare(pm.spaces, n)),
            ALWAYS(codegen->addDimension(n), pm.declareMember(pm.spaces, n)),
            ALWAYS(codegen->addObjectClass(on), pm.declare(pm.objects, on)),
            ALWAYS(codegen->declareObjectClass(on, index), pm.declare(pm.objects, on)),
            ALWAYS(codegen->addObjectClassAttribute(n, tn, rn, sn), pm.declareMember(pm.objects, n, {tn, rn, sn})),
            ALWAYS(codegen->addInteractionClass(in, tn, rn, sn), pm.declare(pm.interactions, in, {tn, rn, sn})),
            ALWAYS(codegen->addParameter(n), pm.declareMember(pm.interactions, n)),
            // Building without going through the database.
            SPACE(sl->addDimension(n), sm->addMember({n})),
            SPACE(sl->createDimensionHandle(), sm->nextDimension++),
            OBJECT(ol->addObjectClass(h, n), om->addSubclass(m)),
            OBJECT(ol->addAttribute(h, n, t, r, p), om->addMember(m)),
            OBJECT(ol->getAttribute(index)->setSpace(p), void(om->memberAt(index)->space = p)),
            OBJECT(ol->addChildClass(child(om)), void(om->children.insert(child(om)))),
            OBJECT(ol->addChildClassToAll(h), om->addDescendant(h)),
            OBJECT(ol->getSubclass(index), om->subclassAt(index)),
            INTERACTION(il->addInteractionClass(h, n, t, r, p), im->addSubclass(m)),
            INTERACTION(il->addParameter(h, n), im->addMember(m)),
            INTERACTION(il->addChildClass(child(im)), void(im->children.insert(child(im)))),
            INTERACTION(il->setDefaultSpace(p), void(im->space = p)),
            SPACE(sl->getDimension(index), sm->memberAt(index)),
            // Names and handles.
            ALWAYS(db->objectClassExists(on), pm.objects.findNamed(on) != nullptr),
            ALWAYS(db->objectClassExists(RtiObjectClassHandle(oh)), pm.objects.find(oh) != nullptr),
            ALWAYS(db->interactionClassExists(in), pm.interactions.findNamed(in) != nullptr),
            ALWAYS(db->interactionClassExists(RtiInteractionClassHandle(ih)), pm.interactions.find(ih) != nullptr),
            ALWAYS(db->getObjectClassHandle(on), pm.objects.handleOf(on)),
            ALWAYS(db->getInteractionClassHandle(in), pm.interactions.handleOf(in)),
            ALWAYS(db->getObjectClassName(oh), pm.objects.nameOf(oh)),
            ALWAYS(db->getInteractionClassName(ih), pm.interactions.nameOf(ih)),
            ALWAYS(db->getAttributeHandle(n, oh), pm.objects.memberHandle(n, oh)),
            ALWAYS(db->getParameterHandle(n, ih), pm.interactions.memberHandle(n, ih)),
            ALWAYS(db->getAttributeName(k, oh), pm.objects.memberName(k, oh)),
            ALWAYS(db->getParameterName(k, ih), pm.interactions.memberName(k, ih)),
            ALWAYS(
                db->getAttributeRoutingSpaceHandle(k, oh),
                require(pm.objects.defined(oh, 1767)->findUpward(k), "AttributeNotDefined", plain::kFile, 1772)->space),
            ALWAYS(db->getInteractionRoutingSpaceHandle(ih), pm.interactions.defined(ih, 1800)->space),
            ALWAYS(db->getRoutingSpaceHandle(sn), pm.spaces.handleOf(sn)),
            ALWAYS(db->getRoutingSpaceName(sh), pm.spaces.nameOf(spaceNumber)),
            ALWAYS(db->getDimensionHandle(n, sh), pm.spaces.memberHandle(n, spaceNumber)),
            ALWAYS(db->getDimensionName(k, sh), pm.spaces.memberName(k, spaceNumber)),
            ALWAYS(db->getTransportationHandle(tn), pm.transportation(tn)),
            ALWAYS(db->getOrderingHandle(rn), pm.ordering(rn)),
            SPACE(sl->getDimensionHandle(n), pm.spaces.memberHandle(n, sm->handle)),
            SPACE(sl->getDimensionName(k), pm.spaces.memberName(k, sm->handle)),
            SPACE(sl->dimensionExists(n), sm->dimensionExists(n)),
            OBJECT(ol->getAttributeHandle(n), handleOrNone(om->members.find(n))),
            OBJECT(ol->getAttributeHandleRecursive(n), handleOrNone(om->findUpward(n))),
            OBJECT(ol->attributeExists(n), om->members.find(n) != nullptr),
            OBJECT(ol->attributeIsInherited(n), om->inherits(n)),
            OBJECT(ol->getAttributeName(k), om->members.find(k) ? om->members.find(k)->name : ""),
            OBJECT(ol->find(k), require(om->members.find(k), "RTIinternalError", "RtiFedObjectClass", 390)),
            OBJECT(ol->findRecurse(k), om->findUpward(k)),
            OBJECT(ol->getAttribute(index), om->memberAt(index)),
            OBJECT(ol->hasDerrivedClass(k), om->descendants.count(k) > 0),
            OBJECT(ol->getParentClass(), om->parent),
            INTERACTION(il->findParameter(n), im->members.find(n)),
            INTERACTION(il->find(k), im->members.find(k)),
            INTERACTION(il->getParameter(index), im->memberAt(index)),
            INTERACTION(il->parameterIsInherited(n), im->inherits(n)),
            INTERACTION(il->getParentClass(), im->parent),
            // Sets.
            ALWAYS(db->getAttributeHandleSet(), pm.objects.memberHandles()),
            ALWAYS(db->getRealObjectClassHandle(oh, k), pm.objects.declaring.count(k) ? pm.objects.declaring.at(k) : 0),
            ALWAYS(db->getAvailableInteractionClassHandles(ih),
                   pm.interactions.available<std::set<Number>>(pm.interactions.find(ih))),
            ALWAYS(derived(&RtiFedDatabase::getDerivedObjectClassHandleSet, oh),
                   pm.objects.derived(pm.objects.find(oh))),
            ALWAYS(derived(&RtiFedDatabase::getChildlessDerivedObjectClassHandleSet, oh),
                   pm.objects.childlessDerived(pm.objects.find(oh))),
            ALWAYS(derived(&RtiFedDatabase::getDerivedInteractionClassHandleSet, ih),
                   pm.interactions.derived(pm.interactions.find(ih))),
            ALWAYS(db->getAvailableFedAttributes(RtiObjectClassHandle(oh), 0),
                   pm.objects.available(pm.objects.find(oh), &plain::Record::available)),
            ALWAYS(db->getAvailableFedAttributes(ol, 0), pm.objects.available(om, &plain::Record::available)),
            ALWAYS(db->getAvailableAttributeHandles(RtiObjectClassHandle(oh), 0),
                   pm.objects.available(pm.objects.find(oh), &plain::Record::availableHandles)),
            ALWAYS(db->getAvailableAttributeHandles(ol, 0), pm.objects.available(om, &plain::Record::availableHandles)),
            ALWAYS(db->verifyAvailableAttributes(oh, asked), pm.objects.areAvailable(oh, {k, k + index % 2})),
        };
        void (Both::*const sequences[])() = {
            &Both::addMembers,         &Both::addDeep,
            &Both::keepImage,          &Both::restore,
            &Both::restoreElsewhere,   &Both::restoreDamaged,
            &Both::addObjectAlone,     &Both::addInteractionAlone,
            &Both::restoreObjectAlone, &Both::restoreInteractionAlone,
            &Both::setObjectParent,    &Both::setInteractionParent,
        };
        const std::size_t chosenOne = chosen[0] % (std::size(operations) + std::size(sequences));
        if (chosenOne >= std::size(operations))
            (this->*sequences[chosenOne - std::size(operations)])();
        else if (const Operation &operation = operations[chosenOne]; operation.possible)
            compare(operation.call, operation.library(), operation.model());
    }

    void compare(const char *call, const std::string &got, const std::string &expected) {
        if (got != expected && fault.empty())
            fault = calls + arguments + call + "\n  expected " + expected + "\n  but got  " + got + '\n';
        calls += arguments + call + " = " + expected.substr(0, 80) + '\n';
        arguments = "  ";
    }

    /// Finds all classes of a tree: those of the database with what they own, whose number is returned, and those
    /// alone.
    template <class Node>
    std::size_t findNodes(plain::Tree &classes, std::vector<Alone<Node>> &alone,
                          std::vector<Pair<Node, plain::Record>> &nodes) {
        std::vector<plain::Record *> models;
        const auto add = [&](Node *node, plain::Record *modelled) {
            nodes.push_back({node, nullptr});
            node->forEachOwned([&](const Node &owned) { nodes.push_back({const_cast<Node *>(&owned), nullptr}); });
            models.push_back(modelled);
            modelled->forEachOwned([&](plain::Record &, plain::Record &owned) { models.push_back(&owned); });
        };
        for (const auto &[handle, node] : classes.byHandle)
            add(db->find(typename Node::Handle(handle)), node.get());
        const std::size_t numOfDatabase = nodes.size();
        for (const Alone<Node> &each : alone)
            add(each.library.get(), each.model.get());
        for (std::size_t at = 0; at < nodes.size() && at < models.size(); ++at)
            nodes[at].model = models[at];
        if (nodes.size() != models.size())
            fault = calls + "the library owns other classes\n";
        return numOfDatabase;
    }

    template <class Handle>
    std::set<Handle> derived(void (RtiFedDatabase::*add)(Handle, std::set<Handle> &) const, Number handle) const {
        std::set<Handle> all;
        (db.get()->*add)(handle, all);
        return all;
    }

    void choose(const Call &call) {
        index = call[3] % 4 == 0 ? call[3] / 4U : call[3] / 4 % 4U;
        std::vector<Pair<RtiFedObjectClass, plain::Record>> objects;
        const std::size_t numObjects = findNodes(model->objects, objectsAlone, objects);
        o = pick(objects, objects.size(), call[4]);
        above = pick(objects, call[5] < 64 ? 0 : numObjects, call[5]);
        std::vector<Pair<RtiFedInteractionClass, plain::Record>> interactions;
        const std::size_t numInteractions = findNodes(model->interactions, interactionsAlone, interactions);
        i = pick(interactions, interactions.size(), call[4]);
        aboveI = pick(interactions, call[5] < 64 ? 0 : numInteractions, call[5]);
        std::vector<Pair<RtiFedSpace, plain::Record>> spaces;
        for (const auto &[handle, space] : model->spaces.byHandle)
            spaces.push_back({db->find(RtiSpaceHandle(static_cast<long>(handle))), space.get()});
        s = pick(spaces, call[4] < 32 ? 0 : spaces.size(), call[4]);

        std::vector<plain::Fields> known;
        for (const plain::Record *node : {o.model, i.model, s.model})
            for (; node; node = node->parent)
                for (const auto &[at, member] : node->members.byIndex)
                    known.push_back(*member);
        const plain::Fields member = pick(known, call[2] < 128 ? 0 : known.size(), call[2]);
        n = member.name.empty() ? wordOf(call[1]) : inCase(member.name, call[1] % 4);
        k = call[2] < 128 ? index : member.handle;
        on = classNameOf(o.model, n, call[1]);
        in = classNameOf(i.model, n, call[1]);
        oh = o.model && call[5] % 8 > 0 ? o.model->handle : index;
        ih = i.model && call[5] % 8 > 0 ? i.model->handle : index;
        sn = call[5] % 2 == 0 ? "" : s.model && call[5] % 8 > 1 ? s.model->name : n;
        tn = call[7] % 16 == 0 ? n : inCase(call[7] % 2 ? "reliable" : "RTI_BEST_EFFORT", call[6] % 4);
        rn = call[7] / 16 == 0 ? n : inCase(call[6] % 2 ? "TimeStamp" : "rti_receive_ordering", call[7] % 4);
        const Number handles[] = {call[6] / 8U, index, 5000U + call[6] % 3U, 0xFFFFFFFFU};
        m = {n, handles[call[6] % 4], call[7] % 4U, call[7] / 4 % 4U, call[7] / 16 % 6 - 1};
        sh = s.model && call[5] % 8 > 0 ? static_cast<long>(s.model->handle) : m.space;
        const auto text = [](const auto &pair) { return textOf(pair.model); };
        arguments = "n " + n + ", k " + std::to_string(k) + ", on " + on + ", in " + in + ", index " +
                    std::to_string(index) + ", m " + std::to_string(m.handle) + ' ' + std::to_string(m.transport) +
                    ' ' + std::to_string(m.ordering) + ' ' + std::to_string(m.space) + ", o " + text(o) + " above " +
                    text(above) + ", i " + text(i) + " above " + text(aboveI) + ", s " + text(s) + "\n  ";
    }

    // ---- Several calls.

    void begin() {
        SAME(db->addObjectClass("ObjectRoot"), model->objects.add({"ObjectRoot"}));
        SAME(db->addInteractionClass("InteractionRoot", 1, 2, 0),
             model->interactions.add({"InteractionRoot", 0, 1, 2}));
        SAME(db->addSpace("Space"), model->spaces.add({"Space"}));
        keepImage();
    }

    /// Loads the text of a federation, which declares the MOM; the model is given the declarations.
    void load(const Federation &federation) {
        std::string text = toFed(federation);
        SAME(db->buildFromFed(fmemopen(text.data(), text.size(), "r")), loadPlainly(federation));
        for (plain::Tree *tree : {&model->objects, &model->interactions, &model->spaces})
            tree->current = nullptr; // the parser's, not that of the calls which follow
        keepImage();
    }

    /// Gives the declarations to the model as a parser does, and adds what completes a database.
    void loadPlainly(const Federation &federation) {
        model->name = "Benchmark";
        model->version = "v1.3";
        for (const Federation::Space &space : federation.spaces) {
            model->declare(model->spaces, space.name);
            for (const std::string &dimension : space.dimensions)
                model->declareMember(model->spaces, dimension);
        }
        for (plain::Tree *tree : {&model->objects, &model->interactions}) {
            std::string path; // the full name of the enclosing class, and a dot
            const auto open = [&](const Federation::Class &node) {
                model->declare(*tree, path + node.name, node.delivery);
                path += node.name + '.';
            };
            const auto member = [&](const Federation::Class &, const Federation::Member &each) {
                model->declareMember(*tree, each.name, each.delivery);
            };
            const auto close = [&path](const Federation::Class &node) {
                path.resize(path.size() - node.name.size() - 1);
            };
            forEachLine(tree == &model->objects ? federation.objects : federation.interactions, open, member, close);
        }
        model->spaces.add({"HLAMomDefaultSpace"});
        model->setMomDefaultSpace();
    }

    void addMembers() {
        for (Number each = index; each > 0; --each) {
            m = {"Member" + std::to_string(each * 7 % 32), 0, m.transport, m.ordering, m.space};
            SAME(db->addObjectClassAttribute(o.library, m.name, m.transport, m.ordering, m.space),
                 void(model->objects.addMember(o.model, m)));
            SAME(codegen->addParameter(m.name), model->declareMember(model->interactions, m.name));
        }
    }

    void addDeep() {
        for (Number each = 10 * index; each > 0 && fault.empty(); --each) {
            SAME(db->addObjectClass(on), model->objects.add({on}));
            on += ".d";
        }
    }

    void keepImage() {
        SAME(imageOf(*db), imageOf(*model));
        kept = imageOf(*db);
        RtiBuffer image(kept.data(), kept.size());
        const RtiFedDatabase copy(image);
        SAME(copy.getChecksum(), db->getChecksum());
        SAME(imageOf(copy), kept);
    }

    void restore() {
        loseClasses();
        RtiBuffer image(kept.data(), kept.size()), same = image;
        SAME(db->restore(image), void(model = plain::restored(same)));
    }

    void restoreElsewhere() {
        loseClasses();
        RtiBuffer image(kept.data(), kept.size()), same = image;
        codegen.reset();
        SAME(void(db = std::make_unique<RtiFedDatabase>(image)), void(model = plain::restored(same)));
        codegen = std::make_unique<RtiFedDatabaseCodegen>(db.get());
    }

    void restoreDamaged() {
        if (m.transport != 0)
            return;
        loseClasses();
        RtiBuffer image(kept.data(), kept.size() - 1 - index % kept.size());
        const std::string fileName = model->fileName;
        SAME(answerOf([&] { db->restore(image); }) != "done", true);
        model = std::make_unique<plain::Database>();
        model->fileName = fileName;
    }

    void addObjectAlone() {
        Alone<RtiFedObjectClass> made;
        SAME((made.library = std::make_unique<RtiFedObjectClass>(m.handle, n, above.library)).get(),
             (made.model = std::make_shared<plain::Record>(plain::kObject, m, above.model)).get());
        if (made.library && made.model)
            objectsAlone.push_back(std::move(made));
    }

    void addInteractionAlone() {
        Alone<RtiFedInteractionClass> made;
        SAME((made.library = std::make_unique<RtiFedInteractionClass>(m.handle, n, aboveI.library, m.transport,
                                                                      m.ordering, m.space))
                 .get(),
             (made.model = std::make_shared<plain::Record>(plain::kInteraction, m, aboveI.model)).get());
        if (made.library && made.model)
            interactionsAlone.push_back(std::move(made));
    }

    /// Restores a class from the image of any, in place or as a new one.
    template <class Node>
    void restoreAlone(std::vector<Alone<Node>> &alone, const Pair<Node, plain::Record> &origin) {
        if (!origin.model)
            return;
        RtiBuffer image, plainImage;
        origin.library->save(image);
        plain::Image(plainImage, false)(*origin.model);
        SAME(bytesOf(image), bytesOf(plainImage));
        Alone<Node> made;
        made.model = std::make_shared<plain::Record>(origin.model->kind);
        plain::Image(plainImage, true)(*made.model);
        if (index % 2 == 0 && !alone.empty()) {
            alone.back().library->restore(image);
            alone.back().model = made.model;
        } else {
            made.library = std::make_unique<Node>(image);
            alone.push_back(std::move(made));
        }
        SAME(imageOf(*alone.back().library), imageOf(*alone.back().model));
    }

    void restoreObjectAlone() { restoreAlone(objectsAlone, o); }
    void restoreInteractionAlone() { restoreAlone(interactionsAlone, i); }

    template <class Node>
    void setParent(std::vector<Alone<Node>> &alone, const Pair<Node, plain::Record> &parent) {
        if (alone.empty())
            return;
        alone.back().library->setParentClass(parent.library);
        alone.back().model->parent = parent.model;
    }

    void setObjectParent() { setParent(objectsAlone, above); }
    void setInteractionParent() { setParent(interactionsAlone, aboveI); }
    void loseClasses() {
        objectsAlone.clear();
        interactionsAlone.clear();
    }
};

} // namespace

std::string faultOfCalls(const std::vector<Call> &calls, const Federation *federation) {
    Both both;
    if (federation)
        both.load(*federation);
    else
        both.begin();
    for (const Call &call : calls) {
        both.make(call);
        if (!both.fault.empty())
            return both.fault;
    }
    both.keepImage();
    return both.fault;
}
