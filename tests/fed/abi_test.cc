// Programs that were built against an earlier release call and override these virtual functions by their index in the
// virtual table. A new one is added after the last.

#include "fed/RtiFedElement.hh"
#include "fed/loading/RtiFedParserCodegen.hh"
#include "infrastructure/RtiBuffer.hh"

#include <gtest/gtest.h>

#include <cstring>
#include <ostream>

#if defined(__GXX_ABI_VERSION) && !defined(__arm__) && !defined(__aarch64__)

namespace {

/// The index of a virtual function, from 0; the destructor takes two.
template <class Function>
std::ptrdiff_t slot(Function function) {
    std::ptrdiff_t word = 0; // one more than the offset in the table
    std::memcpy(&word, &function, sizeof word);
    EXPECT_EQ(word % 2, 1) << "not virtual";
    return word / static_cast<std::ptrdiff_t>(sizeof(void *));
}

template <class... Functions>
void expectSlots(std::ptrdiff_t first, Functions... functions) {
    const auto expectNext = [&first](auto function) { EXPECT_EQ(slot(function), first++); };
    (expectNext(functions), ...);
}

} // namespace

TEST(Abi, KeepsThePlacesOfVirtualFunctions) {
    expectSlots(2, &RTI::Exception::cloneSelf, &RTI::Exception::throwSelf);
    expectSlots(2, &RtiSaveableType::save, &RtiSaveableType::restore, &RtiSaveableType::dump, &RtiSaveableType::diff);
    expectSlots(6, &RtiFedElement::getName);
    using Put = void (RtiBuffer::*)(unsigned long);
    using PutSigned = void (RtiBuffer::*)(long);
    using PutObject = void (RtiBuffer::*)(RtiSaveableType &);
    using Get = void (RtiBuffer::*)(unsigned long *, unsigned long);
    using GetSigned = void (RtiBuffer::*)(long *, unsigned long);
    using GetObject = void (RtiBuffer::*)(RtiSaveableType &);
    expectSlots(2, Put(&RtiBuffer::put), PutSigned(&RtiBuffer::put), PutObject(&RtiBuffer::put), Get(&RtiBuffer::get),
                GetSigned(&RtiBuffer::get), GetObject(&RtiBuffer::get), &RtiBuffer::getUnsignedLong,
                &RtiBuffer::putBytes, &RtiBuffer::getBytes);
    using Codegen = RtiFedParserCodegen;
    expectSlots(2, &Codegen::setFederate, &Codegen::setFederateVersion, &Codegen::addSpace, &Codegen::addDimension,
                &Codegen::addObjectClass, &Codegen::addObjectClassAttribute, &Codegen::addInteractionClass,
                &Codegen::addParameter, &Codegen::declareObjectClass, &Codegen::declareObjectClassAttribute,
                &Codegen::declareInteractionClass, &Codegen::declareParameter, &Codegen::expectDeclarations);
}

#endif
