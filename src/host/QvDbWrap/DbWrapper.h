// Opens designs of the external layout suite and gives their records.
#pragma once

#include "host/QvDbWrap/Records.h"

#include <memory>
#include <string>
#include <vector>

namespace QvDbWrap {

// A design that is opened by the constructor, which does all the work: every getter returns at once, with
// references that live as long as the wrapper.
//
// This host reads three kinds of file itself, known by their content: IPC-2581 documents, layouts in its own
// text form (see LayoutFile.h), and the configuration files that GenerateCFGFile writes. For a design of any
// other kind it takes the layout that stands beside it under the same name with the extension .qvd; without
// one the constructor throws std::runtime_error with a text for the user, as it does for a .xml, .cvg or .qvd
// that isn't what it should be. It never writes a layout.
//
// What is skipped or amended in a design is told in the log "<design without extension>.qvd.log", a line
// "Warning: ..." for each kind with a count. It is written in the folder of the file that was opened, which
// for a configuration may be another than the design's. A reading removes the log of an earlier one; one with
// nothing to tell leaves none. A folder that can't be written loses the log, not the design.
//
// The environment variable USE_DFA_BOUND as "1" asks for a package's courtyard, where it has one, in place of
// its body.
class DbWrapper {
public:
    enum Mode {
        Read = 0,      // read the design
        Configure = 1, // only choose a step and write a configuration
    };

    // Throws std::runtime_error when the design can't be read.
    DbWrapper(std::string file, int mode);
    ~DbWrapper();
    DbWrapper(const DbWrapper &) = delete;
    DbWrapper &operator=(const DbWrapper &) = delete;

    // The step that GenerateCFGFile writes down.
    void SetStepName(std::string &name);

    // Writes a configuration file, "Board Bench.cfg" in the working folder, that names the design and the
    // step, and gives its name. Opened with Read, it stands for that step of the design. Throws
    // std::runtime_error when it can't be written.
    void GenerateCFGFile(std::string &file);

    const std::vector<outlineData> &GetOutlines() const;
    const std::vector<layerData> &GetAllLayers() const;
    const std::vector<viaModelData> &GetAllViaModels() const;
    const std::vector<viaData> &GetAllVias() const;
    const std::vector<componentModelData> &GetAllComponentModels() const;
    const std::vector<componentData> &GetAllComponents() const;
    const std::vector<wirebondData> &GetAllWirebonds() const;

private:
    class Design;
    std::unique_ptr<Design> design_;
};

} // namespace QvDbWrap
