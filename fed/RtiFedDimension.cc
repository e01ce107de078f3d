#include "fed/RtiFedDimension.hh"

RtiFedDimension::~RtiFedDimension() = default;
