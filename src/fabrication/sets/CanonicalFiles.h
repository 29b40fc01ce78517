// The private files between the front end and the reader.
#pragma once

#include "fabrication/sets/FabricationSet.h"
#include "fabrication/TextSink.h"
#include "host/FileSystem/TemporaryFolder.h"

#include <cstdio>
#include <map>
#include <set>
#include <string>
#include <string_view>

namespace EDA::Fabrication {

// A plain file. It need not survive the process, so nothing is brought to the disk by force.
class FileSink : public TextSink {
public:
    explicit FileSink(std::string const &path);
    ~FileSink() override;
    FileSink(FileSink const &) = delete;
    FileSink &operator=(FileSink const &) = delete;

    void write(std::string_view text) override;

    // True when all was written.
    bool close();

private:
    std::FILE *file_;
    bool isGood_;
};

// Gives each file of a set a place under its own name; the second of the same name lies in a folder of its
// own. Layers that differ in the extension alone keep it in the name, so that layers have names of their own:
// "board.gtl" becomes "board.gtl.gbr".
class CanonicalNames {
public:
    CanonicalNames(std::string const &folder, FabricationSet const &set);

    // Empty where no folder can be made.
    std::string pathFor(SetFile const &file);

private:
    std::string folder_;
    std::set<std::string> sharedStems_;
    std::set<std::string> taken_;
};

} // namespace EDA::Fabrication
