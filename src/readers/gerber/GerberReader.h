// Reads sets of Gerber layer files and Excellon drill files.
#pragma once

#include "host/EntityModel/UniqueIDSet.h"
#include "model/EDAOutlineMerge.h"
#include "readers/EDAReader.h"
#include "readers/gerber/ApertureMacro.h"
#include "readers/gerber/ConductorIndex.h"
#include "readers/gerber/DrillTool.h"
#include "readers/gerber/GerberLimits.h"
#include "readers/gerber/WorkBudget.h"

#include <QMap>
#include <QString>
#include <QStringList>

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Tools {
class ToolProgress;
}

namespace EDA {

// A set of files makes one board: each layer file a conductor layer of outlines, in the order of the files;
// each drill file vias. Flashes, strokes and regions become outlines at once; what is clear becomes holes in
// what it touches; with merging on, outlines that overlap are united at the end of each file.
//
//     GerberReader reader;
//     reader.initialiseFiles({"top.gbr", "bottom.gbr", "holes.drl"});
//     reader.readFiles(nullptr);
//     report(reader.getError());
//
// Both formats go through one table of statements and one state, and the table is a list of prefixes: what it
// does not know lands in the error text, a line each, and never fails a read. Coordinates are absolute and
// in the units that the file names; image rotation, mirroring, scaling and offset have no effect. Text that
// is not valid UTF-8 is taken as Latin-1.
//
// The current point, the aperture function and the names of vias last from file to file; all other state
// starts afresh with each. Copies share the shapes of apertures, which nobody changes, and nothing else.
class GerberReader : public EDAReader {
public:
    GerberReader();
    explicit GerberReader(const GerberLimits &limits);
    GerberReader(const GerberReader &) = default;
    GerberReader &operator=(const GerberReader &) = default;
    ~GerberReader() override;

    // Clears the error and reads one file, a layer or a drill file by what is in it. False, with the reason
    // in the error text, for a file that cannot be opened or is not of copper; without a reason for one that
    // is not there.
    bool readFile(const std::string &path) override;

    // The "Gerber" preferences. The first call on a reader presets the options that fit the format, merging
    // off; later calls give them as the user left them.
    EntityModel::Entity *getOptions() override;

    // Clears the error and reads the layer files, then the via files. Merging is what the options say. True
    // when each layer file gave a layer: a drill file that cannot be read goes unnoticed, and a cancelled
    // read is false without a message. `progress` may be null.
    virtual bool readFiles(Tools::ToolProgress *progress);

    // Appends each file to the via files if it is a drill file, otherwise to the layer files.
    void initialiseFiles(const QStringList &files);

    // True when a line that starts with "M48" or "T0" comes before the first that starts with "G04".
    bool isDrillFile(const std::string &path) const;

    // Replaces the file lists, and the names of the layers where the vias of a file start and end, by the
    // index of the file. The extension of a layer name does not count.
    void setLayerArrangement(const QStringList &layerFiles, const QStringList &viaFiles,
                             const QMap<int, QString> &viaStartLayers,
                             const QMap<int, QString> &viaEndLayers);
    const QStringList &getLayerFiles() const { return layerFiles_; }
    const QStringList &getViaFiles() const { return viaFiles_; }

    // For readFile; readFiles takes it from the options.
    void setMergeConductors(bool merge) { mergeConductors_ = merge; }

    // Digits before and after the point in drill files, 2 and 4 at first. Clamped to 0 to 15.
    void setViaNumberFormat(int integerDigits, int decimalDigits);

    // The digits that the first "%FS" line of a file gives for X. False, and nothing set, without one.
    bool extractNumberFormat(const QString &path, int &integerDigits, int &decimalDigits) const;

private:
    using Statement = std::string_view;
    using AperturePtr = std::shared_ptr<EDAOutline>;

    enum class Interpolation { Linear = 0, Clockwise = 1, Anticlockwise = 2 };
    enum class Operation { Move = 0, Draw = 1, Flash = 2 };
    enum class Quadrants { Single = 0, Multi = 1, NotSaid = 2 };

    struct NumberFormat {
        int integerDigits;
        int decimalDigits;
    };
    struct StepAndRepeat {
        int countX = 1;
        int countY = 1;
        double stepX = 0.0;
        double stepY = 0.0;
    };
    // What a shape is without its cut-ins, if it has any; worked out once, when it is drawn for the first
    // time.
    struct CleanShape {
        bool isKnown = false;
        bool hasCutIns = false;
        std::vector<EDAOutline> pieces;
    };
    struct Dot {
        EDAOutline outline;
        CleanShape clean;
    };
    // What each file starts with anew.
    struct ParserState {
        bool leadingZerosOmitted = true;
        NumberFormat formatX{2, 6};
        NumberFormat formatY{2, 6};
        bool drillMode = false;
        std::map<int, AperturePtr> apertures; // a code may stand for no shape
        AperturePtr currentAperture;
        // Of the apertures with which strokes without length were drawn.
        std::map<std::pair<AperturePtr, Interpolation>, std::vector<Dot>> dots;
        std::map<AperturePtr, CleanShape> flashes;
        std::map<std::string, ApertureMacro> macros;
        Interpolation interpolation = Interpolation::Linear;
        Operation lastOperation = Operation::Move;
        Quadrants quadrants = Quadrants::NotSaid;
        bool inRegion = false;
        bool darkPolarity = true;
        EDAOutline regionOutline;
        StepAndRepeat repeat;
        std::map<int, DrillTool> drillTools;
        int currentTool = -1;
    };
    // An arc from the current point, with the offsets to its centre as the file has them.
    struct Arc {
        double endX, endY;
        double centreX, centreY;
        double i, j;
    };
    struct Rule;

