#pragma once

#include "infrastructure/RTI.hh"

#include <exception>
#include <iostream>

/// Runs the body of a program, which reports failures by exceptions; returns the exit status.
template <class Body>
int runProgram(Body body) {
    try {
        body();
        return 0;
    } catch (const RTI::Exception &failure) {
        std::cerr << failure._name << ": " << failure._reason << '\n';
    } catch (const std::exception &failure) {
        std::cerr << failure.what() << '\n';
    }
    return 1;
}
