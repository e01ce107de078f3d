// Checks that a program can catch exceptions of both shared libraries by their type.

#include "fed/RtiFedDatabase.hh"
#include "infrastructure/RtiBuffer.hh"
#include "infrastructure/RtiDebugStream.hh"

#include <iostream>

template <class Exception, class Action>
bool catches(Action action) {
    try {
        action();
    } catch (const Exception &) {
        return true;
    } catch (const RTI::Exception &other) {
        std::cerr << "caught " << other._name << " only as RTI::Exception\n";
    }
    return false;
}

int main() {
    _rtiErrorStream.disable();
    const RtiFedDatabase database(RtiFedDatabaseConstructorArg("none.fed", RTI_false));
    RtiBuffer empty;
    unsigned long number = 0;
    const bool caught = catches<RTI::NameNotFound>([&] { database.getObjectClassHandle("None"); }) &&
                        catches<RTI::CouldNotOpenFED>(
                            [&] { RtiFedDatabase(RtiFedDatabaseConstructorArg("none/none.fed", RTI_true)); }) &&
                        catches<RtiBufferUnderflow>([&] { empty.get(&number, 1); });
    std::cout << (caught ? "caught\n" : "not caught\n");
    return caught ? 0 : 1;
}
