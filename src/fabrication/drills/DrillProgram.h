// Runs a drill file as a machine would, and keeps what it drills and routs.
#pragma once

#include "fabrication/drills/DrillToolBox.h"

#include <optional>

namespace EDA::Fabrication {

class DrillProgram {
public:
    // Each slot becomes a via with an outline of its own, which costs far more than a hole. So the moves of
    // all slots of a file are counted, and those of one path.
    static constexpr std::size_t mostMoves = 200'000;
    static constexpr std::size_t mostMovesOfPath = 20'000;

    DrillProgram(std::string_view text, DrillScan const &scan, DrillNumbers const &numbers,
                 std::map<int, DrillTool> const &beside, Notes &notes);

    DrillData run(Tools::ToolProgress *progress);

private:
    using Digits = DrillText::Digits;
    using Statement = DrillText::Statement;
    using Word = DrillText::Word;

    // What the words of one statement ask for.
    struct Block {
        std::optional<Digits> x, y;       // before a code of a slot
        std::optional<Digits> endX, endY; // after it
        std::optional<Digits> i, j, radius;
        std::optional<int> repeats;
        bool isSlot = false;
        bool isZeroSet = false;
        bool isPreset = false;
        bool isCopy = false;
        bool isCircle = false;
        bool isIgnored = false;
        bool swapsAxes = false, mirrorsX = false, mirrorsY = false;
        Motion circleMotion = Motion::Clockwise;

        bool hasPlace() const { return x || y || endX || endY; }
    };

    // Statements.
    void takeLine(std::string_view line);
    void takeWords();
    void takeWord(Word const &word, Block &block);
    void takeG(int code, Block &block);
    void takeM(int code, Block &block);
    void takeTool(Word const &word);
    void takeCoordinate(Word const &word, Block &block);
    void takeHeader();
    void takeUnit();
    void execute(Block const &block);
    void stop();

    // Places.
    double length(Digits const &digits) const { return millimetres(digits, numbers_); }
    double lengthOr(std::optional<Digits> const &digits, double fallback) const;
    Point placeOf(std::optional<Digits> const &x, std::optional<Digits> const &y) const;
    bool isNear(Point const &point) const;
    bool isNear(Path const &path) const;
    bool hasRoom();
    bool hasRoomForSlot(std::size_t moves);

    // Holes.
    void addHole(Point const &at);
    void addSlot(Path path);
    void drill(Block const &block);
    void slot(Block const &block);
    void repeat(Block const &block);
    void beginPattern();
    void endPattern();
    void copyPattern(Block const &block);
    void copyObjects(Block const &block);
    void setZero(Block const &block);

    // Routs.
    void plunge();
    void cut(Segment const &segment);
    void finishPath();
    void move(Block const &block);
    void circle(Block const &block);
    Segment segmentTo(Point const &end, Block const &block);
    Point centreByRadius(Point const &end, double radius) const;

    std::string_view text_;
    DrillScan const &scan_;
    DrillNumbers numbers_;
    Notes &notes_;
    DrillTally tally_;
    DrillComments comments_;
    DrillToolBox tools_;
    DrillData data_;
    Statement statement_;
    std::size_t line_ = 0;

    bool inHeader_ = false;
    bool hasCoordinates_ = false;
    bool isFinished_ = false;
    bool isIncremental_ = false;
    bool isRouting_ = false;
    bool isDown_ = false;
    bool isPositioning_ = true; // G00
    Motion motion_ = Motion::Line;
    Point at_;   // in the plane of the board
    Point zero_; // of the coordinates
    Path path_;
    std::size_t numObjects_ = 0;
    std::size_t numMoves_ = 0; // of slots

    struct Pattern {
        std::size_t firstHole = 0, firstSlot = 0;
        std::size_t endHole = 0, endSlot = 0;
        Point offset; // of the copies so far
        bool isComplete = false;
    };
    std::vector<Pattern> patterns_;
};

} // namespace EDA::Fabrication
