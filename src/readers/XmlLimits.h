// How large an XML document may be, far above any real one.
#pragma once

#include <cstddef>
#include <cstdint>

namespace EDA {

struct XmlLimits {
    // Levels of elements within elements: readers walk them by recursion.
    int depth = 256;

    // Prefixes of namespaces that hold at one place: the parser compares all of them at the end of each
    // element.
    std::size_t prefixes = 64;

    // Attributes of one element: one that is looked for is compared with each of them.
    std::size_t attributes = 1'000;

    // Elements and attributes of a document, of up to twenty bytes each beside their texts.
    std::uint32_t nodes = 50'000'000;

    // Different names of elements and attributes.
    std::uint32_t names = 100'000;

    // Entities that are declared: the parser looks for each of them in all others.
    std::size_t entities = 1'000;

    // Characters that the parser would go through, and may gather, if the longest entity stood at every place
    // with room for its name.
    std::size_t entityText = 100'000'000;
};

} // namespace EDA
