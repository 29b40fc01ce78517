// Obeys the statements of a layer file.
#pragma once

#include "fabrication/layers/AttributeDictionary.h"
#include "fabrication/layers/CoordinateFormat.h"
#include "fabrication/layers/LayerFile.h"
#include "fabrication/layers/LayerGuesses.h"
#include "fabrication/layers/LayerTallies.h"
#include "fabrication/layers/ObjectStream.h"
#include "fabrication/layers/StatementLexer.h"

#include <array>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace EDA::Fabrication {

class LayerInterpreter {
public:
    struct Job {
        std::string_view bytes;
        LayerRules rules;
        Tools::ToolProgress *progress = nullptr;
        int progressLow = 0; // of a hundred
        int progressHigh = 100;
        Geometry::Bound2D negativeBox; // the box of a negative image; reset: the image is positive
    };

    LayerInterpreter(Job const &job, LayerSink &sink, Notes &notes);

    // Once.
    LayerFacts run();

private:
    // What one statement says, in millimetres.
    struct Operation {
        enum Letter : std::size_t { X, Y, I, J };
        std::array<double, 4> values{};
        std::array<bool, 4> has{};
        int code = 0; // 1, 2, 3; 0: none
        bool hasCoordinates() const { return has[X] || has[Y] || has[I] || has[J]; }
    };
    // A block or repeat that is being recorded.
    struct OpenBlock {
        bool isRepeat = false;
        int code = 0; // of a block
        Repeats repeats;
    };
    using Command = void (LayerInterpreter::*)(std::string_view text);
    struct CommandEntry {
        std::string_view letters;
        Command command;
    };
    static const CommandEntry commands[];

    void obey(Word const &word);
    bool mayGoOn();
    void skipRest();

    // Statements with codes.
    void obeyCodes(std::string_view text);
    void takeCoordinate(Operation::Letter letter, const char *&at, const char *end, Operation &operation);
    void takeCode(char letter, int code, Operation &operation);
    void obeyGeneral(int code);
    void select(int code);
    void flush(Operation &operation);
    void operate(Operation const &operation);
    void draw(Point const &target, Operation const &operation);
    void flash(Point const &target);
    Segment arcTo(Point const &target, Operation const &operation);
    void startRegion();
    void endContour();
    void applyNet();
    void comment(std::string_view text);
    void prepareNumbers();
    double unit();
    LayerSurvey const &survey();
    void setUnit(Unit unit);
    void closeRepeat();
    void closeBlock();

    // Extended commands, with what follows their two letters.
    void obeyCommand(std::string_view text);
    void formatCommand(std::string_view text);
    void unitCommand(std::string_view text);
    void apertureCommand(std::string_view text);
    void macroCommand(std::string_view text);
    void blockCommand(std::string_view text);
    void repeatCommand(std::string_view text);
    void polarityCommand(std::string_view text);
    void mirrorCommand(std::string_view text);
    void rotateCommand(std::string_view text);
    void scaleCommand(std::string_view text);
    void fileAttributeCommand(std::string_view text);
    void apertureAttributeCommand(std::string_view text);
    void objectAttributeCommand(std::string_view text);
    void deleteAttributeCommand(std::string_view text);
    void imageMirrorCommand(std::string_view text);
    void imageOffsetCommand(std::string_view text);
    void imageScaleCommand(std::string_view text);
    void imageAxesCommand(std::string_view text);
    void imageRotationCommand(std::string_view text);
    void imagePolarityCommand(std::string_view text);
    void nameCommand(std::string_view text);
    void ignoredCommand(std::string_view text);
    void badCommand() { tallies_.count(Tally::BadCommands, line_); }

    Job job_;
    Notes &notes_;
    StatementLexer lexer_;
    LayerFacts facts_;
    LayerTallies tallies_;
    FileApertures apertures_;
    ObjectStream objects_;
    AttributeDictionary attributes_;
    std::optional<LayerSurvey> survey_;

    std::size_t line_ = 0;
    std::size_t nextPoll_ = 0;
    bool isEnded_ = false;   // by the end of the program
    bool isStopped_ = false; // by whoever asked for the reading

    CoordinateFormat format_;
    double unit_ = 0.0; // millimetres; 0: not known yet
    CoordinateScale scale_;
    bool isScaleReady_ = false;

    Point current_;
    int operation_ = 0; // the latest
    int aperture_ = -1; // the code that is selected
    Motion motion_ = Motion::Line;
    Quadrants quadrants_ = Quadrants::Unknown;
    bool isInRegion_ = false;
    Path contour_;
    bool isNetReady_ = true; // whether the objects know of the latest attributes
    ApertureTransform transform_;
    ImageTransform image_;
    std::vector<OpenBlock> open_;
};

} // namespace EDA::Fabrication
