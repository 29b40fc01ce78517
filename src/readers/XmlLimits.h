// How large an XML document may be, far above any real one.
#pragma once

#include <cstddef>

namespace EDA {

struct XmlLimits {
    // Levels of elements within elements: the toolkit that takes a document down again does so by recursion.
    int depth = 256;

    // Prefixes of namespaces that hold at one place: the parser compares all of them at the end of each
    // element.
    std::size_t prefixes = 64;

    // Attributes of one element: the document keeps them in a table that names can be made to defeat.
    std::size_t attributes = 1'000;

    // Entities that are declared: the parser looks for each of them in all others.
    std::size_t entities = 1'000;

    // Characters that the parser would go through, and may gather, if the longest entity stood at every place
    // with room for its name.
    std::size_t entityText = 100'000'000;
};

} // namespace EDA
