// Aperture macros: shapes made of primitives with parameters.
#pragma once

#include "readers/gerber/GerberLimits.h"
#include "readers/gerber/WorkBudget.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace EDA {

class Aperture;
class EDAOutline;

// The statements of one macro, kept as text until an aperture gives its parameters.
class ApertureMacro {
public:
    using Fields = std::vector<std::string>;

    explicit ApertureMacro(std::string name = std::string(), const GerberLimits &limits = GerberLimits())
        : name_(std::move(name)), limits_(limits) {}
    ApertureMacro(const ApertureMacro &) = default;
    ApertureMacro &operator=(const ApertureMacro &) = default;
    virtual ~ApertureMacro() = default;

    const std::string &getName() const { return name_; }

    // Appends a statement: the fields of a primitive, or "$n=expression" alone. An expression that was broken
    // at an operator is put together again: a field "+", "-", "/", "x" or "X" and the one behind it go to the
    // end of the field before.
    void addPrimitive(const Fields &fields);

    // Counts the fields of a statement that is about to be added. False, and from then on there is no shape,
    // beyond the limit.
    bool takeFields(std::size_t count);

    // Whether there are more statements than the limit, so that there is no shape.
    bool isTooLong() const { return primitives_.size() > limits_.primitives; }

    // The shape for the parameters "$1", "$2" and so on, whose texts may be expressions; definitions of
    // the macro are added to them. Named after the macro; without points where nothing solid is left.
    // Null for a macro without statements, and where it goes beyond the limits; then `problem` is given a
    // word of it. A primitive of too many vertices or rings is left out, also with a word. A value goes into
    // its field with six significant digits: that is intended.
    std::unique_ptr<EDAOutline> createOutline(std::map<std::string, std::string> &parameters,
                                              WorkBudget &budget, std::string &problem) const;
    // The same with a budget of its own.
    std::unique_ptr<EDAOutline> createOutline(std::map<std::string, std::string> &parameters) const;

private:
    using Parameters = std::map<std::string, std::string>;

    bool takeStatement(const Fields &statement, Parameters &parameters, Aperture &aperture,
                       WorkBudget &budget, std::string &problem) const;
    bool define(const std::string &definition, Parameters &parameters, WorkBudget &budget) const;
    bool evaluate(std::string &field, const Parameters &parameters) const;
    bool evaluateAll(Fields &fields, const Parameters &parameters, WorkBudget &budget,
                     std::string &problem) const;
    bool buildPrimitive(EDAOutline &outline, const Fields &fields) const;
    bool isTooLarge(const Fields &fields) const;
    std::string excess(const Parameters &parameters) const;
    std::size_t numRingSteps(const Fields &fields) const;

    std::string name_;
    std::vector<Fields> primitives_;
    std::size_t numFields_ = 0; // counted by `takeFields`
    GerberLimits limits_;
};

} // namespace EDA
