#pragma once

// What calls of the library and of its model return, as texts that are equal if the answers are.

#include "fed/RtiFedDatabase.hh"
#include "tests/model/PlainDatabase.hh"

#include <type_traits>

template <class T, int N>
std::string textOf(const RtiTypeWrapper<T, N> &handle) {
    return std::to_string(handle._value);
}
template <class Value>
std::string textOf(Value number) {
    return std::to_string(number);
}
inline std::string textOf(const std::string &text) {
    return '"' + text + '"';
}
template <class Handles>
std::string listOf(const Handles &handles) {
    std::string text;
    for (const auto &handle : handles)
        text += textOf(handle) + ' ';
    return text;
}
template <class Handle>
std::string textOf(const std::set<Handle> &handles) {
    return listOf(handles);
}
inline std::string textOf(const std::multiset<plain::Number> &handles) {
    return listOf(handles);
}
inline std::string textOf(const std::map<plain::Number, plain::Record *> &records) {
    std::string text;
    for (const auto &[handle, record] : records)
        text += textOf(handle) + ' ';
    return text;
}
inline std::string textOf(std::set<RtiFedAttribute *> *attributes) {
    std::multiset<plain::Number> handles;
    for (const RtiFedAttribute *attribute : *attributes)
        handles.insert(attribute->getHandle()._value);
    return listOf(handles);
}
inline std::string textOf(RtiAttributeHandleSet *handles) {
    std::string text;
    for (unsigned long i = 0; i < handles->size(); ++i)
        text += textOf(handles->getHandle(i)) + ' ';
    return text;
}
template <class Record>
std::string textOf(Record *record) {
    if constexpr (std::is_base_of_v<RtiFedElement, Record>)
        return record ? textOf(record->getName()) + textOf(record->getHandle()) : "null";
    else
        return record ? textOf(record->name) + textOf(record->handle) : "null";
}

/// What a call returns or throws.
template <class Action>
std::string answerOf(Action action) {
    try {
        if constexpr (std::is_void_v<decltype(action())>)
            return action(), "done";
        else
            return textOf(action());
    } catch (const RTI::Exception &thrown) {
        return std::string(thrown._name) + ": " + thrown._reason;
    } catch (const std::runtime_error &refused) { // by the model
        return refused.what();
    }
}