    // A file, from lines to a layer or vias (GerberReader.cpp, GerberFile.cpp).
    bool addFileData(const std::string &path, bool isLayer, Tools::ToolProgress *progress);
    void readStatements(std::string text, Tools::ToolProgress *progress);
    void handleText(Statement text);
    void addLayer(const std::string &path, Tools::ToolProgress *progress);
    void addConductorsAsVias();
    static void addConductorToLayer(EDABoardLayer &layer, EDAOutline &&outline, const std::string &name);
    static void addConductorAsVia(EDABoard &board, const EDAOutline &outline,
                                  EntityModel::UniqueIDSet &names);
    static void addViaToBoard(EDABoard &board, const EDAVia &via);
    static std::string generateUniqueName(const std::string &name, const std::string &prefix,
                                          std::size_t index, EntityModel::UniqueIDSet &names);
    void resetParser();
    void addMessage(const std::string &text); // a line of the error text; counted beyond the limit
    void addUnhandled(Statement statement);
    void finishMessages();

    // Statements (GerberStatements.cpp, GerberAttributes.cpp).
    void handleStatement(Statement statement);
    void interpolate(Interpolation interpolation, Statement statement);
    void drawPlain(Statement statement);
    void repeatLastOperation(Statement statement);
    void startNewLevel(Statement statement);
    void startRegion();
    void endRegion();
    void setDrillUnits(Statement statement, const char *units);
    void extractFormatSpecification(Statement statement);
    void extractUnitsSpecification(Statement statement);
    void extractFileAttribute(Statement statement);
    void extractApertureAttribute(Statement statement);

    // Apertures (GerberApertures.cpp).
    void defineAperture(Statement statement);
    void setupApertureMacro(Statement statement);
    void selectAperture(Statement statement);
    AperturePtr macroAperture(Statement text);

    // Drawing (GerberCoordinates.cpp, GerberDrawing.cpp, GerberStrokes.cpp).
    void extractCoordinates(Statement statement, double &x, double &y) const;
    void extractCoordinates(Statement statement, double &x, double &y, double &i, double &j) const;
    void extractCoordinate(Statement digits, double &value, bool isX) const;
    Arc extractArc(Statement statement, bool clockwise) const;
    void definePattern(Statement statement);
    void move(Statement statement);
    void draw(Statement statement);
    void flash(Statement statement);
    void drawLine(Statement statement);
    void drawCircle(Statement statement, bool clockwise);
    void drawDot(Interpolation interpolation);
    static EDAOutline makeArcBand(const EDAOutline &aperture, const Arc &arc, double startX, double startY,
                                  bool clockwise);
    std::vector<EDAOutline> makeStroke(const EDAOutline &band, double startX, double startY, double endX,
                                       double endY);
    void addStroke(const EDAOutline &band, double startX, double startY);
    void addLineSegmentToRegion(Statement statement);
    void addCircleSegmentToRegion(Statement statement, bool clockwise);

    // Conductors (GerberConductors.cpp).
    void addShape(const EDAOutline &shape, CleanShape &clean); // flashed; both about the origin
    // Uses up what is flashed, and the pieces, which are the outline without its cut-ins.
    void addOutline(EDAOutline &outline, bool flashed, std::vector<EDAOutline> *pieces = nullptr);
    void addOutlineInstance(EDAOutline &outline, bool flashed, std::vector<EDAOutline> *pieces);
    void addPieces(std::vector<EDAOutline> &pieces, std::size_t paid, bool flashed);
    bool resolveCutIns(const EDAOutline &shape, CleanShape &clean);
    void addConductor(EDAOutline &&outline, bool flashed);
    void punch(EDAOutlineMerge &list, ConductorIndex &index, const EDAOutline &hole);
    bool takePoints(std::size_t count); // false, with a word, beyond the limit
    void tellLimit();
    void tellOnce(bool &told, const std::string &text);
    static constexpr const char *infinityText = "Objects with coordinates beyond all numbers are left out.";

    // Drills (GerberDrill.cpp).
    void setDrillTool(Statement statement);
    void parseDrillHeaderData(Statement text);
    void addVia(Statement statement);
    void repeatVia(Statement statement);
    void selectNextTool();
    void addViaAt(double x, double y);

    GerberLimits limits_;
    ParserState state_;
    NumberFormat viaFormat_{2, 4};
    EDAOutlineMerge flashedAndStroked_;
    EDAOutlineMerge regions_; // also what merging works on
    ConductorIndex flashedIndex_;
    ConductorIndex regionIndex_;
    std::string apertureFunction_;
    double currentX_ = 0.0;
    double currentY_ = 0.0;
    QStringList layerFiles_;
    QStringList viaFiles_;
    QMap<int, QString> viaStartLayers_;
    QMap<int, QString> viaEndLayers_;
    std::string startLayer_; // of all vias of the current drill file
    std::string endLayer_;
    EntityModel::UniqueIDSet viaNames_; // unique over all files
    bool mergeConductors_ = true;
    bool optionsPreset_ = false;
    WorkBudget macroWork_; // left in this file
    WorkBudget strokeWork_;
    std::size_t numMessages_ = 0;
    std::size_t numPoints_ = 0;  // of outlines in this file
    std::size_t numObjects_ = 0; // tried in this file
    std::size_t numHoles_ = 0;   // drilled by this reader
    bool limitReached_ = false;
    bool infinityTold_ = false;
    bool holeLimitTold_ = false;
    bool clearLimitTold_ = false;
    bool strokeLimitTold_ = false;
};

} // namespace EDA
