// Reads designs that only the external layout suite, or what stands in for it, can open.
#pragma once

#include "readers/EDAReader.h"

#include "host/FileSystem/FileFormats.h"

#include <QString>

#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace Tools {
class ToolProgress;
}

namespace QvDbWrap {
class DbWrapper;
class GeomObj;
struct bumpData;
struct componentData;
struct componentModelData;
struct geomElem;
struct layerData;
struct viaData;
struct viaModelData;
struct wirebondData;
struct wirebondPath;
} // namespace QvDbWrap

namespace EDA {

// The families of designs. Hosts store the numbers.
enum class EDAFormat : int { Brisko = 0, ODB = 1, IPC2581 = 2, QVD = 3 };

// Asks for one of the steps, which are the boards and panels, of an archive. Implemented by the host.
class StepChooser {
public:
    // Gets the names of at least two steps, in the archive's order, and gives the index of one. Nothing, or
    // an index that is out of range, cancels the read.
    virtual std::optional<int> chooseStep(const std::vector<std::string> &steps) = 0;
    virtual ~StepChooser() = default;
};

// A design is opened by QvDbWrap::DbWrapper, which gives plain records; the reader makes a board of them, in
// metres. Around that it sets up what the wrapper and the suite need, and collects and removes what they
// leave beside the design.
//
// What a caller should know:
// - While it reads, the working folder of the process is the folder of the design. It is changed back at the
//   end, also when something throws. The environment variables QVPATH (folder of the suite) and USE_DFA_BOUND
//   ("1": component outlines from placement bounds; else empty, which counts as unset) stay set.
// - Without the suite, a design can still be opened if it was converted before: if the suite's own file, of
// the
//   same name with the extension .qvd, stands beside it. getError then tells of the suite even though the
//   read succeeds: a good read may have a message.
// - Warnings, errors and log lines of all reads are kept. An error in a log fails each later read as well:
// use
//   one reader for one design.
class VelkinEDAReader : public EDAReader {
public:
    //   deleteJunk   remove the logs and other side files that the suite leaves beside the design
    //   reconvert    don't use the suite's file of an earlier conversion, and leave none
    //   application  the application whose configuration names the folder of the suite; null counts as empty
    VelkinEDAReader(bool deleteJunk, bool reconvert);
    VelkinEDAReader(const char *application, bool deleteJunk, bool reconvert);
    VelkinEDAReader(const std::string &application, bool deleteJunk, bool reconvert);

    // False with a reason in getError: the suite is not there, the design can't be opened or has neither a
    // point of the board's edge nor a conductor layer, the user cancelled, or a log has an error. Whatever is
    // thrown by the wrapper ends in the message. Throws std::filesystem::filesystem_error when the working
    // folder that was left is no longer there.
    bool readFile(const std::string &file) override;

    // The "EDA" preferences.
    EntityModel::Entity *getOptions() override;

    // Whether the file last read was of a kind that may hold a package: .mcm, .sip, .cvg, .xml, .qvd.
    bool canBeComponent() override { return canBeComponentFlag_; }

    // Circles of packages and conductors may have as few as 6 points.
    void updateGeometryConversionOptions(GeometryConversionOptions &options) override;

    // Both may be null, are not owned, and must live as long as they are set.
    void setToolProgress(Tools::ToolProgress *progress) { toolProgress_ = progress; }
    // Without a chooser, the first step in the order of the names is read.
    void setStepChooser(StepChooser *chooser) { stepChooser_ = chooser; }

    // The lines of all logs so far that warn. True if there are any.
    bool hadWarnings(std::string &out) const;

    // Nothing writes these details yet: always empty.
    void getLastFileDetails(std::string &out) const { out = lastFileDetails_; }

    // The filter text of a format for a file dialog; empty for a number that is no format.
    static QString getFileFormats(const EDAFormat &format);

    // Adds the patterns of all formats.
    static void getAllFileFormats(std::set<std::string> &out);

private:
    // What one read works with.
    struct Job {
        std::string file;       // as the caller names it
        std::string path;       // the same, absolute, since the working folder changes
        std::string extension;  // lower case, without its dot
        std::string folder;     // of the design
        std::string stem;       // the path without its extension
        std::string layoutFile; // the file that the suite writes
        bool hasData = false;   // a point of the board's edge or a conductor layer
        int failures = 0;
    };

