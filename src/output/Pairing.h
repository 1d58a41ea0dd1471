#pragma once
// Which element of one collection is which of another.

#include <string>
#include <utility>
#include <vector>

#include "output/Describe.h"

namespace vendrel {

/// The property by which a class is recognised: "Name", else its first text; null if it has none.
const PropertyDescription* NameProperty(const ClassDescription& type);
/// The value that tells elements of one name apart: the one behind the name.
const PropertyDescription* SecondProperty(const ClassDescription& type);
/// The first path of a class; null if it has none.
const PropertyDescription* PathProperty(const ClassDescription& type);
/// The property of that name; null if the class has none.
const PropertyDescription* PropertyNamed(const ClassDescription& type, std::string_view name);

/// A value of any plain shape as text; the qualified name of a link. Empty without a property.
std::string TextOf(ElementRef element, const PropertyDescription* property);
/// The path as seen from a folder (with its closing backslash; empty: none).
std::string PathFrom(std::string_view folder, ElementRef element,
                     const PropertyDescription* property);

/// One element of either collection or of both.
struct ElementPair {
  ElementRef Before, After;
};

/// Pairs two lists of one class. Those of the first come in its order, then those that only the
/// second has. Takes time linear in their number.
std::vector<ElementPair> PairElements(const std::vector<ElementRef>& before,
                                      const std::vector<ElementRef>& after,
                                      std::string_view folderBefore, std::string_view folderAfter);

}  // namespace vendrel
