// How the numbers of a drill file are read where it does not say so.
#include "fabrication/drills/DrillFile.h"
#include "fabrication/drills/DrillScan.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace EDA::Fabrication {

using namespace DrillText;

namespace {

struct Format {
    int integerDigits;
    int decimalDigits;
};

// The most common ones first.
constexpr std::array<Format, 7> inchFormats{{{2, 4}, {2, 3}, {2, 5}, {3, 3}, {1, 5}, {2, 6}, {4, 2}}};
constexpr std::array<Format, 8> metricFormats{
    {{3, 3}, {4, 2}, {3, 2}, {4, 4}, {3, 4}, {2, 5}, {3, 5}, {4, 6}}};

// How well the places fit the board.
struct Fit {
    double inside = 0.0; // share of the places
    double spread = 0.0; // of the board that they fill, in the direction where they do more

    bool isGood() const { return inside >= 0.98 && spread >= 0.2; }
    double score() const { return inside + 0.3 * std::min(1.0, spread); }
};

struct DigitEvidence {
    int least = 0;
    int most = 0;
    bool hasLeadingZeros = false;
    bool hasTrailingZeros = false;
    bool hasAny = false;
};

DigitEvidence evidenceOf(DrillScan const &scan) {
    DigitEvidence result;
    for (DrillScan::Place const &place : scan.places) {
        for (Digits const *digits : {&place.x, &place.y}) {
            if (!digits->isValid || digits->hasPoint) continue;
            result.least = result.hasAny ? std::min(result.least, digits->count) : digits->count;
            result.most = std::max(result.most, digits->count);
            result.hasLeadingZeros = result.hasLeadingZeros || digits->hasLeadingZero;
            result.hasTrailingZeros = result.hasTrailingZeros || digits->hasTrailingZero;
            result.hasAny = true;
        }
    }
    return result;
}

class Settler {
public:
    Settler(DrillScan const &scan, DrillNumbers const &given, Geometry::Bound2D const &layers, Notes &notes)
        : scan_(scan), given_(given), layers_(layers), notes_(notes), evidence_(evidenceOf(scan)) {}

    DrillNumbers settle(DrillNumbers const &said);

private:
    std::vector<DrillNumbers> candidates(DrillNumbers const &said);
    std::vector<Unit> units(DrillNumbers const &said);
    std::vector<Zeros> zeros(DrillNumbers const &said) const;
    std::vector<Format> formats(DrillNumbers const &said, Unit unit) const;
    Fit fitOf(DrillNumbers const &numbers) const;
    DrillNumbers bestOf(std::vector<DrillNumbers> const &candidates, bool &fits) const;
    Unit unitBySizes() const;
    void tell(DrillNumbers const &said, DrillNumbers const &chosen, bool fits);
    std::string reasonFor(bool fits, bool isGiven) const;

