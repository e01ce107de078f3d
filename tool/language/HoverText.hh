#pragma once

#include "tool/language/Markup.hh"
#include "tool/language/NameUses.hh"
#include "tool/model/DeliveryWords.hh"

#include <string>

class Document;

/// Returns the description of something that the text declares.
std::string hoverText(const Document &document, const NamedEntity &named, NameUse use, Markup markup);

/// Returns what a transportation or ordering means, in one sentence.
const char *explanationOf(const DeliveryWords &words, const DeliveryWord &word);