    // Where the conductors lie, for what is mounted on them.
    struct Stack {
        std::map<std::string, int> indices; // of all layers by their names
        int numLayers = 0;
        double topGap = 0.0;                      // from the board's top to the first conductor
        double bottomZ = 0.0;                     // low face of the last conductor
        std::map<std::string, double> topOffsets; // of the board's layers by their names
    };

    // What records that many parts share may take: one long name or shape must not fill the memory when each
    // part keeps a copy. Short texts are free.
    struct Room {
        const std::string &takeText(const std::string &text); // empty when there is no room
        bool takePoints(std::size_t count);
        std::string warnings() const;

        std::size_t textBytes = std::size_t{64} << 20;
        std::size_t viaPoints = 10'000'000;
        std::size_t textsLost = 0;
        std::size_t shapesLost = 0;
    };

    // The pieces of the board's edge so far.
    struct EdgePieces {
        int nextTarget(const EDAOutline &edge);
        void note(EDAOutline &edge, int target, bool gavePoints);

        int index = 0;
        bool isEdgeRaw = false; // the edge itself has points that were not cleaned
        bool hasData = false;   // a piece left a point
    };

    using WrapperPointer = std::unique_ptr<QvDbWrap::DbWrapper>;

    static void initialiseFileFormats();

    // Around the conversion.
    static Job describe(const std::string &file);
    void setUpEnvironment() const;
    bool prepare(Job &job);
    std::string suiteProblem() const;
    void startProgress(const Job &job) const;
    WrapperPointer openDesign(const Job &job) const;
    std::string chooseStep(const std::vector<std::string> &steps) const;
    void harvestLogs(const Job &job, const std::string &workingFolder);
    void extractAndDeleteLog(const std::string &path, bool asWarnings);
    void sortLogLine(const std::string &line, bool asWarnings);
    bool decideResult(const Job &job);
    void tidyUp(const Job &job, const std::string &workingFolder) const;

    // The conversion.
    void convert(const QvDbWrap::DbWrapper &wrapper, Job &job);
    void startNextStage(const char *text) const;
    void showStage(const char *text) const;
    bool convertBoardOutlines(const QvDbWrap::DbWrapper &wrapper);
    void addEdgeElement(const QvDbWrap::geomElem &element, EdgePieces &pieces);
    void addEdgeObject(const QvDbWrap::GeomObj &object, EdgePieces &pieces);
    bool convertBoardLayers(const QvDbWrap::DbWrapper &wrapper, Stack &stack);
    void measureStack(const std::vector<QvDbWrap::layerData> &layers, Stack &stack);
    void convertConductor(const QvDbWrap::layerData &record);
    void convertBoardVias(const QvDbWrap::DbWrapper &wrapper);
    EDAVia viaOf(const QvDbWrap::viaData &record, const QvDbWrap::viaModelData &model);
    void convertBoardComponents(const QvDbWrap::DbWrapper &wrapper, const Stack &stack);
    void convertComponent(const QvDbWrap::componentModelData &record);
    void convertPlacement(const QvDbWrap::componentData &record, const Stack &stack);
    EDABump bumpOf(const QvDbWrap::bumpData &record, const std::string &group, const Stack &stack) const;
    void convertBoardWirebonds(const QvDbWrap::DbWrapper &wrapper);
    EDAWirebond wirebondOf(const QvDbWrap::wirebondData &record, const QvDbWrap::wirebondPath &path);
    void convertGeometry(const QvDbWrap::geomElem &element, EDAOutline &outline, int index);
    void cleanupOutline(EDAOutline &outline);

    static std::map<EDAFormat, FileSystem::FileFormats> supportedFormats_;

    Tools::ToolProgress *toolProgress_ = nullptr;
    StepChooser *stepChooser_ = nullptr;
    std::string lastFileDetails_;
    std::string suiteFolder_; // ends in "/" unless empty
    bool deleteJunk_;
    bool reconvert_;
    std::string logText_;
    std::string warnings_;
    std::string errors_;
    bool canBeComponentFlag_ = false;
    Room room_; // of the current read
};

} // namespace EDA
