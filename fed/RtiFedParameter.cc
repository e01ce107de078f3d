#include "fed/RtiFedParameter.hh"

RtiFedParameter::~RtiFedParameter() = default;
