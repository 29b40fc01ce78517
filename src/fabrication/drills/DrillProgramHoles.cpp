// Runs a drill file as a machine would: places, holes, repeats and patterns.
#include "fabrication/drills/DrillProgram.h"

#include "fabrication/Limits.h"

#include <algorithm>
#include <cmath>

namespace EDA::Fabrication {

namespace {

constexpr double farthest = 1e6; // millimetres from the origin

bool isShort(Path const &path) {
    return std::all_of(path.segments.begin(), path.segments.end(), [&path](Segment const &segment) {
        return segment.motion == Motion::Line && segment.end == path.start;
    });
}

} // namespace

double DrillProgram::lengthOr(std::optional<Digits> const &digits, double fallback) const {
    return digits ? length(*digits) : fallback;
}

Point DrillProgram::placeOf(std::optional<Digits> const &x, std::optional<Digits> const &y) const {
    if (isIncremental_) return {at_.x + lengthOr(x, 0.0), at_.y + lengthOr(y, 0.0)};
    return {x ? zero_.x + length(*x) : at_.x, y ? zero_.y + length(*y) : at_.y};
}

bool DrillProgram::isNear(Point const &point) const {
    return std::fabs(point.x) <= farthest && std::fabs(point.y) <= farthest;
}

bool DrillProgram::isNear(Path const &path) const {
    return isNear(path.start) &&
           std::all_of(path.segments.begin(), path.segments.end(), [this](Segment const &segment) {
               return isNear(segment.end) && isNear(segment.centre);
           });
}

bool DrillProgram::hasRoom() {
    if (numObjects_ >= Limits::objects) {
        tally_.add(DrillTrouble::TooManyObjects, line_);
        return false;
    }
    ++numObjects_;
    return true;
}

bool DrillProgram::hasRoomForSlot(std::size_t moves) {
    if (numMoves_ + moves > mostMoves) {
        tally_.add(DrillTrouble::TooManySlots, line_);
        return false;
    }
    numMoves_ += moves;
    return hasRoom();
}

void DrillProgram::addHole(Point const &at) {
    if (!isNear(at)) return tally_.add(DrillTrouble::TooFar, line_);
    const int tool = tools_.current(line_);
    if (tool < 0) return tally_.add(DrillTrouble::NoTool, line_);
    if (!hasRoom()) return;
    data_.holes.push_back({at, tool});
}

// A slot without length is a hole.
void DrillProgram::addSlot(Path path) {
    if (isShort(path)) return addHole(path.start);
    if (!isNear(path)) return tally_.add(DrillTrouble::TooFar, line_);
    const int tool = tools_.current(line_);
    if (tool < 0) return tally_.add(DrillTrouble::NoTool, line_);
    if (!hasRoomForSlot(path.segments.size())) return;
    data_.slotHoles.push_back({std::move(path), tool});
}

void DrillProgram::drill(Block const &block) {
    at_ = placeOf(block.x, block.y);
    addHole(at_);
}

void DrillProgram::slot(Block const &block) {
    at_ = placeOf(block.x, block.y);
    Path path;
    path.start = at_;
    at_ = placeOf(block.endX, block.endY);
    path.segments.push_back({at_, Point(), Motion::Line});
    addSlot(std::move(path));
}

// More holes, each a step from the one before; the tool stays at the last one.
void DrillProgram::repeat(Block const &block) {
    if (!block.hasPlace() || *block.repeats < 0) return tally_.add(DrillTrouble::RepeatOfNothing, line_);
    std::size_t count = static_cast<std::size_t>(*block.repeats);
    if (count > Limits::drillRepeats) {
        tally_.add(DrillTrouble::TooManyRepeats, line_, count - Limits::drillRepeats);
        count = Limits::drillRepeats;
    }
    const Point start = at_;
    const double stepX = lengthOr(block.x, 0.0), stepY = lengthOr(block.y, 0.0);
    for (std::size_t i = 1; i <= count; ++i) {
        at_ = {start.x + static_cast<double>(i) * stepX, start.y + static_cast<double>(i) * stepY};
        addHole(at_);
    }
}

// The coordinates count from another point: from that one, or such that the tool is there now.
void DrillProgram::setZero(Block const &block) {
    const double x = lengthOr(block.x, 0.0), y = lengthOr(block.y, 0.0);
    const Point zero = block.isPreset ? Point{at_.x - x, at_.y - y} : Point{x, y};
    if (isNear(zero)) zero_ = zero;
}

void DrillProgram::beginPattern() {
    constexpr std::size_t mostPatterns = Limits::blockDepth;
    if (patterns_.size() >= mostPatterns) return tally_.add(DrillTrouble::StoredPattern, line_);
    Pattern pattern;
    pattern.firstHole = data_.holes.size();
    pattern.firstSlot = data_.slotHoles.size();
    patterns_.push_back(pattern);
}

void DrillProgram::endPattern() {
    // Patterns within each other end one by one, the inner one first.
    for (auto pattern = patterns_.rbegin(); pattern != patterns_.rend(); ++pattern) {
        if (pattern->isComplete) continue;
        pattern->isComplete = true;
        pattern->endHole = data_.holes.size();
        pattern->endSlot = data_.slotHoles.size();
        // What lay within it is done with.
        patterns_.erase(pattern.base(), patterns_.end());
        return;
    }
}

// Without a pattern, the statement ends a program.
void DrillProgram::copyPattern(Block const &block) {
    if (patterns_.empty() || !patterns_.back().isComplete) {
        if (!block.hasPlace()) return stop();
        return tally_.add(DrillTrouble::RepeatOfNothing, line_);
    }
    std::size_t count = static_cast<std::size_t>(std::max(1, block.repeats.value_or(1)));
    if (count > Limits::drillRepeats) {
        tally_.add(DrillTrouble::TooManyRepeats, line_, count - Limits::drillRepeats);
        count = Limits::drillRepeats;
    }
    for (std::size_t i = 0; i < count && numObjects_ < Limits::objects; ++i)
        copyObjects(block);
}

// One more copy, a step from the one before it.
void DrillProgram::copyObjects(Block const &block) {
    Pattern &pattern = patterns_.back();
    pattern.offset.x += lengthOr(block.x, 0.0);
    pattern.offset.y += lengthOr(block.y, 0.0);
    const auto copied = [&](Point point) {
        point = {point.x - zero_.x, point.y - zero_.y};
        if (block.swapsAxes) std::swap(point.x, point.y);
        if (block.mirrorsX) point.x = -point.x;
        if (block.mirrorsY) point.y = -point.y;
        return Point{point.x + zero_.x + pattern.offset.x, point.y + zero_.y + pattern.offset.y};
    };
    const bool turnsOver = block.swapsAxes != (block.mirrorsX != block.mirrorsY);
    for (std::size_t i = pattern.firstHole; i < pattern.endHole; ++i) {
        const DrillHole hole{copied(data_.holes[i].at), data_.holes[i].tool};
        if (!isNear(hole.at)) {
            tally_.add(DrillTrouble::TooFar, line_);
        } else if (hasRoom()) {
            data_.holes.push_back(hole);
        } else {
            return;
        }
    }
    for (std::size_t i = pattern.firstSlot; i < pattern.endSlot; ++i) {
        const std::size_t numMoves = data_.slotHoles[i].path.segments.size();
        if (numMoves_ + numMoves > mostMoves) return tally_.add(DrillTrouble::TooManySlots, line_);
        DrillSlot slot = data_.slotHoles[i];
        slot.path.start = copied(slot.path.start);
        for (Segment &segment : slot.path.segments) {
            segment.end = copied(segment.end);
            segment.centre = copied(segment.centre);
            if (turnsOver && segment.motion != Motion::Line)
                segment.motion =
                    segment.motion == Motion::Clockwise ? Motion::CounterClockwise : Motion::Clockwise;
        }
        if (!isNear(slot.path)) {
            tally_.add(DrillTrouble::TooFar, line_);
        } else if (hasRoomForSlot(numMoves)) {
            data_.slotHoles.push_back(std::move(slot));
        }
    }
}

} // namespace EDA::Fabrication
