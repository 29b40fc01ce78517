// Quantities, their units, and conversion between units.
#include "host/EntityModel/Units.h"

#include "host/EntityModel/NumberText.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>
#include <numeric>
#include <unordered_map>

namespace EntityModel {

namespace {

struct Row {
    bool opensQuantity;
    const char *label;
    const char *standard; // of a quantity
    const char *display;  // of a quantity
    double numerator;     // of a unit
    double denominator;   // of a unit
    const char *spellings;
};

#define EDA_QUANTITY(label, standard, display) {true, label, standard, display, 0.0, 0.0, ""},
#define EDA_UNIT(label, numerator, denominator, spellings)                                                   \
    {false, label, "", "", numerator, denominator, spellings},
const Row rows[] = {
#include "host/EntityModel/UnitTable.def"
};
#undef EDA_QUANTITY
#undef EDA_UNIT

std::string folded(std::string_view text) {
    std::string result(text);
    for (char &c : result) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return result;
}

// The units of one quantity and all their spellings.
struct QuantityUnits {
    Quantity quantity;
    std::vector<std::unique_ptr<Unit>> units;
    std::vector<std::string> spellings;
    std::unordered_map<std::string, const Unit *> exact;
    std::unordered_map<std::string, const Unit *> anyCase; // Null where two units differ by case alone.

    void addSpelling(const Unit &unit, const std::string &spelling) {
        if (!spelling.empty()) spellings.push_back(spelling);
        exact.emplace(spelling, &unit);
        const auto added = anyCase.emplace(folded(spelling), &unit);
        if (!added.second && added.first->second != &unit) added.first->second = nullptr;
    }

    void addUnit(const Row &row) {
        units.push_back(std::make_unique<Unit>(Unit{&quantity, row.label, row.numerator, row.denominator}));
        addSpelling(*units.back(), row.label);
        std::string_view rest = row.spellings;
        while (!rest.empty()) {
            const size_t end = std::min(rest.find('|'), rest.size());
            addSpelling(*units.back(), std::string(rest.substr(0, end)));
            rest.remove_prefix(std::min(end + 1, rest.size()));
        }
    }
};

class UnitTable {
public:
    UnitTable() {
        for (const Row &row : rows) {
            if (row.opensQuantity) {
                quantities_.push_back(std::make_unique<QuantityUnits>());
                quantities_.back()->quantity.label = row.label;
            } else {
                quantities_.back()->addUnit(row);
            }
        }
        for (const Row &row : rows) {
            if (row.opensQuantity) connect(*find(row.label), row);
        }
    }

    QuantityUnits *find(std::string_view label) const {
        for (const auto &quantity : quantities_) {
            if (quantity->quantity.label == label) return quantity.get();
        }
        return nullptr;
    }

    const QuantityUnits *find(const Quantity &quantity) const {
        for (const auto &candidate : quantities_) {
            if (&candidate->quantity == &quantity) return candidate.get();
        }
        return nullptr;
    }

private:
    static void connect(QuantityUnits &quantity, const Row &row) {
        quantity.quantity.standard = quantity.exact.at(row.standard);
        quantity.quantity.display = quantity.exact.at(row.display);
    }

    std::vector<std::unique_ptr<QuantityUnits>> quantities_;
};

const UnitTable &table() {
    // Never destroyed: attributes point at its units for as long as they live.
    static const UnitTable *const instance = new UnitTable;
    return *instance;
}

bool isWhole(double value) { return value == std::floor(value) && value < 9e15; }

struct Ratio {
    double numerator;
    double denominator;
};

// In lowest terms, so that the usual conversions are one multiplication or one division.
Ratio ratioBetween(const Unit &from, const Unit &to) {
    Ratio ratio{from.numerator * to.denominator, from.denominator * to.numerator};
    if (!isWhole(ratio.numerator) || !isWhole(ratio.denominator)) return ratio;
    const auto divisor = static_cast<double>(
        std::gcd(static_cast<std::int64_t>(ratio.numerator), static_cast<std::int64_t>(ratio.denominator)));
    return {ratio.numerator / divisor, ratio.denominator / divisor};
}

// value * numerator / denominator rounded once: the part that the product loses is carried to the quotient.
double scaled(double value, const Ratio &ratio) {
    if (ratio.denominator == 1.0) return value * ratio.numerator;
    if (ratio.numerator == 1.0) return value / ratio.denominator;
    const double product = value * ratio.numerator;
    if (!std::isfinite(product)) return value / ratio.denominator * ratio.numerator;
    const double lost = std::fma(value, ratio.numerator, -product);
    const double quotient = product / ratio.denominator;
    const double rest = std::fma(-quotient, ratio.denominator, product) + lost;
    return quotient + rest / ratio.denominator;
}

} // namespace

namespace Units {

const Quantity *findQuantity(std::string_view label) {
    const QuantityUnits *const found = table().find(label);
    return found ? &found->quantity : nullptr;
}

const Unit *find(const Quantity &quantity, std::string_view spelling) {
    const QuantityUnits *const units = table().find(quantity);
    const std::string text(trimmed(spelling));
    if (!units || text.empty()) return nullptr;
    const auto exact = units->exact.find(text);
    if (exact != units->exact.end()) return exact->second;
    const auto anyCase = units->anyCase.find(folded(text));
    return anyCase != units->anyCase.end() ? anyCase->second : nullptr;
}

double convert(double value, const Unit &from, const Unit &to) {
    if (&from == &to || !std::isfinite(value)) return value;
    const double result = scaled(value, ratioBetween(from, to));
    constexpr double largest = std::numeric_limits<double>::max();
    return std::isfinite(result) ? result : std::copysign(largest, value);
}

std::vector<std::string> spellings(const Quantity &quantity) { return table().find(quantity)->spellings; }

std::vector<std::string> lengthSpellings() { return table().find("Length")->spellings; }

} // namespace Units

UnitConverter &UnitConverter::instance() {
    static UnitConverter converter;
    return converter;
}

double UnitConverter::convertFromSI(const TypeRef &quantity, double value, const TypeRef &unit) const {
    const Quantity *const known = Units::findQuantity(quantity.getLabel());
    if (!known) return value;
    const Unit *const target = Units::find(*known, unit.getLabel());
    return Units::convert(value, *known->standard, target ? *target : *known->display);
}

} // namespace EntityModel
