// Reading real fabrication sets.
#pragma once

#include "fabrication/Notes.h"
#include "fabrication/sets/FabricationSet.h"
#include "host/FileSystem/TemporaryFolder.h"
#include "readers/gerber/GerberReader.h"

#include <memory>
#include <string>
#include <vector>

namespace EDA {

// Reads the layers and drills of a fabrication set, however they were written, into one board.
//
// The reader of layers and drills takes a narrow dialect. This one stands before it: each file is read by the
// published formats and written anew in that dialect, in millimetres, under its own name in a private folder
// for temporary files; from there the reader takes it. What the dialect cannot hold joins the board
// afterwards: slots, as vias with an outline; the board's edge, from the profile layer; the nets that the
// files name.
//
//     FabricationReader reader;
//     if (!reader.setFiles({"fab.zip"})) report(reader.getError());
//     reader.readFiles(nullptr);
//     for (auto &file : reader.getReport().files) ...
class FabricationReader : public GerberReader {
public:
    FabricationReader();
    ~FabricationReader() override;
    FabricationReader(FabricationReader const &) = delete;
    FabricationReader &operator=(FabricationReader const &) = delete;

    // What became of one file.
    struct FileReport {
        std::string file; // as messages call it
        std::string use;  // "copper layer 1", "drills from top to bottom", "board outline", "left out"
        std::string reason;
        std::vector<Fabrication::Note> notes;
        std::string layerName; // of the board's layer; empty where there is none
    };
    struct Report {
        std::vector<FileReport> files;     // in the order: copper, drills, profile, the rest
        std::vector<std::string> guesses;  // one line each, of the set
        std::vector<std::string> warnings; // one line each; with the file's name where it is of one
    };

    void setSettings(Fabrication::SetSettings const &settings) { settings_ = settings; }

    // Files, folders (with the folders in them) and archives (zip, tar and what packs them, one deep), looked
    // through and sorted. False, with the reason and with what was found in the error text, where no copper
    // layer and no drill file is among them. What was read before is dropped.
    bool setFiles(std::vector<std::string> const &files);

    // setFiles of the one file, then readFiles. A layer of another kind than copper is read as one.
    bool readFile(std::string const &path) override;

    // Reads what setFiles found. Merging is what the options say. As GerberReader: true when each layer file
    // gave a layer, and a cancelled read keeps what was read.
    bool readFiles(Tools::ToolProgress *progress) override;

    Fabrication::FabricationSet const &getSet() const { return set_; }
    Report const &getReport() const { return report_; }

    // Where the canonical files lie until the reader ends or reads again; empty before.
    std::string getCanonicalFolder() const;

private:
    struct Run;

    void makeReport();

    Fabrication::SetSettings settings_;
    Fabrication::FabricationSet set_;
    Report report_;
    std::unique_ptr<FileSystem::TemporaryFolder> unpacked_;
    std::unique_ptr<FileSystem::TemporaryFolder> canonical_;
};

} // namespace EDA