    DrillScan const &scan_;
    DrillNumbers const &given_;
    Geometry::Bound2D const &layers_;
    Notes &notes_;
    DigitEvidence evidence_;
    bool hasUnitBySizes_ = false;
};

// Drills are 0.1 to 6.5 mm thick, or 0.004 to 0.25 inches: the middle one leaves no doubt in most files.
Unit Settler::unitBySizes() const {
    std::vector<double> sizes = scan_.sizes;
    for (auto const &tool : scan_.comments.tools())
        if (tool.second.unit == Unit::Unknown) sizes.push_back(tool.second.size);
    if (sizes.empty()) return Unit::Unknown;
    const auto middle = sizes.begin() + static_cast<std::ptrdiff_t>(sizes.size() / 2);
    std::nth_element(sizes.begin(), middle, sizes.end());
    const double least = *std::min_element(sizes.begin(), sizes.end());
    if (least < 0.05 || *middle < 0.13) return Unit::Inch;
    return least >= 0.15 && *middle > 0.25 ? Unit::Millimetre : Unit::Unknown;
}

std::vector<Unit> Settler::units(DrillNumbers const &said) {
    if (said.unit != Unit::Unknown) return {said.unit};
    const Unit bySizes = unitBySizes();
    hasUnitBySizes_ = bySizes != Unit::Unknown;
    if (hasUnitBySizes_) return {bySizes};
    if (given_.unit == Unit::Inch) return {Unit::Inch, Unit::Millimetre};
    return {Unit::Millimetre, Unit::Inch};
}

std::vector<Zeros> Settler::zeros(DrillNumbers const &said) const {
    if (said.zeros != Zeros::Unknown) return {said.zeros};
    if (!evidence_.hasAny) return {Zeros::LeadingOmitted};
    if (evidence_.least == evidence_.most && evidence_.hasLeadingZeros) return {Zeros::AllKept};
    // A number that starts with a zero has not lost its leading ones.
    if (evidence_.hasLeadingZeros && !evidence_.hasTrailingZeros) return {Zeros::TrailingOmitted};
    if (evidence_.hasTrailingZeros && !evidence_.hasLeadingZeros) return {Zeros::LeadingOmitted};
    if (evidence_.least == evidence_.most) return {Zeros::AllKept};
    if (given_.zeros == Zeros::TrailingOmitted) return {Zeros::TrailingOmitted, Zeros::LeadingOmitted};
    return {Zeros::LeadingOmitted, Zeros::TrailingOmitted};
}

std::vector<Format> Settler::formats(DrillNumbers const &said, Unit unit) const {
    if (said.integerDigits >= 0) return {{said.integerDigits, said.decimalDigits}};
    std::vector<Format> result;
    if (given_.integerDigits >= 0 && (given_.unit == Unit::Unknown || given_.unit == unit))
        result.push_back({given_.integerDigits, given_.decimalDigits});
    if (unit == Unit::Inch) {
        result.insert(result.end(), inchFormats.begin(), inchFormats.end());
    } else {
        result.insert(result.end(), metricFormats.begin(), metricFormats.end());
    }
    // Numbers that keep all their zeros have as many digits as the format.
    const int most = evidence_.most;
    const bool isWhole = evidence_.least == most && evidence_.hasLeadingZeros;
    std::stable_partition(result.begin(), result.end(), [=](Format const &format) {
        const int digits = format.integerDigits + format.decimalDigits;
        return isWhole ? digits == most : digits >= most;
    });
    return result;
}

std::vector<DrillNumbers> Settler::candidates(DrillNumbers const &said) {
    std::vector<DrillNumbers> result;
    for (Unit unit : units(said))
        for (Zeros zero : zeros(said))
            for (Format const &format : formats(said, unit))
                result.push_back({unit, format.integerDigits, format.decimalDigits, zero});
    return result;
}

Fit Settler::fitOf(DrillNumbers const &numbers) const {
    const double margin = 1.0 + 0.02 * std::max(layers_.getXSize(), layers_.getYSize());
    Geometry::Bound2D bound;
    std::size_t inside = 0;
    double x = 0.0, y = 0.0;
    DrillNumbers own = numbers;
    auto change = scan_.unitChanges.begin();
    for (std::size_t i = 0; i < scan_.places.size(); ++i) {
        DrillScan::Place const &place = scan_.places[i];
        for (; change != scan_.unitChanges.end() && change->firstPlace <= i; ++change)
            changeUnit(own, change->said);
        const double toX = place.x.isValid ? millimetres(place.x, own) : 0.0;
        const double toY = place.y.isValid ? millimetres(place.y, own) : 0.0;
        x = place.isIncremental ? x + toX : toX;
        y = place.isIncremental ? y + toY : toY;
        bound.unite(x, y);
        if (layers_.contains(x, y, margin)) ++inside;
    }
    Fit fit;
    fit.inside = static_cast<double>(inside) / static_cast<double>(scan_.places.size());
    const double width = layers_.getXSize(), height = layers_.getYSize();
    if (width > 0.0) fit.spread = bound.getXSize() / width;
    if (height > 0.0) fit.spread = std::max(fit.spread, bound.getYSize() / height);
    return fit;
}

// The first one that is good, as the common ones come first, else the one that fits best.
DrillNumbers Settler::bestOf(std::vector<DrillNumbers> const &candidates, bool &fits) const {
    fits = false;
    if (!layers_.isValid() || scan_.places.empty()) return candidates.front();
    std::size_t best = 0;
    double bestScore = -1.0;
    for (std::size_t i = 0; i < candidates.size(); ++i) {
        const Fit fit = fitOf(candidates[i]);
        if (fit.isGood()) {
            fits = true;
            return candidates[i];
        }
        if (fit.inside < 0.5 || fit.score() <= bestScore) continue;
        best = i;
        bestScore = fit.score();
    }
    fits = bestScore > 0.0;
    return candidates[best];
}

std::string Settler::reasonFor(bool fits, bool isGiven) const {
    if (fits) return ", as the holes lie on the layers so";
    return isGiven ? ", as in the rest of the set" : ", as in most files";
}

void Settler::tell(DrillNumbers const &said, DrillNumbers const &chosen, bool fits) {
    const auto note = [this](std::string const &text) { notes_.add(NoteKind::Guessed, text); };
    if (said.unit == Unit::Unknown) {
        const std::string unit = chosen.unit == Unit::Inch ? "inches" : "millimetres";
        note("numbers in " + unit +
             (hasUnitBySizes_ ? ", by the sizes of the tools" : reasonFor(fits, given_.unit == chosen.unit)));
    }
    if (!evidence_.hasAny) return; // all with a decimal point
    if (said.integerDigits < 0) {
        const bool isGiven =
            given_.integerDigits == chosen.integerDigits && given_.decimalDigits == chosen.decimalDigits;
        note("numbers with " + std::to_string(chosen.integerDigits) + " digits before the point and " +
             std::to_string(chosen.decimalDigits) + " after it" + reasonFor(fits, isGiven));
    }
    const bool isWhole =
        evidence_.least == evidence_.most && evidence_.most == chosen.integerDigits + chosen.decimalDigits;
    if (said.zeros != Zeros::Unknown || isWhole || chosen.zeros == Zeros::AllKept) return;
    note(std::string("numbers without their ") +
         (chosen.zeros == Zeros::TrailingOmitted ? "trailing" : "leading") + " zeros" +
         (zeros(said).size() == 1 ? ", by the zeros that are there"
                                  : reasonFor(fits, given_.zeros == chosen.zeros)));
}

DrillNumbers Settler::settle(DrillNumbers const &said) {
    const std::vector<DrillNumbers> all = candidates(said);
    bool fits = false;
    const DrillNumbers chosen = all.size() == 1 ? all.front() : bestOf(all, fits);
    tell(said, chosen, fits);
    return chosen;
}

} // namespace

DrillNumbers settleNumbers(std::string_view bytes, DrillFacts const &facts, DrillNumbers const &given,
                           Geometry::Bound2D const &layers, Notes &notes) {
    std::string storage;
    const DrillScan scan = scanDrillFile(DrillText::decoded(bytes, storage));
    return Settler(scan, given, layers, notes).settle(facts.numbers);
}

} // namespace EDA::Fabrication
