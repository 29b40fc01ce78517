// Statements with codes and coordinates: modes, selections and operations.
#include "fabrication/layers/LayerInterpreter.h"

#include <cmath>

namespace EDA::Fabrication {

namespace {

char upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

// A contour all on one straight line encloses nothing.
bool hasArea(Path const &contour) {
    Point const &start = contour.start;
    Point along;
    for (Segment const &segment : contour.segments) {
        if (segment.motion != Motion::Line) return true;
        const Point to{segment.end.x - start.x, segment.end.y - start.y};
        if (along == Point())
            along = to;
        else if (along.x * to.y != along.y * to.x)
            return true;
    }
    return false;
}

} // namespace

// Codes of one statement are obeyed in their order. What stands before the next operation belongs to the
// one before it: where ends of statements are missing, there are several.
void LayerInterpreter::obeyCodes(std::string_view text) {
    Operation operation;
    const char *end = text.data() + text.size();
    for (const char *at = text.data(); at != end;) {
        const char letter = upper(*at++);
        switch (letter) {
        case 'X':
            takeCoordinate(Operation::X, at, end, operation);
            break;
        case 'Y':
            takeCoordinate(Operation::Y, at, end, operation);
            break;
        case 'I':
            takeCoordinate(Operation::I, at, end, operation);
            break;
        case 'J':
            takeCoordinate(Operation::J, at, end, operation);
            break;
        case 'G':
        case 'D':
        case 'M':
        case 'N': {
            const Digits digits = takeDigits(at, end);
            if (letter == 'G' && digits.value == 4 && digits.count > 0) {
                flush(operation);
                comment({at, static_cast<std::size_t>(end - at)});
                return;
            }
            const bool isCode = digits.count > 0 && digits.value >= 0 && digits.value <= 2147483647;
            if (isCode)
                takeCode(letter, static_cast<int>(digits.value), operation);
            else
                tallies_.count(Tally::UnknownCodes, line_);
            break;
        }
        default:
            // The rest of a code that is not understood is no code of its own.
            if (static_cast<unsigned char>(letter) <= ' ') break;
            tallies_.count(Tally::UnknownCodes, line_);
            takeDigits(at, end);
            break;
        }
    }
    flush(operation);
}

void LayerInterpreter::takeCoordinate(Operation::Letter letter, const char *&at, const char *end,
                                      Operation &operation) {
    if (operation.code != 0 && operation.hasCoordinates()) flush(operation);
    const Digits digits = takeDigits(at, end);
    if (digits.count == 0) {
        tallies_.count(Tally::UnknownCodes, line_);
        return;
    }
    if (!isScaleReady_) prepareNumbers();
    if (digits.decimals >= 0) tallies_.count(Tally::Points, line_);
    const int axis = letter == Operation::X || letter == Operation::I ? 0 : 1;
    operation.values[letter] = scale_.millimetres(digits, axis);
    operation.has[letter] = true;
}

void LayerInterpreter::takeCode(char letter, int code, Operation &operation) {
    if (letter == 'N') return;
    if (letter == 'D' && code >= 1 && code <= 3) {
        if (operation.code != 0) flush(operation);
        operation.code = code;
        return;
    }
    if (operation.code != 0 || letter == 'M') flush(operation);
    if (letter == 'G')
        obeyGeneral(code);
    else if (letter == 'D')
        select(code);
    else if (code == 0 || code == 2 || code == 30)
        isEnded_ = true;
    else if (code != 1) // an optional stop of the plotter
        tallies_.count(Tally::UnknownCodes, line_);
}

void LayerInterpreter::obeyGeneral(int code) {
    switch (code) {
    case 0:
    case 1:
        motion_ = Motion::Line;
        break;
    case 2:
        motion_ = Motion::Clockwise;
        break;
    case 3:
        motion_ = Motion::CounterClockwise;
        break;
    case 10:
    case 11:
    case 12:
    case 60: // lines at another scale, which plotters have long ceased to obey
        motion_ = Motion::Line;
        tallies_.count(Tally::ScaledLines, line_);
        break;
    case 36:
        startRegion();
        break;
    case 37:
        endContour();
        isInRegion_ = false;
        break;
    case 54:
    case 55:
        break; // tool and flash are prepared: without effect today
    case 70:
        setUnit(Unit::Inch);
        break;
    case 71:
        setUnit(Unit::Millimetre);
        break;
    case 74:
        quadrants_ = Quadrants::Single;
        break;
    case 75:
        quadrants_ = Quadrants::Multi;
        break;
    case 90:
        format_.isIncremental = false;
        break;
    case 91:
        format_.isIncremental = true;
        break;
    default:
        tallies_.count(Tally::UnknownCodes, line_);
        break;
    }
}

void LayerInterpreter::select(int code) {
    aperture_ = code;
    std::shared_ptr<Aperture> aperture = apertures_.find(code);
    if (!aperture) tallies_.countUndefined(code, line_);
    objects_.setAperture(std::move(aperture));
}

void LayerInterpreter::flush(Operation &operation) {
    if (operation.code != 0 || operation.hasCoordinates()) operate(operation);
    operation = Operation();
}

void LayerInterpreter::operate(Operation const &operation) {
    if (objects_.isStopped() || isStopped_ || isEnded_) return;
    int code = operation.code;
    if (code == 0) {
        code = operation_ == 0 ? 2 : operation_;
        tallies_.count(operation_ == 0   ? Tally::EarlyCoordinates
                       : operation_ == 3 ? Tally::RepeatedFlashes
                                         : Tally::RepeatedOperations,
                       line_);
    } else {
        operation_ = code;
    }
    const double baseX = format_.isIncremental ? current_.x : 0.0;
    const double baseY = format_.isIncremental ? current_.y : 0.0;
    const Point target{operation.has[Operation::X] ? baseX + operation.values[Operation::X] : current_.x,
                       operation.has[Operation::Y] ? baseY + operation.values[Operation::Y] : current_.y};
    if (code == 1)
        draw(target, operation);
    else if (code == 3)
        flash(target);
    else if (isInRegion_)
        endContour();
    current_ = target;
}

void LayerInterpreter::draw(Point const &target, Operation const &operation) {
    if (job_.rules.isProbe) {
        isStopped_ = true;
        return;
    }
    const Segment segment =
        motion_ == Motion::Line ? Segment{target, {}, Motion::Line} : arcTo(target, operation);
    if (isInRegion_) {
        if (contour_.segments.empty()) contour_.start = current_;
        contour_.segments.push_back(segment);
        return;
    }
    if (objects_.aperture().block) {
        tallies_.count(Tally::BlockStrokes, line_);
        return;
    }
    if (objects_.aperture().isUndefined) tallies_.count(Tally::NoAperture, line_);
    applyNet();
    objects_.stroke(current_, segment);
}

Segment LayerInterpreter::arcTo(Point const &target, Operation const &operation) {
    const Point offset{operation.values[Operation::I], operation.values[Operation::J]};
    ArcFit fit = ArcFit::Sure;
    // One offset with a sign shows that all of them have theirs.
    const bool isUnknown = quadrants_ == Quadrants::Unknown;
    const Quadrants quadrants = isUnknown && survey().hasSignedOffset ? Quadrants::Multi : quadrants_;
    const Segment segment = Fabrication::arcTo(current_, target, offset, motion_, quadrants, fit);
    if (isUnknown) fit = ArcFit::Guessed;
    const bool isSingle = quadrants_ == Quadrants::Single;
    if (isSingle) tallies_.count(Tally::SingleQuadrantArcs, line_);
    if (fit == ArcFit::Guessed) tallies_.count(isSingle ? Tally::UnfitArcs : Tally::GuessedQuadrants, line_);
    return segment;
}

void LayerInterpreter::flash(Point const &target) {
    if (isInRegion_) {
        tallies_.count(Tally::FlashesInRegions, line_);
        endContour();
        return;
    }
    if (job_.rules.isProbe) {
        isStopped_ = true;
        return;
    }
    if (objects_.aperture().isUndefined) tallies_.count(Tally::NoAperture, line_);
    applyNet();
    objects_.flash(target);
}

void LayerInterpreter::startRegion() {
    endContour();
    isInRegion_ = true;
}

void LayerInterpreter::endContour() {
    if (contour_.segments.empty()) return;
    if (hasArea(contour_)) {
        if (contour_.segments.back().end != contour_.start) tallies_.count(Tally::OpenContours, line_);
        applyNet();
        objects_.region(contour_);
    } else {
        tallies_.count(Tally::RegionsWithoutArea, line_);
    }
    contour_.segments.clear();
}

} // namespace EDA::Fabrication
