#pragma once

#include "fed/RtiFedNumberedElement.hh"

/// A parameter of an interaction class: its name and its handle.
class RTIFED_EXPORT RtiFedParameter : public RtiFedNumberedElement<RtiParameterHandle> {
public:
    static constexpr const char *_thisClassName = "RtiFedParameter";
    static constexpr const char *_thisClassVersion = "1.0";

    using RtiFedNumberedElement::RtiFedNumberedElement;
    ~RtiFedParameter() override;
};
