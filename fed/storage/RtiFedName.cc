#include "fed/storage/RtiFedName.hh"

const char RtiFedName::_anchor = 0;
