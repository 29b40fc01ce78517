// The layers between which the holes of a drill file go.
#pragma once

#include "fabrication/sets/FabricationSet.h"

#include <optional>
#include <string>

namespace EDA::Fabrication {

// Numbers of layers in a name, 1 is the top one: "L1-L6", "1-4". Those without letters stand at its end.
struct NamedSpan {
    int from = 0;
    int to = 0;
    bool hasLetters = false;
    std::string start; // the name before it
};
std::optional<NamedSpan> spanInName(std::string const &stem);

// Sets the spans of all drills and what says so. False, with the reason, for settings that name a file or a
// layer that is not there.
bool setSpans(FabricationSet &set, SetSettings const &settings, std::string &error);

// Whether a text of the user means the file: its whole name, its last part, or that without extension.
bool meansFile(std::string const &text, SetFile const &file);

} // namespace EDA::Fabrication
