// XML documents of a limited size.
#pragma once

#include "readers/XmlTree.h"

#include <cstddef>
#include <string>

class QIODevice;

namespace EDA {

// Adds the elements of the document that the text holds to an empty tree, known by their local names. False
// when the text does not parse, goes beyond a limit, or grows by its entities far beyond what its bytes could
// say; what the tree then holds is no document.
bool loadXml(const std::string &text, const XmlLimits &limits, XmlTree &tree);

// The local name of the first element of the XML document that the device, of `size` bytes, holds, with the
// same limits. What follows it is not looked at. Empty when there is none.
QString firstElement(QIODevice &device, std::size_t size, const XmlLimits &limits);

} // namespace EDA
