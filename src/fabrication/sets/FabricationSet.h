// The files of a fabrication set: what each is, in what order the layers lie, which board they are of.
#pragma once

#include "fabrication/drills/DrillFile.h"
#include "fabrication/layers/LayerFile.h"

#include <cstddef>
#include <string>
#include <vector>

namespace EDA::Fabrication {

enum class FileUse {
    Copper,
    Drill,
    Profile, // the board's edge
    Other,   // a layer of another kind: mask, legend, paste, drawing
    Helper,  // no layer, but it says something of the others: tool tables, job files, layer lists
    None,    // nothing of a fabrication set
};

struct SetFile {
    std::string file;  // where it is read
    std::string shown; // what messages call it: "fab.zip/top.gbr"

    FileUse use = FileUse::None;
    std::string meaning;      // for people: "solder mask", "drills of a layer's form"
    std::string reason;       // why: "its FileFunction is Soldermask,Top", "by its extension .gts"
    bool isGuess = false;     // the file does not say it itself: by its name or where it lies
    bool isLayerForm = false; // written as a layer
    bool isReadable = true;
    bool hasPlace = false; // of copper, 1 is the top; layers without one stand between top and bottom
    double place = 0.0;
    bool isCounted = false;    // the place is a number in a name, which may count inner layers alone
    bool mayEnd = false;       // the place counts all layers: the highest is the bottom where nothing else is
    int number = 0;            // its own among the copper, whatever the others have; 0: it has none
    bool isByForm = false;     // nothing says what it is but what it draws
    bool isMechanical = false; // a drawing that may hold the board's edge where nothing better does

    LayerFacts layer;         // of a layer's form
    DrillFacts drill;         // of a drill file's form
    std::string functionList; // the list beside it that gives its FileFunction; empty: it does itself
    std::size_t size = 0;     // bytes
};

// One drill file and the layers its holes go through.
struct SetDrill {
    SetFile file;
    std::size_t from = 0; // index into the copper layers
    std::size_t to = 0;
    std::string spanReason;
    std::optional<bool> plated; // by attributes, comments or its name
};

struct SetSettings {
    std::vector<std::string> layerOrder; // the copper layers from top to bottom; empty: found out
    struct Span {
        std::string file, from, to;
    };
    std::vector<Span> spans;
    DrillNumbers drillNumbers; // what the caller says of all drill files
    std::string profile;       // the file of the board's edge; empty: found out
    std::string board; // which one where there are several, by the name that the message gives; empty: the
                       // one with most files
};

// A set, sorted.
struct FabricationSet {
    std::vector<SetFile> copper; // from top to bottom
    std::vector<SetDrill> drills;
    std::vector<SetFile> profiles;     // none or one
    std::vector<SetFile> leftOut;      // all else, also what belongs to another board
    std::vector<std::string> guesses;  // of the set as a whole, one line each
    std::vector<std::string> warnings; // the same
    std::vector<std::string> boards;   // names of the boards found, when more than one
};

// One file looked through. The content decides first: attributes, comments and names of layers in it, then
// its form and extents, then the name of the file.
SetFile lookAtFile(std::string const &file, std::string const &shown);

// Sorts files that were looked through. Copper in order by the attributes, by lists of layers and job files
// beside them, by names; no inner layer is dropped. Several boards in one place are told apart by common
// starts of names and by extents; the others are left out, with their name. A name in the settings that no
// file has, or that two have, is an error: false, with the reason in `error`.
bool sortSet(std::vector<SetFile> files, SetSettings const &settings, FabricationSet &set,
             std::string &error);

} // namespace EDA::Fabrication
