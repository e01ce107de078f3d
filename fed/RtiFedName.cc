#include "fed/RtiFedName.hh"

const char RtiFedName::_anchor = 0;
