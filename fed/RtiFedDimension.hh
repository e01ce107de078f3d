#pragma once

#include "fed/RtiFedNumberedElement.hh"

/// A dimension of a routing space: its name and its handle.
class RTIFED_EXPORT RtiFedDimension : public RtiFedNumberedElement<RtiDimensionHandle> {
public:
    static constexpr const char *_thisClassName = "RtiFedDimension";
    static constexpr const char *_thisClassVersion = "1.0";

    using RtiFedNumberedElement::RtiFedNumberedElement;
    ~RtiFedDimension() override;
};
