// Lists of layers beside the layers: job files and tables of names.
#pragma once

#include "fabrication/sets/FabricationSet.h"

#include <string>
#include <string_view>
#include <vector>

namespace EDA::Fabrication {

// What a list says of a file.
struct ListEntry {
    std::string file;     // its name, without folders
    std::string function; // by the published file functions: "Copper,L1,Top"; empty where it has none
    std::string name;     // in words: "top copper"
};

// The entries of a job file (JSON with FilesAttributes) or of a list with lines "top copper, board.gtl".
// Takes any text; empty where it is no list.
std::vector<ListEntry> readLayerList(std::string_view text);

// What a list of layer pairs says of the drill files beside it, all by their extensions: the holes of
// "board.txt" go from "board.gtl" to "board.gbl".
struct LayerPair {
    std::string drills; // ".txt"
    std::string from, to;
};
std::vector<LayerPair> readLayerPairs(std::string_view text);

// Lets lists among the helpers tell what files are of which the content says nothing.
void applyLists(std::vector<SetFile> &files);

} // namespace EDA::Fabrication
