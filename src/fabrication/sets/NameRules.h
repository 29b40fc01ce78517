// What the name of a file or of a layer says.
#pragma once

#include "fabrication/sets/FabricationSet.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace EDA::Fabrication {

// Places of layers of which only the side is known, of those of which nothing is, and of inner ones that are
// in order among themselves alone.
constexpr double bottomPlace = 1e6;
constexpr double unknownPlace = 1e5;
constexpr double groupPlace = 1e3;

struct NameFinding {
    FileUse use = FileUse::None; // None: the name says nothing
    std::string meaning;         // of what is no copper
    bool isPure = false;         // there is nothing in the name but words that name layers
    bool isMechanical = false;   // may hold the board's edge where nothing better does
    bool isWeak = false;         // copper by the net of a plane, or by a group's number
    bool hasPlace = false;
    double place = 0.0;
    bool isCounted = false; // see SetFile
    bool mayEnd = false;    // the same
};

// By the words of a name without its extension: "EtchLayer2Bottom", "L2_GND", "top copper".
NameFinding findByWords(std::string_view name);

// By the extension, with its dot, whatever its case: ".GTL", ".toplayer".
NameFinding findByExtension(std::string_view extension);

// "EtchLayer2Bottom" as etch, layer, 2, bottom: words and numbers, in lower case.
std::vector<std::string> wordsOf(std::string_view name);

// What is left of a file's name without the words for layers and the extension: "keyboard" of
// "keyboard_Bottom.gbr". Files of one board have it in common. In lower case; may be empty.
std::string boardStem(std::string_view fileName);

std::optional<bool> platingByName(std::string_view name);

// A file's name without folders and extension, and what stands before it.
std::string stemOf(std::string const &file);
std::string lowerCase(std::string_view text);

} // namespace EDA::Fabrication
