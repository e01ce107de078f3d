#pragma once

#include "fuzz/Fuzz.hh"
#include "infrastructure/RtiStringUtility.hh"

#include <map>

/// The expected answers of a database whose two class trees are built by the same calls.
class Model {
public:
    bool isClass(const std::string &name) const { return _classes.count(upper(name)) > 0; }

    /// The handle of a member that a class has or inherits, 0 if none.
    unsigned long memberOf(const std::string &className, const std::string &member) const {
        for (std::string name = upper(className);; name.resize(name.rfind('.'))) {
            const auto found = _members.find(name + "/" + upper(member));
            if (found != _members.end() || name.find('.') == std::string::npos)
                return found == _members.end() ? 0 : found->second;
        }
    }

    void addClass(const std::string &name) { _classes.emplace(upper(name), _classes.size() + 1); }
    void addMember(const std::string &className, const std::string &member, unsigned long handle) {
        _members.emplace(upper(className) + "/" + upper(member), handle);
    }

    template <class Members>
    void compareWith(const RtiFedDatabase &database, const Members &members) const {
        FUZZ_CHECK(database.getObjectClassHandleSet().size() == _classes.size());
        FUZZ_CHECK(database.getInteractionClassHandleSet().size() == _classes.size());
        for (const auto &[name, handle] : _classes) {
            FUZZ_CHECK(database.getObjectClassHandle(name) == handle);
            FUZZ_CHECK(database.getInteractionClassHandle(name) == handle);
            FUZZ_CHECK(upper(database.getObjectClassName(handle)) == name);
            FUZZ_CHECK(upper(database.getInteractionClassName(handle)) == name);
            for (const char *member : members) {
                RtiAttributeHandle attribute;
                RtiParameterHandle parameter;
                isRefused([&, of = handle] { attribute = database.getAttributeHandle(member, of); });
                isRefused([&, of = handle] { parameter = database.getParameterHandle(member, of); });
                FUZZ_CHECK(attribute == memberOf(name, member) && parameter == memberOf(name, member));
            }
        }
    }

private:
    static std::string upper(const std::string &name) { return RtiStringUtility::toupper(name); }

    std::map<std::string, unsigned long> _classes, _members; // handles, by CLASS and CLASS/MEMBER in upper case
};
