// The files of one design, and the reader that holds what is in them.
#pragma once

#include "fabrication/Notes.h"
#include "readers/EDAReader.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace EDATool {

// What a file of a set was taken for.
struct SourceFile {
    std::string file;
    std::string use;    // "copper layer 1", "drills from top to bottom", "left out"
    std::string reason; // why
};

// What the front end made of a fabrication set.
struct FabricationReport {
    struct File : SourceFile {
        std::vector<EDA::Fabrication::Note> notes;
    };
    std::vector<File> files;
    std::vector<std::string> guesses; // one line each, of the set
    std::vector<std::string> warnings;
};

// What the command line says about files that don't say it themselves.
struct DesignSettings {
    std::vector<std::string> options; // "Label=value", for formats whose reading has options
    std::string importAs; // "PCB" or "Component", for formats that are read differently; empty: as is stored
    std::vector<std::string> layerOrder; // of Gerber files: the copper layers from top to bottom
    std::vector<std::string> spans;      // "FILE=FROM:TO"
    std::string drillFormat;             // "I.D"
    std::string profile;                 // the file of the board's edge; empty: found out
    std::string board;                   // which one of a set with several; empty: see FabricationSet.h
    bool asIs = false;                   // hands the files to the reader untouched

    std::vector<std::string> copper; // files of copper layers and drills to be put on the board
    std::string copperUnits;         // what their numbers are in; empty: as they say
    double copperX = 0.0;            // where their origin goes, in units of the board
    double copperY = 0.0;
    std::string stackup; // a file; empty: none
    std::string step;    // of a design of several steps; empty: see SuiteSteps.h

    bool areOfGerber() const {
        return !layerOrder.empty() || !spans.empty() || !drillFormat.empty() || !profile.empty() ||
               !board.empty() || asIs;
    }
};

struct Design {
    std::string format;                  // "IDF", "Gerber"
    std::vector<std::string> files;      // all that were read
    std::vector<std::string> layerFiles; // of the layers of the board, where each has one
    bool hasBoard = false;               // false: only a library of components
    bool isPackage = false;              // the board is but one component, made of bodies
    std::unique_ptr<EDA::EDAReader> reader;
    std::vector<std::string> warnings; // printable, one line each, with the name of the file
    std::vector<std::string> notices;  // the same: choices that were made and are no trouble
    std::vector<SourceFile> sources;   // of a set whose files were told apart; empty for other designs
    std::string fileUnits;             // of a set that was made one in millimetres: what its files were in
    std::optional<FabricationReport> fabrication; // of a set that went through the front end

    const EDA::EDABoard &board() const { return reader->getBoard(); }
    EDA::EDABoard &board() { return reader->getBoard(); }
};

// Reads the files of one design, and the files that belong to them. Their format is known by what is in them,
// or else by their names. A folder stands for the files in it, of which those of no format are left out.
// Throws DesignFailure, or UsageFailure for files that make no design together and settings that don't fit.
Design readDesign(const std::vector<std::string> &files, const DesignSettings &settings = DesignSettings());

// Puts the copper that the settings name onto the board, and gives the layers their places in the stack-up of
// the settings. Files, notices and warnings join those of the design. The units of the board must be settled.
// Throws as readDesign does.
void completeDesign(Design &design, const DesignSettings &settings);

// Both, for commands that take the units as they are.
Design readWholeDesign(const std::vector<std::string> &files, const DesignSettings &settings);

// All files of the design, those that are left out as well: none may be written over.
std::vector<std::string> filesOf(const Design &design);

// True when this is a model file, by its content or else by its name; a folder is none. Throws DesignFailure
// where the file cannot be read.
bool isModelFile(const std::string &file);

// Prints the notices and the warnings.
void printWarnings(const Design &design);

} // namespace EDATool
