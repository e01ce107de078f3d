#pragma once

#include <cstdio>

class RtiFedParserCodegen;

int RtiFedParser_Class_main(std::FILE *file, RtiFedParserCodegen *codegen);
