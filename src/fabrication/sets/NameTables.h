// What words and extensions in the names of files and layers stand for.
#pragma once

#include <string_view>
#include <vector>

namespace EDA::Fabrication {

enum class Word {
    None,
    Top,
    Bottom,
    Copper,
    Numbered, // a number behind it counts layers from the top: "L2"
    Inner,    // a number behind it counts inner layers: "In1"
    Group,    // a number behind it orders inner layers and no more: "group3"
    Power,    // a plane's net: of copper, place unknown
    Solder,   // of the mask, or with "side" of the bottom copper
    Side,
    Paste,
    Mask,
    Legend,
    Outline,
    Mechanical,
    Drill,
    Other,  // of another kind of layer; its meaning says which
    Filler, // says nothing, but belongs to names of layers
};

struct WordRule {
    std::string_view text; // in lower case
    Word word;
    std::string_view meaning; // for people, of what is no copper
    bool isStart = false;     // holds for all words that start so
    bool joins = true;        // may be part of a word made of several: "topmask"
    bool needsNumber = false; // holds with a number behind it alone, as it may be of the board's name
};

struct ExtensionRule {
    std::string_view text; // ".gtl"; a '#' stands for a number
    Word word;
    std::string_view meaning;
    double shift = 0.0; // of an inner layer: what is added to its number
};

std::vector<WordRule> const &wordRules();
std::vector<ExtensionRule> const &extensionRules();

// Words that tell whether holes are plated, in the order to try.
struct PlatingRule {
    std::string_view text;
    bool plated;
};
std::vector<PlatingRule> const &platingRules();

} // namespace EDA::Fabrication
