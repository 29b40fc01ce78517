// Operations on a list of via or bump definitions, shared by boards and placements.
#pragma once

#include "model/DefinitionTable.h"

#include <cstddef>
#include <vector>

namespace EDA {

// The first definition that `wanted.isInstanceOf` accepts, or null.
template <typename Definition>
Definition *findDefinition(std::vector<Definition> &list, LazyTable<DefinitionTable<Definition>> &table,
                           Definition const &wanted) {
    auto const at = table.get().find(list, wanted);
    return at == PositionChains::none ? nullptr : &list[at];
}

// With `merge`, adds name and location to the definition found as a further instance; without
// it, or when none is found, appends a copy.
template <typename Definition>
void addDefinition(std::vector<Definition> &list, LazyTable<DefinitionTable<Definition>> &table,
                   Definition const &added, bool merge) {
    if (auto *definition = merge ? findDefinition(list, table, added) : nullptr)
        definition->addInstance(added.getName(), added.getXCentre(), added.getYCentre());
    else
        list.push_back(added);
}

// With 0 the number of definitions, otherwise of definitions and all their instances.
template <typename Definition>
std::size_t numDefinitions(std::vector<Definition> const &list, int withInstances) {
    auto count = list.size();
    if (withInstances != 0)
        for (auto const &definition : list)
            count += definition.numInstances();
    return count;
}

} // namespace EDA
