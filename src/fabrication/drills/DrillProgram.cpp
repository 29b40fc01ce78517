// Runs a drill file as a machine would: statements and modes.
#include "fabrication/drills/DrillProgram.h"

#include "fabrication/Limits.h"

#include <algorithm>
#include <iterator>

namespace EDA::Fabrication {

using namespace DrillText;

namespace {

// G codes whose coordinates drill nothing.
constexpr int pausesAndCameras[] = {4, 34, 35, 36, 37, 38, 39, 45};
// G codes that change nothing here: ends of modes, units of other notations.
constexpr int quietPreparations[] = {7, 40, 70, 71, 79, 80};
// M codes that change nothing here: stops, clamps, depths and tests of the tool, messages, units.
constexpr int quietCommands[] = {6, 9, 14, 18, 24, 45, 47, 50, 60, 71, 72};

template <std::size_t size> bool has(int const (&codes)[size], int code) {
    return std::find(std::begin(codes), std::end(codes), code) != std::end(codes);
}

} // namespace

DrillProgram::DrillProgram(std::string_view text, DrillScan const &scan, DrillNumbers const &numbers,
                           std::map<int, DrillTool> const &beside, Notes &notes)
    : text_(text), scan_(scan), numbers_(numbers), notes_(notes),
      tools_(scan, scan.headerUnit == Unit::Unknown ? numbers.unit : scan.headerUnit, beside, tally_) {}

DrillData DrillProgram::run(Tools::ToolProgress *progress) {
    constexpr std::size_t linesBetweenPolls = 4096;
    Lines lines(text_);
    while (lines.next()) {
        line_ = lines.number();
        if (progress && line_ % linesBetweenPolls == 0 && progress->isCancelled()) break;
        takeLine(lines.line());
    }
    finishPath();
    data_.tools = tools_.finished(comments_);
    tally_.tell(notes_);
    return std::move(data_);
}

void DrillProgram::takeLine(std::string_view line) {
    if (line.size() > Limits::statement) return tally_.add(DrillTrouble::TooLong, line_);
    parse(line, statement_);
    using Kind = Statement::Kind;
    switch (statement_.kind) {
    case Kind::Empty:
        return;
    case Kind::Comment:
        return comments_.read(statement_.text);
    case Kind::Percent:
        inHeader_ = false;
        return;
    case Kind::Header:
        if (!isFinished_) takeHeader();
        return;
    case Kind::Words:
        return takeWords();
    }
}

void DrillProgram::takeHeader() {
    std::string const &text = statement_.text;
    DrillNumbers said;
    if (startsWith(text, "ICI")) {
        isIncremental_ = contains(text, "ON");
    } else if (startsWith(text, "M97") || startsWith(text, "M98")) {
        tally_.add(DrillTrouble::CannedText, line_);
    } else if (readUnitStatement(statement_, said)) {
        takeUnit();
    } else if (!isMachineStatement(text)) {
        tally_.add(DrillTrouble::NotUnderstood, line_);
    }
}

// What stands before the first coordinates is settled already.
void DrillProgram::takeUnit() {
    DrillNumbers said;
    if (hasCoordinates_ && readUnitStatement(statement_, said)) changeUnit(numbers_, said);
}

void DrillProgram::takeWords() {
    if (isFinished_) {
        if (statement_.find('X') || statement_.find('Y')) tally_.add(DrillTrouble::AfterEnd, line_);
        return;
    }
    if (statement_.isDeletable && statement_.find('X')) tally_.add(DrillTrouble::OptionalBlock, line_);
    if (statement_.words.empty()) return tally_.add(DrillTrouble::NotUnderstood, line_);
    takeUnit();
    Block block;
    for (Word const &word : statement_.words)
        takeWord(word, block);
    if (block.hasPlace()) hasCoordinates_ = true;
    if (!block.isIgnored && !isFinished_) execute(block);
}

void DrillProgram::takeWord(Word const &word, Block &block) {
    switch (word.letter) {
    case 'G':
        return takeG(integerOf(word.number), block);
    case 'M':
        return takeM(integerOf(word.number), block);
    case 'T':
        return takeTool(word);
    case 'X':
    case 'Y':
    case 'I':
    case 'J':
    case 'A':
        return takeCoordinate(word, block);
    case 'R':
        block.repeats = integerOf(word.number);
        return;
    case 'P':
        block.isIgnored = true;
        return tally_.add(DrillTrouble::StoredPattern, line_);
    // Speeds, depths, counts and numbers of blocks, and the zeros of units.
    case 'N':
    case 'F':
    case 'S':
    case 'C':
    case 'H':
    case 'Z':
    case 'B':
    case 'L':
        return;
    default:
        tally_.add(DrillTrouble::NotUnderstood, line_);
    }
}

void DrillProgram::takeCoordinate(Word const &word, Block &block) {
    const Digits digits = digitsOf(word.number);
    if (!digits.isValid) return tally_.add(DrillTrouble::BadCoordinate, line_);
    switch (word.letter) {
    case 'X':
        (block.isSlot ? block.endX : block.x) = digits;
        return;
    case 'Y':
        (block.isSlot ? block.endY : block.y) = digits;
        return;
    case 'I':
        block.i = digits;
        return;
    case 'J':
        block.j = digits;
        return;
    default:
        block.radius = digits;
    }
}

void DrillProgram::takeG(int code, Block &block) {
    switch (code) {
    case 0:
    case 1:
    case 2:
    case 3:
        isRouting_ = true;
        isPositioning_ = code == 0;
        motion_ = code == 2 ? Motion::Clockwise : code == 3 ? Motion::CounterClockwise : Motion::Line;
        return;
    case 5:
    case 81:
        finishPath();
        isRouting_ = false;
        return;
    case 32:
    case 33:
        block.isCircle = true;
        block.circleMotion = code == 32 ? Motion::Clockwise : Motion::CounterClockwise;
        return;
    case 41:
    case 42:
        return tally_.add(DrillTrouble::Compensation, line_);
    case 82:
    case 83:
    case 84:
        block.isIgnored = true;
        return tally_.add(DrillTrouble::CannedCycle, line_);
    case 85:
    case 87:
        block.isSlot = true;
        return;
    case 90:
    case 91:
        isIncremental_ = code == 91;
        return;
    case 92:
    case 93:
        block.isPreset = code == 92;
        block.isZeroSet = true;
        return;
    default:
        if (has(pausesAndCameras, code)) {
            block.isIgnored = true;
        } else if (!has(quietPreparations, code)) {
            tally_.add(DrillTrouble::NotUnderstood, line_);
        }
    }
}

void DrillProgram::takeM(int code, Block &block) {
    switch (code) {
    case 0:
        if (scan_.hasToolSelects) return stop();
        return tools_.advance(line_);
    case 1:
        return endPattern();
    case 2:
        block.isCopy = true;
        return;
    case 8:
        if (!patterns_.empty()) patterns_.pop_back();
        return;
    case 15:
        return plunge();
    case 16:
    case 17:
        return finishPath();
    case 25:
        return beginPattern();
    case 30:
        return stop();
    case 48:
        inHeader_ = true;
        return;
    case 70:
        block.swapsAxes = true;
        return;
    case 80:
        block.mirrorsX = true;
        return;
    case 90:
        block.mirrorsY = true;
        return;
    case 95:
        inHeader_ = false;
        return;
    case 99:
        block.isIgnored = true;
        return tally_.add(DrillTrouble::StoredPattern, line_);
    default:
        if (!has(quietCommands, code)) tally_.add(DrillTrouble::NotUnderstood, line_);
    }
}

// In the body a statement with a size defines the tool and takes it.
void DrillProgram::takeTool(Word const &word) {
    if (word.number.empty()) return; // the word of zeros behind a unit
    if (inHeader_ || statement_.find('C')) tools_.define(statement_, word.number, comments_, line_);
    if (inHeader_) return;
    finishPath();
    tools_.select(word.number);
}

void DrillProgram::stop() {
    finishPath();
    isFinished_ = true;
}

void DrillProgram::execute(Block const &block) {
    if (block.isZeroSet) return setZero(block);
    if (block.isCopy) return copyPattern(block);
    if (block.repeats) return repeat(block);
    if (!block.hasPlace()) return;
    if (inHeader_ && scan_.hasHeader) inHeader_ = false; // a header that nothing ends
    if (block.isCircle) return circle(block);
    if (block.isSlot) return slot(block);
    if (!isRouting_) return drill(block);
    // Positions alone rout nothing: such files drill there.
    if (!scan_.hasCuts && !scan_.hasPlunges) {
        tally_.add(DrillTrouble::PositionsAsHoles, line_);
        return drill(block);
    }
    move(block);
}

} // namespace EDA::Fabrication
